// The until operators.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/operators/window_width.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <type_traits>
#include <vector>

namespace vorm::assessments {
namespace {

template <class T>
TimedTrace_T<T> emptyTrace() {
    return TimedTrace_T<T>(INTERPOLATION_METHOD::ZOH, -detail::infinity);
}

template <class T>
void requireHeld(const TimedTrace_T<T>& trace) {
    if (trace.interpolation != INTERPOLATION_METHOD::ZOH) {
        throw AssessmentTypeException(AssessmentTypeException::typeTAG<double>());
    }
}

template <class T>
bool haveCommonTime(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    if (a.points.empty() || b.points.empty()) {
        return false;
    }
    const double start = std::max(a.points.front().time, b.points.front().time);
    return !(start > std::min(a.lastKnownTime, b.lastKnownTime));
}

// Walks both operands from their common start on, over the samples up to the given times.
template <class T, class Visit>
void walkTogether(const TimedTrace_T<T>& a, double aUntil, const TimedTrace_T<T>& b, double bUntil,
                  Visit visit) {
    const double start = std::max(a.points.front().time, b.points.front().time);
    detail::OperandCursor<T> left(a.points.begin(), detail::samplesUpTo(a, aUntil));
    detail::OperandCursor<T> right(b.points.begin(), detail::samplesUpTo(b, bUntil));
    left.advanceTo(start);
    right.advanceTo(start);
    detail::walk(left, right, visit);
}

TimedTrace_T<bool> untilNextSamples(const TimedTrace_T<bool>& phi, const TimedTrace_T<bool>& psi) {
    struct Step {
        double time;
        bool phi;
        bool psi;
    };
    TimedTrace_T<bool> result = emptyTrace<bool>();
    detail::TraceBuilder<bool> builder(result);
    const auto settle = [&builder](const Step& step, bool phiLastsUntilPsi) {
        builder.append({step.time, step.phi && (step.psi || phiLastsUntilPsi)});
    };
    // The next step tells whose sample comes first after this one.
    std::optional<Step> step;
    walkTogether(phi, phi.lastKnownTime, psi, psi.lastKnownTime,
                 [&](double time, const TimedPoint<bool>* left, const TimedPoint<bool>* right) {
                     if (step) {
                         const bool psiComes = right->time == time;
                         settle(*step,
                                psiComes ? phi.lastKnownTime >= time : time >= psi.lastKnownTime);
                     }
                     step = Step{time, left->value, right->value};
                 });
    settle(*step, phi.lastKnownTime >= psi.lastKnownTime);
    result.lastKnownTime = std::min(phi.lastKnownTime, psi.lastKnownTime);
    return result;
}

template <class T>
TimedTrace_T<T> untilSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi) {
    const double known = std::min(phi.lastKnownTime, psi.lastKnownTime);
    struct Step {
        double time;
        T phi;
        T psi;
    };
    std::vector<Step> steps;
    steps.reserve(phi.points.size() + psi.points.size());
    walkTogether(phi, known, psi, known,
                 [&](double time, const TimedPoint<T>* left, const TimedPoint<T>* right) {
                     steps.push_back({time, left->value, right->value});
                 });

    // Backwards: the best that waiting from a step on can give; none where nothing limits it. A psi
    // whose knowledge ends counts as fulfilled then, if phi is known as long.
    std::optional<T> best;
    const auto whileHolding = [&best](const T& value) {
        return best ? detail::Extremum<detail::KeepSmaller>()(value, *best) : value;
    };
    const bool endFulfils = phi.lastKnownTime >= psi.lastKnownTime;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        const bool isLast = step == steps.rbegin();
        if (isLast && !endFulfils) {
            best = step->psi;
        } else if (!isLast || step->time < psi.lastKnownTime) {
            best = detail::Extremum<detail::KeepGreater>()(step->psi, whileHolding(step->phi));
        }
        step->psi = whileHolding(step->phi);
    }

    TimedTrace_T<T> result = emptyTrace<T>();
    detail::TraceBuilder<T> builder(result);
    for (const Step& step : steps) {
        builder.append({step.time, step.psi});
    }
    result.lastKnownTime = known;
    return result;
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::UntimedUntil([[maybe_unused]] const TimedTrace_T& other) const {
    if constexpr (std::is_same_v<T, bool>) {
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
    TimedTrace_T result = untilSomeTime(*this, other);
    if (d == detail::infinity) {
        return result;
    }
    const double start = result.points.front().time;
    const double known = result.lastKnownTime;
    if (d > known - start) {
        return emptyTrace<T>();
    }
    // A difference that rounds must not end before it begins.
    const double lastStart = std::max(start, known - d);
    // What psi reaches within d bounds the until, and where both are equal it is the same time
    // that they speak of.
    TimedTrace_T reached(other);
    reached.timedMax(d);
    reached.lastKnownTime = std::max(reached.lastKnownTime, lastStart);
    result = result.And(reached);
    result.popBackAfter(lastStart);
    return result;
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Until(const TimedTrace_T& other, const double& a,
                                       const double& b) const {
    throwExceptionIfEnum(other, false);
    if (points.empty() || other.points.empty()) {
        return emptyTrace<T>();
    }
    const TimedTrace_T reached = other.Eventually(a, b);
    TimedTrace_T holds =
        std::is_same_v<T, bool> ? UntimedUntil(other) : Until(other, detail::infinity);
    if (a != 0) {
        holds = holds.Globally(0, a);
    }
    return holds.And(reached);
}

template <class T>
template <class Comparison>
void TimedTrace_T<T>::windowAdd(Comparison comparison, const Point& point) {
    requireHeld(*this);
    if (!(point.time > lastKnownTime)) {
        detail::throwTimeValueMustIncrease();
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
