#pragma once

// The sliding window extremum of a whole trace, for the sources of the window operators. Each of
// them instantiates it for one order, since that takes long.

#include <vorm/assessments/operators/config_last_window.hpp>
#include <vorm/assessments/operators/held_window.hpp>
#include <vorm/assessments/operators/linear_window.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <cmath>
#include <deque>

namespace vorm::assessments::detail {

// The points of a linear trace up to its last known time, with one at that time.
template <class T>
std::deque<TimedPoint<T>> closedPoints(const TimedTrace_T<T>& trace) {
    std::deque<TimedPoint<T>> points(trace.points.begin(),
                                     support::samplesUpTo(trace, trace.lastKnownTime));
    const double known = trace.lastKnownTime;
    if (points.back().time < known && std::isfinite(known)) {
        points.push_back({known, points.back().valueAt(known)});
    }
    return points;
}

template <class T, class KeepFirst>
void slideLinear(const TimedTrace_T<T>& trace, double width, double lastStart,
                 const KeepFirst& keepFirst, TimedTrace_T<T>& result) {
    const auto slide = [&](const std::deque<TimedPoint<T>>& points) {
        LinearWindow<T, KeepFirst>(points.begin(), points.end(), width, lastStart, keepFirst,
                                   result)
            .run();
    };
    const bool closed = trace.points.back().time == trace.lastKnownTime;
    closed ? slide(trace.points) : slide(closedPoints(trace));
}

// How far the last windows stay decided by the extremum of the last whole one.
template <class KeepFirst>
double decidedUntil(const TimedPoint<bool>& lastExtremum, double lastKnownTime,
                    const KeepFirst& keepFirst) {
    const bool value = lastExtremum.value;
    const bool decides = keepFirst(value, !value) && !keepFirst(!value, value);
    return decides ? std::min(lastKnownTime, support::previousTime(lastExtremum.time))
                   : -support::infinity;
}

template <class T, class KeepFirst>
TimedTrace_T<T> slidingExtremum(const TimedTrace_T<T>& trace, double width,
                                const KeepFirst& keepFirst) {
    const bool isConstant = trace.points.size() == 1 && std::isinf(trace.points.front().time);
    if (trace.points.empty() || isConstant) {
        return trace;
    }
    requireWindowWidth(width);
    TimedTrace_T<T> result(trace.interpolation, -support::infinity);
    result.enumTypeName = trace.enumTypeName;
    const double known = trace.lastKnownTime;
    const double start = trace.points.front().time;
    if (width > known - start) {
        return result;
    }
    if (width == 0) {
        result = trace;
        result.popBackAfter(known);
        return result;
    }
    // A trace that is known for ever also is so after a window that never ends.
    const double lastStart = std::isinf(known) ? known : std::max(start, known - width);
    if (IsFloatingPoint<T>::value && trace.interpolation == INTERPOLATION_METHOD::LINEAR) {
        if constexpr (IsFloatingPoint<T>::value) {
            slideLinear(trace, width, lastStart, keepFirst, result);
        }
        result.lastKnownTime = lastStart;
        return result;
    }
    const TimedPoint<T> lastExtremum =
        slideHeld<T>(trace.points.begin(), support::samplesUpTo(trace, known), width, lastStart,
                     keepFirst, result);
    result.lastKnownTime = lastStart;
    if constexpr (support::isBool<T>) {
        if (configLastWindow::minimize) {
            result.lastKnownTime =
                std::max(lastStart, decidedUntil(lastExtremum, known, keepFirst));
        }
    }
    return result;
}

template <class T, class KeepFirst>
TimedTrace_T<T> extremumBetween(const TimedTrace_T<T>& trace, double a, double b,
                                const KeepFirst& keepFirst) {
    requireFiniteStart(a);
    // Without a shift there is nothing to copy.
    return a == 0 ? slidingExtremum(trace, b, keepFirst)
                  : slidingExtremum(trace.Shift(a, true), b - a, keepFirst);
}

}  // namespace vorm::assessments::detail
