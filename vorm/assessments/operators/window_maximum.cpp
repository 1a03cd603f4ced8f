// The greatest value in a window of time.

#include <vorm/assessments/operators/extremum.hpp>
#include <vorm/assessments/operators/sliding_extremum.hpp>

namespace vorm::assessments {

template <class T>
void TimedTrace_T<T>::timedMax(const double& width) {
    *this = detail::slidingExtremum(*this, width, support::KeepGreater());
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Eventually(const double& a, const double& b) const {
    return detail::extremumBetween(*this, a, b, support::KeepGreater());
}

#define VORM_VALUE_TYPE(T)                                  \
    template void TimedTrace_T<T>::timedMax(const double&); \
    template TimedTrace_T<T> TimedTrace_T<T>::Eventually(const double&, const double&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
