#include "step_line.hpp"

#include <vorm/assessments/trace/time_step.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

template <class T>
TimedTrace_T<T> lineOfSteps(const TimedTrace_T<T>& held) {
    TimedTrace_T<T> line(INTERPOLATION_METHOD::LINEAR, -detail::infinity);
    for (const TimedPoint<T>& point : held.points) {
        if (!line.points.empty()) {
            const TimedPoint<T> before{detail::previousTime(point.time), line.points.back().value};
            if (before.time > line.points.back().time) {
                line.push_back(before);
            }
        }
        line.push_back(point);
    }
    line.lastKnownTime = held.lastKnownTime;
    line.enumTypeName = held.enumTypeName;
    return line;
}

}  // namespace

ChangedTrace steppingLine(const TimedTrace& trace) {
    return trace.visit([&]<class T>(const TimedTrace_T<T>& typed) -> ChangedTrace {
        const bool steps =
            typed.interpolation == INTERPOLATION_METHOD::ZOH && typed.points.size() > 1;
        if (!IsFloatingPoint<T>::value || !steps) {
            return std::nullopt;
        }
        return TimedTrace(lineOfSteps(typed));
    });
}

bool isMixed(const TimedTrace& left, const TimedTrace& right) {
    return left.getInterpolation() != right.getInterpolation();
}

}  // namespace vorm::evaluation
