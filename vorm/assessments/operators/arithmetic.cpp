// Sum, difference, product, quotient, absolute value and negation. All combine by Function:
// the engine compiled for one function more would be another copy of it for every value type.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <type_traits>

namespace vorm::assessments {
namespace {

template <class T>
void requireArithmetic(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    if constexpr (support::isBool<T>) {
        constexpr AssessmentTypeException::typeTAG<bool> tag;
        throw AssessmentBinaryTypeException(tag, tag);
    }
    a.throwExceptionIfEnum(b, false);
}

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
    requireArithmetic(*this, other);
    return Function(other, support::sum<T>);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other) const {
    return Substract(other, std::bool_constant<std::is_unsigned_v<T>>());
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other, std::false_type) const {
    requireArithmetic(*this, other);
    return Function(other, support::difference<T>);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T& other, std::true_type) const {
    requireArithmetic(*this, other);
    return Function(other, support::differenceFromZeroUp<T>);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Scale(const TimedTrace_T& other) const {
    requireArithmetic(*this, other);
    if (points.size() != 1 && other.points.size() != 1) {
        throw AssessmentInternalException("Only multiplication by constant is supported.");
    }
    return Function(other, support::product<T>);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Multiply(const TimedTrace_T& other) const {
    requireArithmetic(*this, other);
    detail::requireHeld(*this);
    detail::requireHeld(other);
    return Function(other, support::product<T>);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Divide(const TimedTrace_T& other) const {
    requireArithmetic(*this, other);
    if constexpr (IsFloatingPoint<T>::value) {
        detail::requireHeld(*this);
        detail::requireHeld(other);
        return Function(other, support::quotient<T>);
    } else {
        throw AssessmentTypeException(errorType());
    }
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
        return Function(zero, [](const T& a, const T&) { return support::absolute(a); });
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

#define VORM_VALUE_TYPE(T)                                                                       \
    template TimedTrace_T<T> TimedTrace_T<T>::Add(const TimedTrace_T<T>&) const;                 \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&) const;           \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&, std::false_type) \
        const;                                                                                   \
    template TimedTrace_T<T> TimedTrace_T<T>::Substract(const TimedTrace_T<T>&, std::true_type)  \
        const;                                                                                   \
    template TimedTrace_T<T> TimedTrace_T<T>::Scale(const TimedTrace_T<T>&) const;               \
    template TimedTrace_T<T> TimedTrace_T<T>::Multiply(const TimedTrace_T<T>&) const;            \
    template TimedTrace_T<T> TimedTrace_T<T>::Divide(const TimedTrace_T<T>&) const;              \
    template TimedTrace_T<T> TimedTrace_T<T>::Abs() const;                                       \
    template TimedTrace_T<T> TimedTrace_T<T>::UMinus() const;                                    \
    template TimedTrace_T<T> TimedTrace_T<T>::UMinus(std::true_type) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
