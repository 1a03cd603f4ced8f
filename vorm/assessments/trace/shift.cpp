// Moving a trace in time, and its slope.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <cmath>

namespace vorm::assessments {
namespace {

// Subtracting a delay rounds, so that neighbours can meet. The earlier one then steps back, by the
// least step there is; no reading of the trace can fall between the two.
template <class T>
void keepApart(std::deque<TimedPoint<T>>& points) {
    for (std::size_t i = points.size() - 1; i > 0; --i) {
        if (!(points[i - 1].time < points[i].time)) {
            points[i - 1].time = support::previousTime(points[i].time);
        }
    }
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Shift(double delay, bool trimToStart) const {
    TimedTrace_T shifted(*this);
    if (points.empty() || delay == 0) {
        return shifted;
    }
    const auto move = [delay](double& time) {
        if (std::isfinite(time)) {
            time -= delay;
        }
    };
    for (Point& point : shifted.points) {
        move(point.time);
    }
    keepApart(shifted.points);
    if (trimToStart) {
        shifted.popFrontUntil(points.front().time);
    }
    move(shifted.lastKnownTime);
    return shifted;
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::EpsilonShift(double direction) const {
    TimedTrace_T shifted(*this);
    if (points.empty()) {
        return shifted;
    }
    const bool later = direction >= 0;
    const auto step = later ? support::nextTime : support::previousTime;
    for (auto point = shifted.points.begin() + (later ? 1 : 0); point != shifted.points.end();
         ++point) {
        point->time = step(point->time);
    }
    shifted.popFrontUntil(points.front().time);
    shifted.lastKnownTime = step(lastKnownTime);
    return shifted;
}

template <class T>
TimedTrace_T<double> TimedTrace_T<T>::Slope() const {
    throwExceptionIfEnum();
    if (interpolation == INTERPOLATION_METHOD::ZOH) {
        throw AssessmentInternalException("Slope is not valid for ZOH TimedTrace.");
    }
    TimedTrace_T<double> slopes(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<double> result(slopes);
    for (const Point& point : points) {
        result.append({point.time, point.derivative});
    }
    slopes.popBackAfter(support::previousTime(lastKnownTime));
    return slopes;
}

#define VORM_VALUE_TYPE(T)                                                \
    template TimedTrace_T<T> TimedTrace_T<T>::Shift(double, bool) const;  \
    template TimedTrace_T<T> TimedTrace_T<T>::EpsilonShift(double) const; \
    template TimedTrace_T<double> TimedTrace_T<T>::Slope() const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
