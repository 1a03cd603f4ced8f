// The until operators; the numeric one without a start is in until_within.cpp and
// until_some_time.cpp.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/until_steps.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>

namespace vorm::assessments {
namespace {

template <class T>
bool haveCommonTime(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    if (a.points.empty() || b.points.empty()) {
        return false;
    }
    return !(detail::commonStart(a, b) > std::min(a.lastKnownTime, b.lastKnownTime));
}

TimedTrace_T<bool> untilNextSamples(const TimedTrace_T<bool>& phi, const TimedTrace_T<bool>& psi) {
    using Cursor = support::OperandCursor<bool>;
    const auto nextTime = [](const Cursor& operand, double known) {
        return operand.done() ? known : operand.nextTime();
    };
    const double start = detail::commonStart(phi, psi);
    Cursor left(phi.points.begin(), phi.points.end());
    Cursor right(psi.points.begin(), psi.points.end());
    left.advanceTo(start);
    right.advanceTo(start);
    TimedTrace_T<bool> result = detail::emptyTrace<bool>();
    support::TraceBuilder<bool> builder(result);
    while (!left.done() || !right.done()) {
        const double leftTime = left.nextTime();
        const double rightTime = right.nextTime();
        // By a computed step, as operand_cursor.hpp tells; also if a time is NaN.
        left.advance(std::size_t{!left.done() && !(rightTime < leftTime)});
        right.advance(std::size_t{!right.done() && !(leftTime < rightTime)});
        const bool phiLasts =
            nextTime(left, phi.lastKnownTime) >= nextTime(right, psi.lastKnownTime);
        builder.append({leftTime < rightTime ? leftTime : rightTime,
                        left.inForce().value && (right.inForce().value || phiLasts)});
    }
    result.lastKnownTime = std::min(phi.lastKnownTime, psi.lastKnownTime);
    return result;
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::UntimedUntil([[maybe_unused]] const TimedTrace_T& other) const {
    if constexpr (support::isBool<T>) {
        throwExceptionIfEnum(other, false);
        return haveCommonTime(*this, other) ? untilNextSamples(*this, other)
                                            : detail::emptyTrace<bool>();
    } else {
        throw AssessmentTypeException(errorType());
    }
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T& other, double d) const {
    throwExceptionIfEnum(other, false);
    detail::requireHeld(*this);
    detail::requireHeld(other);
    detail::requireWindowWidth(d);
    if (!haveCommonTime(*this, other) || points.front().time > other.points.back().time) {
        return detail::emptyTrace<T>();
    }
    if (d == support::infinity) {
        return detail::untilSomeTime(*this, other);
    }
    const double start = detail::commonStart(*this, other);
    const double known = std::min(lastKnownTime, other.lastKnownTime);
    if (d > known - start) {
        return detail::emptyTrace<T>();
    }
    // A difference that rounds must not end before it begins.
    return detail::untilWithin(d, std::max(start, known - d), *this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T& other, const double& a,
                                       const double& b) const {
    throwExceptionIfEnum(other, false);
    if (points.empty() || other.points.empty()) {
        return detail::emptyTrace<T>();
    }
    const TimedTrace_T reached = other.Eventually(a, b);
    TimedTrace_T holds = support::isBool<T> ? UntimedUntil(other) : Until(other, support::infinity);
    if (a == 0) {
        // All that a window without a width does.
        holds.popBackAfter(holds.lastKnownTime);
    } else {
        holds = holds.Globally(0, a);
    }
    return holds.And(reached);
}

#define VORM_VALUE_TYPE(T)                                                                 \
    template TimedTrace_T<T> TimedTrace_T<T>::UntimedUntil(const TimedTrace_T<T>&) const;  \
    template TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T<T>&, double) const; \
    template TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T<T>&, const double&, \
                                                    const double&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
