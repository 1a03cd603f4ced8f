// The until operators.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/until_window.hpp>
#include <vorm/assessments/operators/window_width.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace vorm::assessments {
namespace {

template <class T>
TimedTrace_T<T> emptyTrace() {
    return TimedTrace_T<T>(INTERPOLATION_METHOD::ZOH, -support::infinity);
}

template <class T>
void requireHeld(const TimedTrace_T<T>& trace) {
    if (trace.interpolation != INTERPOLATION_METHOD::ZOH) {
        throw AssessmentTypeException(AssessmentTypeException::typeTAG<double>());
    }
}

template <class T>
double commonStart(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    return std::max(a.points.front().time, b.points.front().time);
}

template <class T>
bool haveCommonTime(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    if (a.points.empty() || b.points.empty()) {
        return false;
    }
    return !(commonStart(a, b) > std::min(a.lastKnownTime, b.lastKnownTime));
}

TimedTrace_T<bool> untilNextSamples(const TimedTrace_T<bool>& phi, const TimedTrace_T<bool>& psi) {
    using Cursor = support::OperandCursor<bool>;
    const auto nextTime = [](const Cursor& operand, double known) {
        return operand.done() ? known : operand.nextTime();
    };
    const double start = commonStart(phi, psi);
    Cursor left(phi.points.begin(), phi.points.end());
    Cursor right(psi.points.begin(), psi.points.end());
    left.advanceTo(start);
    right.advanceTo(start);
    TimedTrace_T<bool> result = emptyTrace<bool>();
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

// The end of all that a trace says, its samples after lastKnownTime included.
template <class T>
double endOf(const TimedTrace_T<T>& trace) {
    return std::max(trace.lastKnownTime, trace.points.back().time);
}

// The values of both operands at each sample time from their common start up to `end`.
template <class T>
std::vector<detail::UntilStep<T>> stepsUpTo(double end, const TimedTrace_T<T>& phi,
                                            const TimedTrace_T<T>& psi) {
    const double start = commonStart(phi, psi);
    support::OperandCursor<T> left(phi.points.begin(), support::samplesUpTo(phi, end));
    support::OperandCursor<T> right(psi.points.begin(), support::samplesUpTo(psi, end));
    left.advanceTo(start);
    right.advanceTo(start);
    std::vector<detail::UntilStep<T>> steps;
    steps.reserve(phi.points.size() + psi.points.size());
    support::walk(left, right,
                  [&](double time, const TimedPoint<T>* ofPhi, const TimedPoint<T>* ofPsi) {
                      steps.push_back({time, {ofPsi->value, ofPhi->value}});
                  });
    return steps;
}

// For windows that start up to `lastStart`; the width is finite.
template <class T>
TimedTrace_T<T> untilWithin(double width, double lastStart, const TimedTrace_T<T>& phi,
                            const TimedTrace_T<T>& psi) {
    TimedTrace_T<T> result = emptyTrace<T>();
    support::TraceBuilder<T> builder(result);
    const double known = std::min(phi.lastKnownTime, psi.lastKnownTime);
    detail::slideUntil(stepsUpTo(known, phi, psi), width, lastStart, builder);
    result.lastKnownTime = lastStart;
    return result;
}

template <class T>
TimedTrace_T<T> untilSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi) {
    const double phiEnd = endOf(phi);
    const double psiEnd = endOf(psi);
    std::vector<detail::UntilStep<T>> steps = stepsUpTo(std::min(phiEnd, psiEnd), phi, psi);
    // A psi that ends counts as fulfilled then, if phi does not end before.
    std::optional<TimedPoint<T>> fulfilled;
    if (phiEnd >= psiEnd) {
        if (steps.back().time == psiEnd) {
            fulfilled = {psiEnd, steps.back().values.phi};
            steps.pop_back();
        }
        if (!steps.empty()) {
            auto& last = steps.back().values;
            last.psi = detail::greater(last.psi, last.phi);
        }
    }
    // Backwards: the best that waiting from a step on can give, limited by phi there.
    std::optional<T> best;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        best = best ? step->values(*best) : step->values.psi;
        step->values.psi = detail::lesser(step->values.phi, *best);
    }
    TimedTrace_T<T> result = emptyTrace<T>();
    support::TraceBuilder<T> builder(result);
    for (const detail::UntilStep<T>& step : steps) {
        builder.append({step.time, step.values.psi});
    }
    if (fulfilled) {
        builder.append(*fulfilled);
    }
    result.lastKnownTime = std::min(phi.lastKnownTime, psi.lastKnownTime);
    result.popBackAfter(result.lastKnownTime);
    return result;
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::UntimedUntil([[maybe_unused]] const TimedTrace_T& other) const {
    if constexpr (support::isBool<T>) {
        throwExceptionIfEnum(other, false);
        return haveCommonTime(*this, other) ? untilNextSamples(*this, other) : emptyTrace<bool>();
    } else {
        throw AssessmentTypeException(errorType());
    }
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T& other, double d) const {
    throwExceptionIfEnum(other, false);
    requireHeld(*this);
    requireHeld(other);
    detail::requireWindowWidth(d);
    if (!haveCommonTime(*this, other) || points.front().time > other.points.back().time) {
        return emptyTrace<T>();
    }
    if (d == support::infinity) {
        return untilSomeTime(*this, other);
    }
    const double start = commonStart(*this, other);
    const double known = std::min(lastKnownTime, other.lastKnownTime);
    if (d > known - start) {
        return emptyTrace<T>();
    }
    // A difference that rounds must not end before it begins.
    return untilWithin(d, std::max(start, known - d), *this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T& other, const double& a,
                                       const double& b) const {
    throwExceptionIfEnum(other, false);
    if (points.empty() || other.points.empty()) {
        return emptyTrace<T>();
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

template <class T>
template <class Comparison>
void TimedTrace_T<T>::windowAdd(Comparison comparison, const Point& point) {
    requireHeld(*this);
    if (!(point.time > lastKnownTime)) {
        support::throwTimeValueMustIncrease();
    }
    if (points.empty()) {
        push_back(point);
        return;
    }
    Point added{point.time, point.value};
    while (!points.empty() && comparison(added.value, points.back().value)) {
        added.time = points.back().time;
        points.pop_back();
    }
    points.push_back(added);
    lastKnownTime = point.time;
}

#define VORM_VALUE_TYPE(T)                                                                 \
    template TimedTrace_T<T> TimedTrace_T<T>::UntimedUntil(const TimedTrace_T<T>&) const;  \
    template TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T<T>&, double) const; \
    template TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T<T>&, const double&, \
                                                    const double&) const;                  \
    template void TimedTrace_T<T>::windowAdd(ValueGreaterEq, const TimedPoint<T>&);        \
    template void TimedTrace_T<T>::windowAdd(ValueLessEq, const TimedPoint<T>&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
