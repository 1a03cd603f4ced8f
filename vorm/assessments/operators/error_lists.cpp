// The times and intervals at which a trace fails.

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/comparison.hpp>

#include <algorithm>

namespace vorm::assessments {
namespace {

std::vector<double> failingTimes(const TimedTrace_T<bool>& trace) {
    std::vector<double> times;
    for (const TimedPoint<bool>& point : trace.points) {
        if (!point.value) {
            times.push_back(point.time);
        }
    }
    return times;
}

std::vector<std::vector<double>> failingIntervals(const TimedTrace_T<bool>& trace) {
    const double known = trace.lastKnownTime;
    const auto holds = [](const TimedPoint<bool>& point) { return point.value; };
    std::vector<std::vector<double>> intervals;
    auto point = trace.points.begin();
    while (point != trace.points.end() && !(point->time > known)) {
        if (point->value) {
            ++point;
            continue;
        }
        const double start = point->time;
        point = std::find_if(point, trace.points.end(), holds);
        const double end = point == trace.points.end() ? known : std::min(point->time, known);
        intervals.push_back({start, end});
    }
    return intervals;
}

// What `list` finds in the bool trace that tells where `trace` does not fail.
template <class T, class List>
List listFailures(const TimedTrace_T<T>& trace, List (*list)(const TimedTrace_T<bool>&)) {
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

}  // namespace

template <class T>
std::vector<double> TimedTrace_T<T>::getErrorTimeList() const {
    return listFailures(*this, failingTimes);
}

template <class T>
std::vector<std::vector<double>> TimedTrace_T<T>::getErrorIntervalList() const {
    return listFailures(*this, failingIntervals);
}

#define VORM_VALUE_TYPE(T)                                                  \
    template std::vector<double> TimedTrace_T<T>::getErrorTimeList() const; \
    template std::vector<std::vector<double>> TimedTrace_T<T>::getErrorIntervalList() const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
