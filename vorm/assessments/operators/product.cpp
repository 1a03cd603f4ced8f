// Product and quotient, in a source of their own, since the loops of arithmetic take long to
// compile.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/arithmetic.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>

namespace vorm::assessments {
namespace {

template <class T>
TimedTrace_T<T> multiplied(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    return detail::computed(a, b, [](const T& x, const T& y) { return support::product(x, y); });
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Scale(const TimedTrace_T& other) const {
    detail::requireArithmetic(*this, other);
    if (points.size() != 1 && other.points.size() != 1) {
        throw AssessmentInternalException("Only multiplication by constant is supported.");
    }
    return multiplied(*this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Multiply(const TimedTrace_T& other) const {
    detail::requireArithmetic(*this, other);
    detail::requireHeld(*this);
    detail::requireHeld(other);
    return multiplied(*this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Divide(const TimedTrace_T& other) const {
    detail::requireArithmetic(*this, other);
    if constexpr (IsFloatingPoint<T>::value) {
        detail::requireHeld(*this);
        detail::requireHeld(other);
        return detail::computed(*this, other,
                                [](const T& a, const T& b) { return support::quotient(a, b); });
    } else {
        throw AssessmentTypeException(errorType());
    }
}

#define VORM_VALUE_TYPE(T)                                                            \
    template TimedTrace_T<T> TimedTrace_T<T>::Scale(const TimedTrace_T<T>&) const;    \
    template TimedTrace_T<T> TimedTrace_T<T>::Multiply(const TimedTrace_T<T>&) const; \
    template TimedTrace_T<T> TimedTrace_T<T>::Divide(const TimedTrace_T<T>&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
