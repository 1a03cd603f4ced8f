#pragma once

// For whatever finds where lines cross: one rule for all, so that the same crossing is at the same
// time wherever it counts, in a comparison or as a bend of a magnitude.

#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {

/// How far from a time a crossing can lie and still be at it: half a step of time. What computed
/// lines cross is off by as much or some more; whole numbers, at which samples and the bounds of
/// windows lie, draw it from further.
inline double reachOf(double time, bool isComputed) {
    constexpr double mostReach = 0.125;
    const double step = assessments::support::nextTime(time) - time;
    if (!isComputed) {
        return step / 2;
    }
    const bool isWhole = time == std::nearbyint(time);
    return isWhole && 4 * step <= mostReach ? 4 * step : step;
}

/// The nearest time strictly between two at which a difference is zero that runs straight from
/// `start` by `rise`, the other way. The times are no neighbours.
inline double crossingTime(double from, double to, long double start, long double rise,
                           bool isComputed) {
    const double earliest = assessments::support::nextTime(from);
    const double latest = assessments::support::previousTime(to);
    // A rise beyond all numbers passes through everything at once.
    const long double length = static_cast<long double>(to) - from;
    const auto time = static_cast<double>(from - start * length / rise);
    const double whole = std::nearbyint(time);
    const double drawn = std::fabs(time - whole) <= reachOf(whole, isComputed) ? whole : time;
    return drawn > earliest ? std::min(drawn, latest) : earliest;
}

}  // namespace vorm::evaluation
