// Sum, absolute value and negation.

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/operators/arithmetic.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <type_traits>

namespace vorm::assessments {
namespace {

template <class T>
TimedTrace_T<T> negated(TimedTrace_T<T> trace) {
    for (TimedPoint<T>& point : trace.points) {
        point.value = support::negative(point.value);
        point.derivative = -point.derivative;
    }
    return trace;
}

// A fixed-point value can saturate, and the line to it then has another slope than was meant.
TimedTrace_T<ValueType<FixedPoint>> withAlignedSlopes(TimedTrace_T<ValueType<FixedPoint>> trace) {
    for (std::size_t i = 0; i + 1 < trace.points.size(); ++i) {
        if (trace.interpolation == INTERPOLATION_METHOD::LINEAR) {
            trace.points[i].setDerivative(trace.points[i + 1]);
        }
    }
    return trace;
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Add(const TimedTrace_T& other) const {
    detail::requireArithmetic(*this, other);
    return detail::computed(*this, other,
                            [](const T& a, const T& b) { return support::sum(a, b); });
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Abs() const {
    if constexpr (support::isVerdict<T>) {
        throw AssessmentTypeException(errorType());
    } else if constexpr (support::isBool<T>) {
        throwExceptionIfEnum();
        return *this;
    } else {
        throwExceptionIfEnum();
        // Against zero, so that a linear trace bends where it crosses zero.
        const TimedTrace_T zero(ZERO<T>());
        return detail::computed(*this, zero,
                                [](const T& a, const T&) { return support::absolute(a); });
    }
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::UMinus() const {
    if constexpr (support::isBool<T>) {
        throw AssessmentTypeException(AssessmentTypeException::typeTAG<bool>());
    } else if constexpr (std::is_unsigned_v<T>) {
        UMinus(std::true_type());
    } else if constexpr (support::isReal<T> || support::isInteger<T>) {
        throwExceptionIfEnum();
        return negated(*this);
    } else if constexpr (support::isHalf<T> || support::isVerdict<T>) {
        return negated(*this);
    } else if constexpr (support::isFixedPoint<T>) {
        return withAlignedSlopes(negated(*this));
    } else {
        static_assert(support::isForgotten<T>, "A value type without a negation.");
    }
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::UMinus(std::true_type) const {
    throw AssessmentTypeException(errorType());
}

#define VORM_VALUE_TYPE(T)                                                       \
    template TimedTrace_T<T> TimedTrace_T<T>::Add(const TimedTrace_T<T>&) const; \
    template TimedTrace_T<T> TimedTrace_T<T>::Abs() const;                       \
    template TimedTrace_T<T> TimedTrace_T<T>::UMinus() const;                    \
    template TimedTrace_T<T> TimedTrace_T<T>::UMinus(std::true_type) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
