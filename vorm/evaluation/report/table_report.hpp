#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>

#include <cstddef>
#include <string>

namespace vorm::evaluation {

struct TableStyle {
    bool colours = false;
    std::size_t mostIntervals = 10;  ///< of each assessment; the others are counted
};

/// The outcome as a table for a terminal: for each recording and assessment the verdict, how long
/// it passed, failed and was without result, the first failure, and the failing intervals.
std::string tableReport(const RunOutcome& run, const TableStyle& style = {});

}  // namespace vorm::evaluation
