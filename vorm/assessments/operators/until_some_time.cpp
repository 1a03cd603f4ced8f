#include "until_steps.hpp"

#include <vorm/assessments/trace/trace_builder.hpp>

#include <optional>

namespace vorm::assessments::detail {
namespace {

// The end of all that a trace says, its samples after lastKnownTime included.
template <class T>
double endOf(const TimedTrace_T<T>& trace) {
    return std::max(trace.lastKnownTime, trace.points.back().time);
}

}  // namespace

template <class T>
TimedTrace_T<T> untilSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi) {
    const double phiEnd = endOf(phi);
    const double psiEnd = endOf(psi);
    std::vector<UntilStep<T>> steps = stepsUpTo(std::min(phiEnd, psiEnd), phi, psi);
    // A psi that ends counts as fulfilled then, if phi does not end before.
    std::optional<TimedPoint<T>> fulfilled;
    if (phiEnd >= psiEnd) {
        if (steps.back().time == psiEnd) {
            fulfilled = {psiEnd, steps.back().values.phi};
            steps.pop_back();
        }
        if (!steps.empty()) {
            auto& last = steps.back().values;
            last.psi = greater(last.psi, last.phi);
        }
    }
    // Backwards: the best that waiting from a step on can give, limited by phi there.
    std::optional<T> best;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        best = best ? step->values(*best) : step->values.psi;
        step->values.psi = lesser(step->values.phi, *best);
    }
    TimedTrace_T<T> result = emptyTrace<T>();
    support::TraceBuilder<T> builder(result);
    for (const UntilStep<T>& step : steps) {
        builder.append({step.time, step.values.psi});
    }
    if (fulfilled) {
        builder.append(*fulfilled);
    }
    result.lastKnownTime = std::min(phi.lastKnownTime, psi.lastKnownTime);
    result.popBackAfter(result.lastKnownTime);
    return result;
}

#define VORM_VALUE_TYPE(T) \
    template TimedTrace_T<T> untilSomeTime(const TimedTrace_T<T>&, const TimedTrace_T<T>&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments::detail
