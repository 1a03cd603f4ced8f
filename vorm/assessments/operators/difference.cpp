// The differences, in a source of their own, since the loops of arithmetic take long to compile.

#include <vorm/assessments/operators/arithmetic.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <type_traits>

namespace vorm::assessments {

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other) const {
    return Substract(other, std::bool_constant<std::is_unsigned_v<T>>());
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other, std::false_type) const {
    detail::requireArithmetic(*this, other);
    return detail::computed(*this, other,
                            [](const T& a, const T& b) { return support::difference(a, b); });
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other, std::true_type) const {
    detail::requireArithmetic(*this, other);
    return detail::computed(
        *this, other, [](const T& a, const T& b) { return support::differenceFromZeroUp(a, b); });
}

#define VORM_VALUE_TYPE(T)                                                                       \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&) const;           \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&, std::false_type) \
        const;                                                                                   \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&, std::true_type)  \
        const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
