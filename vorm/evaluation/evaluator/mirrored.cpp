#include "mirrored.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <iterator>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// A sample is in force up to just before the next one.
template <class T>
TimedTrace_T<T> mirroredSteps(const TimedTrace_T<T>& held) {
    TimedTrace_T<T> mirror(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<T> output(mirror);
    double start = -support::infinity;
    for (auto point = held.points.rbegin(); point != held.points.rend(); ++point) {
        output.append({start, point->value});
        start = -support::previousTime(point->time);
    }
    mirror.lastKnownTime = support::infinity;
    return mirror;
}

// Before its second sample a line is what it was at minus infinity.
TimedTrace_T<double> mirroredLine(const TimedTrace_T<double>& line) {
    TimedTrace_T<double> mirror(INTERPOLATION_METHOD::LINEAR, -support::infinity);
    support::TraceBuilder<double> output(mirror);
    output.append({-support::infinity, line.points.back().value});
    for (auto point = line.points.rbegin(); std::next(point) != line.points.rend(); ++point) {
        output.append({-point->time, point->value});
    }
    const double first = line.points.front().value;
    if (mirror.points.back().value != first) {
        output.append({support::nextTime(mirror.lastKnownTime), first});
    }
    mirror.lastKnownTime = support::infinity;
    return mirror;
}

}  // namespace

Truth mirrored(const Truth& truth) {
    return mirroredSteps(truth);
}

TimedTrace mirrored(const TimedTrace& robustness) {
    const auto& numbers = robustness.get<double>();
    return robustness.getInterpolation() == INTERPOLATION_METHOD::ZOH
               ? TimedTrace(mirroredSteps(numbers))
               : TimedTrace(mirroredLine(numbers));
}

}  // namespace vorm::evaluation
