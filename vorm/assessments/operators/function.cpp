// The pointwise combination of two traces by any function of two values.

#include <vorm/assessments/operators/combine.hpp>

namespace vorm::assessments {

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Function(const TimedTrace_T& other,
                                          std::function<T(T, T)> fn) const {
    return combine<T>(other, [&fn](const T& a, const T& b) { return fn(a, b); });
}

#define VORM_VALUE_TYPE(T)                                                     \
    template TimedTrace_T<T> TimedTrace_T<T>::Function(const TimedTrace_T<T>&, \
                                                       std::function<T(T, T)>) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
