#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/baseline.hpp>

#include <string>

namespace vorm::evaluation {

/// The outcome as one JSON object; docs/reports.md describes its keys. Numbers read back as the
/// same doubles; what is not known or not finite is null.
std::string jsonReport(const RunOutcome& run, const BaselineComparison* comparison = nullptr);

/// A recording of the run as one JSON object in one line: what the report has of it, and of the run
/// but for its other recordings.
std::string jsonLine(const RunOutcome& run, const RecordingOutcome& recording);

/// A name as it reads back from JSON, which has no place for what is no UTF-8.
std::string nameInJson(const std::string& name);

}  // namespace vorm::evaluation
