#pragma once

// For the lists of the times and intervals at which a trace fails.

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/comparison.hpp>

#include <algorithm>
#include <type_traits>

namespace vorm::assessments::detail {

/// What `list` gives of the bool trace that tells where `trace` does not fail.
template <class T, class List>
std::invoke_result_t<const List&, const TimedTrace_T<bool>&> listOfFailures(
    const TimedTrace_T<T>& trace, const List& list) {
    if constexpr (support::isBool<T>) {
        return list(trace);
    } else if constexpr (support::isReal<T> || support::isInteger<T>) {
        const TimedTrace_T<T> zero(T{});
        trace.throwExceptionIfEnum(zero, true);
        return list(trace.template combine<bool>(zero, ValueGreater()));
    } else if constexpr (support::isHalf<T> || support::isFixedPoint<T> || support::isVerdict<T>) {
        throw AssessmentTypeException(trace.errorType());
    } else {
        static_assert(support::isForgotten<T>, "A value type that can fail or not.");
    }
}

/// Calls visit(start, end) for each interval in which the trace is false, up to where it is known.
template <class Visit>
void forEachFailingInterval(const TimedTrace_T<bool>& trace, const Visit& visit) {
    const double known = trace.lastKnownTime;
    const auto holds = [](const TimedPoint<bool>& point) { return point.value; };
    auto point = trace.points.begin();
    while (point != trace.points.end() && !(point->time > known)) {
        if (point->value) {
            ++point;
            continue;
        }
        const double start = point->time;
        point = std::find_if(point, trace.points.end(), holds);
        visit(start, point == trace.points.end() ? known : std::min(point->time, known));
    }
}

}  // namespace vorm::assessments::detail
