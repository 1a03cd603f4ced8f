#include "until_steps.hpp"

#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments::detail {

template <class T>
TimedTrace_T<T> untilWithin(double width, double lastStart, const TimedTrace_T<T>& phi,
                            const TimedTrace_T<T>& psi) {
    TimedTrace_T<T> result = emptyTrace<T>();
    support::TraceBuilder<T> builder(result);
    const double known = std::min(phi.lastKnownTime, psi.lastKnownTime);
    slideUntil(stepsUpTo(known, phi, psi), width, lastStart, builder);
    result.lastKnownTime = lastStart;
    return result;
}

#define VORM_VALUE_TYPE(T)                                                       \
    template TimedTrace_T<T> untilWithin(double, double, const TimedTrace_T<T>&, \
                                         const TimedTrace_T<T>&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments::detail
