#pragma once

#include <vorm/evaluation/recording/recording_survey.hpp>

#include <string>

namespace vorm::evaluation {

/// What the columns of a recording are like, as a table for a terminal, and how its files are read.
std::string surveyReport(const std::string& recording, const RecordingSurvey& survey);

/// Several recordings as one JSON object; docs/reports.md describes its keys.
std::string surveyJson(const RecordingSurveys& recordings);

}  // namespace vorm::evaluation
