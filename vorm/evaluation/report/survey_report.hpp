#pragma once

#include <vorm/evaluation/recording/recording_survey.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// What the columns of a recording are like, as a table for a terminal.
std::string surveyReport(const std::string& recording, const std::vector<SignalSurvey>& signals);

/// The same as an array of JSON objects, one per signal, keys as the fields of SignalSurvey in
/// small letters with underscores.
std::string surveyJson(const std::string& recording, const std::vector<SignalSurvey>& signals);

}  // namespace vorm::evaluation
