#include "robustness.hpp"

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/comparison.hpp>
#include <vorm/evaluation/evaluator/conversion.hpp>
#include <vorm/evaluation/evaluator/step_line.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

namespace {

constexpr double certain = 1e200;

bool isCertain(const TimedPoint<double>& point) {
    return std::fabs(point.value) >= certain;
}

bool hasCertainty(const TimedTrace& trace) {
    if (trace.which() != int{valueTypeIndex<double>}) {
        return false;
    }
    const auto& points = trace.get<double>().points;
    return std::any_of(points.begin(), points.end(), isCertain);
}

bool isNumeric(const TimedTrace& trace) {
    return trace.visit([]<class T>(const TimedTrace_T<T>& typed) {
        return !std::is_same_v<T, bool> && !std::is_same_v<T, Verdict> &&
               typed.enumTypeName.empty();
    });
}

TimedTrace difference(const TimedTrace& left, const TimedTrace& right) {
    const ChangedTrace leftNumbers = asDouble(left);
    const ChangedTrace rightNumbers = asDouble(right);
    return onAligned(changedOr(leftNumbers, left), changedOr(rightNumbers, right),
                     [](const TimedTrace& l, const TimedTrace& r) { return l.Minus(r); });
}

}  // namespace

TimedTrace asCertainty(const TimedTrace& trace) {
    const TimedTrace_T<bool>& truth = trace.get<bool>();
    TimedTrace_T<double> result(INTERPOLATION_METHOD::ZOH, truth.lastKnownTime);
    for (const TimedPoint<bool>& point : truth.points) {
        result.points.push_back({point.time, point.value ? detail::infinity : -detail::infinity});
    }
    return result;
}

TimedTrace comparisonRobustness(VORM_OP op, const TimedTrace& left, const TimedTrace& right) {
    requireComparable(op, left, right);
    if (!isNumeric(left)) {
        return asCertainty(compare(op, left, right));
    }
    switch (op) {
        case VORM_OP::Gt:
        case VORM_OP::Geq:
            return difference(left, right);
        case VORM_OP::Lt:
        case VORM_OP::Leq:
            return difference(right, left);
        case VORM_OP::Eq:
            return difference(left, right).Abs().UnaryMinus();
        default:
            return difference(left, right).Abs();
    }
}

ChangedTrace withFiniteCertainty(const TimedTrace& trace) {
    if (!hasCertainty(trace)) {
        return std::nullopt;
    }
    TimedTrace_T<double> finite = trace.get<double>();
    for (TimedPoint<double>& point : finite.points) {
        if (isCertain(point)) {
            point.value = std::copysign(certain, point.value);
        }
    }
    return TimedTrace(std::move(finite));
}

bool hasFiniteCertainty(const TimedTrace& trace) {
    return trace.getInterpolation() == INTERPOLATION_METHOD::LINEAR && hasCertainty(trace);
}

TimedTrace withInfiniteCertainty(const TimedTrace& trace) {
    if (!hasFiniteCertainty(trace)) {
        return trace;
    }
    TimedTrace_T<double> infinite = trace.get<double>();
    bool nextIsCertain = false;
    for (auto point = infinite.points.rbegin(); point != infinite.points.rend(); ++point) {
        const bool pointIsCertain = isCertain(*point);
        // Between certainty and a number lies no time but for rounding.
        if (pointIsCertain || nextIsCertain) {
            point->derivative = 0;
        }
        if (pointIsCertain) {
            point->value = std::copysign(detail::infinity, point->value);
        }
        nextIsCertain = pointIsCertain;
    }
    return infinite;
}

}  // namespace vorm::evaluation
