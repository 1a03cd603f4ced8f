// And as the minimum.

#include <vorm/assessments/operators/pointwise_extremum.hpp>

namespace vorm::assessments {

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::And(const TimedTrace_T& other) const {
    return detail::pointwiseExtremum<support::KeepSmaller>(*this, other);
}

#define VORM_VALUE_TYPE(T) \
    template TimedTrace_T<T> TimedTrace_T<T>::And(const TimedTrace_T<T>&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
