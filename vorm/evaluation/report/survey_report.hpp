#pragma once

#include <vorm/evaluation/recording/recording_survey.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vorm::evaluation {

/// What the columns of a recording are like, as a table for a terminal, and how its files are read.
/// Lines take at most that many columns of the terminal, of which at least 60 are used, or any
/// number.
std::string surveyReport(const std::string& recording, const RecordingSurvey& survey,
                         std::optional<std::size_t> width = std::nullopt);

/// Several recordings as one JSON object; docs/reports.md describes its keys.
std::string surveyJson(const RecordingSurveys& recordings);

}  // namespace vorm::evaluation
