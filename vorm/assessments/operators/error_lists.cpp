// The times and intervals at which a trace fails.

#include <vorm/assessments/operators/error_lists.hpp>

#include <initializer_list>

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
    std::vector<std::vector<double>> intervals;
    intervals.reserve((trace.points.size() + 1) / 2);
    detail::forEachFailingInterval(trace, [&](double start, double end) {
        intervals.emplace_back(std::initializer_list<double>{start, end});
    });
    return intervals;
}

}  // namespace

template <class T>
std::vector<double> TimedTrace_T<T>::getErrorTimeList() const {
    return detail::listOfFailures(*this, failingTimes);
}

template <class T>
std::vector<std::vector<double>> TimedTrace_T<T>::getErrorIntervalList() const {
    return detail::listOfFailures(*this, failingIntervals);
}

#define VORM_VALUE_TYPE(T)                                                  \
    template std::vector<double> TimedTrace_T<T>::getErrorTimeList() const; \
    template std::vector<std::vector<double>> TimedTrace_T<T>::getErrorIntervalList() const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
