#include "slope.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

template <class T>
TimedTrace_T<double> slopesOf(const TimedTrace_T<T>& line, double ticksPerSecond) {
    TimedTrace_T<double> slopes(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<double> result(slopes);
    for (auto point = line.points.begin(); point != line.points.end(); ++point) {
        const auto next = point + 1;
        // Not the slope per tick times the ticks of a second, which would round twice.
        const double slope =
            next == line.points.end()
                ? point->derivative * ticksPerSecond
                : (support::toDouble(next->value) - support::toDouble(point->value)) *
                      ticksPerSecond / (next->time - point->time);
        result.append({point->time, slope});
    }
    // The last sample of a line leads nowhere; NaN goes on.
    const bool isNan = support::isNan(line.points.back().value);
    const double end = isNan ? line.lastKnownTime : support::previousTime(line.lastKnownTime);
    slopes.popBackAfter(end);
    slopes.lastKnownTime = end;
    return slopes;
}

}  // namespace

TimedTrace slopePerSecond(const TimedTrace& line, const Timeline& timeline) {
    const double ticksPerSecond = timeline.ticksIn(second);
    return line.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (IsFloatingPoint<T>::value) {
            if (typed.interpolation == INTERPOLATION_METHOD::LINEAR && typed.enumTypeName.empty()) {
                return slopesOf(typed, ticksPerSecond);
            }
        }
        return typed.Slope();  // refuses it
    });
}

}  // namespace vorm::evaluation
