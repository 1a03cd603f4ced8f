#pragma once

// What became of the assessments on several recordings, in one table.

#include <vorm/evaluation/report/table_report.hpp>

#include <string>

namespace vorm::evaluation {

/// A row for each recording on which not everything passed, the worst first, with a mark for each
/// assessment that did not pass on all of them; below it these assessments by their numbers. Empty
/// where everything passed that could be assessed. At most forty rows and as many marks as fit,
/// unless the style is verbose, with a line that counts the others. The outcomes of all recordings
/// that could be used are of the same assessments.
std::string recordingMatrix(const RunOutcome& run, const TableStyle& style);

}  // namespace vorm::evaluation
