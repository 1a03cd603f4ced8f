// Reading a trace at a time, and cutting it to a range of time.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <algorithm>
#include <iterator>

namespace vorm::assessments {

template <class T>
std::optional<T> TimedTrace_T<T>::valueAt(double time) const {
    if (points.empty() || !(time >= points.front().time) || !(time <= lastKnownTime)) {
        return std::nullopt;
    }
    return TimedPointIteratorForValueAt(time, true)->valueAt(time);
}

template <class T>
typename TimedTrace_T<T>::Points::const_iterator TimedTrace_T<T>::TimedPointIteratorForValueAt(
    const double& time, bool atOrBefore) const {
    if (points.empty() || points.front().time >= time) {
        return points.begin();
    }
    const auto after =
        std::upper_bound(points.begin(), points.end(), time,
                         [](double wanted, const Point& point) { return wanted < point.time; });
    return atOrBefore ? std::prev(after) : after;
}

template <class T>
void TimedTrace_T<T>::popFrontUntil(const double& time) {
    const double start = time;  // the argument may be the time of a point that goes
    if (points.empty() || !(start > points.front().time)) {
        return;
    }
    while (points.size() > 1 && points[1].time <= start) {
        points.pop_front();
    }
    Point& first = points.front();
    if (start > first.time) {
        first.value = first.valueAt(start);
        first.time = start;
    }
}

template <class T>
void TimedTrace_T<T>::popBackAfter(double time) {
    while (!points.empty() && points.back().time > time) {
        points.pop_back();
    }
    if (lastKnownTime > time) {
        lastKnownTime = time;
    }
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::extractWindow(const double& startTime, const double& endTime,
                                               const double& decimationInterval) const {
    if (points.empty() || startTime > lastKnownTime) {
        return TimedTrace_T(INTERPOLATION_METHOD::ZOH, -support::infinity);
    }
    const auto first = TimedPointIteratorForValueAt(startTime, true);
    const auto last = endTime > startTime && endTime > first->time
                          ? TimedPointIteratorForValueAt(endTime, false)
                          : std::next(first);

    TimedTrace_T window(interpolation, lastKnownTime > endTime ? endTime : lastKnownTime);
    window.enumTypeName = enumTypeName;
    window.points = Points(first, last);
    window.popFrontUntil(startTime);
    window.popBackAfter(window.lastKnownTime);
    if (decimationInterval > 0) {
        window.decimate(decimationInterval);
    }
    return window;
}

#define VORM_VALUE_TYPE(T)                                                                \
    template std::optional<T> TimedTrace_T<T>::valueAt(double) const;                     \
    template TimedTrace_T<T>::Points::const_iterator                                      \
    TimedTrace_T<T>::TimedPointIteratorForValueAt(const double&, bool) const;             \
    template void TimedTrace_T<T>::popFrontUntil(const double&);                          \
    template void TimedTrace_T<T>::popBackAfter(double);                                  \
    template TimedTrace_T<T> TimedTrace_T<T>::extractWindow(const double&, const double&, \
                                                            const double&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
