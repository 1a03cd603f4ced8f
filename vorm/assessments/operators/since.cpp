// Since, the mirror image of until: one pass forwards where until's goes backwards.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/until_steps.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vorm::assessments {
namespace {

void requirePastWindow(double a, double b) {
    if (!(a >= 0) || !std::isfinite(a)) {
        throw AssessmentInternalException(
            "The window of since must begin at a finite time that is not negative.");
    }
    detail::requireWindowWidth(b - a);
}

// The best over all times from the common start on: what came with a step, or the best of all steps
// before it, limited by phi from there on.
template <class T>
TimedTrace_T<T> sinceSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi, double start,
                              double known) {
    support::OperandCursor<T> left(phi.points.begin(), support::samplesUpTo(phi, known));
    support::OperandCursor<T> right(psi.points.begin(), support::samplesUpTo(psi, known));
    left.advanceTo(start);
    right.advanceTo(start);
    TimedTrace_T<T> result = detail::emptyTrace<T>();
    support::TraceBuilder<T> builder(result);
    std::optional<T> best;  // that a time after all steps so far can look back to
    const auto visit = [&](double time, const TimedPoint<T>* ofPhi, const TimedPoint<T>* ofPsi)
        __attribute__((always_inline)) {
        const T goal = best ? detail::greater(*best, ofPsi->value) : ofPsi->value;
        const T since = detail::lesser(ofPhi->value, goal);
        builder.append({time, since});
        best = detail::greater(since, ofPsi->value);
    };
    support::walk(left, right, visit);
    result.lastKnownTime = known;
    return result;
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Since(const TimedTrace_T& other, const double& a,
                                       const double& b) const {
    throwExceptionIfEnum(other, false);
    detail::requireHeld(*this);
    detail::requireHeld(other);
    requirePastWindow(a, b);
    if (points.empty() || other.points.empty()) {
        return detail::emptyTrace<T>();
    }
    const bool isBounded = b < support::infinity;
    const double start = detail::commonStart(*this, other);
    const double known = std::min(lastKnownTime, other.lastKnownTime);
    if (!(start + (isBounded ? b : a) <= known)) {
        return detail::emptyTrace<T>();
    }
    TimedTrace_T holds = sinceSomeTime(*this, other, start, known);
    if (a > 0) {
        holds = holds.Globally(-a, 0);
    }
    if (!isBounded) {
        return holds;
    }
    TimedTrace_T result = holds.And(other.Eventually(-b, -a));
    result.popFrontUntil(start + b);
    result.popBackAfter(known);
    return result;
}

#define VORM_VALUE_TYPE(T)                                                                 \
    template TimedTrace_T<T> TimedTrace_T<T>::Since(const TimedTrace_T<T>&, const double&, \
                                                    const double&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
