// Since, the mirror image of until: one pass forwards where until's goes backwards.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/step_output.hpp>
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
TimedTrace_T<T> sinceSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi,
                              double known) {
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
    detail::walkUpTo(known, phi, psi, visit);
    result.lastKnownTime = known;
    return result;
}

// Since with a window that ends now, for windows that lie within what is known, the first of which
// ends at `begin`. What psi reaches is one time, so that there is one pass instead of four traces,
// which takes half the time.
TimedTrace_T<bool> sinceWithin(double width, const TimedTrace_T<bool>& phi,
                               const TimedTrace_T<bool>& psi, double begin, double known) {
    TimedTrace_T<bool> result = detail::emptyTrace<bool>();
    support::StepOutput<bool> output(result, begin, false);
    bool lasts = false;                 // since the last psi, phi has
    bool wasGoal = false;               // psi, before the time in question
    bool holds = false;                 // what was written last
    double reach = -support::infinity;  // the first time from which no psi is within the window
    const auto visit = [&](double time, const TimedPoint<bool>* ofPhi,
                           const TimedPoint<bool>* ofPsi) __attribute__((always_inline)) {
        if (holds && reach < time) {
            output.change(reach, false);
            holds = false;
        }
        const bool isGoal = ofPsi->value;
        const bool isSince = ofPhi->value && (lasts || isGoal);
        lasts = isSince || isGoal;
        reach = isGoal ? support::infinity : wasGoal ? time + width : reach;
        wasGoal = isGoal;
        if (const bool now = isSince && time < reach; now != holds) {
            output.change(time, now);
            holds = now;
        }
    };
    detail::walkUpTo(known, phi, psi, visit);
    if (holds && reach <= known && reach < support::infinity) {
        output.change(reach, false);
    }
    output.finish();
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
    if constexpr (support::isBool<T>) {
        if (a == 0) {
            return sinceWithin(b, *this, other, isBounded ? start + b : start, known);
        }
    }
    TimedTrace_T holds = sinceSomeTime(*this, other, known);
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
