#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>

#include <cstddef>
#include <string>

namespace vorm::evaluation {

struct TableStyle {
    bool colours = false;
    /// Failing intervals of each assessment, and as many without result; the others are counted.
    std::size_t mostIntervals = 10;
};

/// The outcome as a table for a terminal: for each recording and assessment the verdict, how long
/// it passed, failed and was without result, the first failure, the failing intervals and those
/// without result.
std::string tableReport(const RunOutcome& run, const TableStyle& style = {});

}  // namespace vorm::evaluation
