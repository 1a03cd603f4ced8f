#pragma once

#include <vorm/evaluation/recording/recording_survey.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vorm::evaluation {

/// What the columns of a recording are like, as a table for a terminal.
std::string surveyReport(const std::string& recording, const std::vector<SignalSurvey>& signals);

/// Several recordings as one JSON object; docs/reports.md describes its keys.
std::string surveyJson(
    const std::vector<std::pair<std::string, std::vector<SignalSurvey>>>& recordings);

}  // namespace vorm::evaluation
