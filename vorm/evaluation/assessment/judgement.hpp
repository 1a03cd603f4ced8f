#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <optional>

namespace vorm::evaluation {

/// A closed range of time in seconds.
struct TimeRange {
    double from;
    double to;
};

/// From the first to the last time at which any of the signals is known; nothing where none is.
std::optional<TimeRange> knownRange(const std::vector<const Signal*>& signals);

/// Fills in the verdict, the times and the failing intervals of a requirement with those truth
/// values in the range.
void judge(const TracePieces& truth, const TimeRange& range, AssessmentOutcome& outcome);

/// The least value in the range; NaN where one of them is NaN, nothing where none is known.
std::optional<double> leastValue(const TracePieces& pieces, const TimeRange& range);

}  // namespace vorm::evaluation
