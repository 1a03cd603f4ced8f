#pragma once

// What became of the assessments on several recordings, in one table.

#include <vorm/evaluation/report/run_summary.hpp>
#include <vorm/evaluation/report/table_report.hpp>

#include <string>

namespace vorm::evaluation {

/// A row for each recording that the summary keeps, with a mark for each assessment that did not
/// pass on all of them; below it these assessments by their numbers. Empty where everything passed
/// that could be assessed. As many marks as fit, with a line that counts the others.
std::string recordingMatrix(const RunSummary& run, const TableStyle& style);

}  // namespace vorm::evaluation
