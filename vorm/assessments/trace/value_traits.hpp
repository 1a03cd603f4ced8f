#pragma once

#include <vorm/assessments/trace/value_type.hpp>
#include <vorm/assessments/value_families.hpp>

#include <cmath>
#include <type_traits>

namespace vorm::assessments {

namespace detail {

template <class T>
constexpr bool mayBeLinear() {
    if constexpr (support::isReal<T> || support::isHalf<T> || support::isFixedPoint<T>) {
        return true;
    } else if constexpr (support::isInteger<T> || support::isBool<T> || support::isVerdict<T>) {
        return false;
    } else {
        static_assert(support::isForgotten<T>, "A value type that may be linear or not.");
    }
}

}  // namespace detail

/// Whether a trace of T may be linear. Values between samples are then computed in double and
/// converted back. The integers, bool and verdicts are only ever held.
template <class T>
struct IsFloatingPoint : std::bool_constant<detail::mayBeLinear<T>()> {};

/// The zero of a value type. Verdicts have none: throws std::runtime_error with the text
/// "Unsupported operator 'ZERO' for type resultType_t".
template <class T>
T ZERO() {
    static_assert(support::isNumber<T>, "A value type without a zero.");
    return T();
}
template <>
VORM_ASSESSMENTS_EXPORT ValueType<FixedPoint> ZERO<ValueType<FixedPoint>>();
template <>
VORM_ASSESSMENTS_EXPORT Verdict ZERO<Verdict>();

namespace detail {

VORM_ASSESSMENTS_EXPORT double fixedPointToDouble(const ValueType<FixedPoint>& value);
VORM_ASSESSMENTS_EXPORT ValueType<FixedPoint> fixedPointFromDouble(
    double number, const ValueType<FixedPoint>& like);

}  // namespace detail

namespace support {

/// The value of an interpolating type as a double.
template <class T>
double toDouble(const T& value) {
    if constexpr (support::isFixedPoint<T>) {
        return detail::fixedPointToDouble(value);
    } else if constexpr (support::isNumber<T>) {
        return static_cast<double>(value);
    } else {
        static_assert(support::isForgotten<T>, "A value type that does not become a double.");
    }
}

/// A double as a value of an interpolating type; a fixed-point value takes the type descriptor of
/// `like`.
template <class T>
T fromDouble(double number, [[maybe_unused]] const T& like) {
    if constexpr (support::isFixedPoint<T>) {
        return detail::fixedPointFromDouble(number, like);
    } else if constexpr (support::isReal<T> || support::isHalf<T>) {
        return static_cast<T>(number);
    } else {
        static_assert(support::isForgotten<T>, "A value type that no double becomes.");
    }
}

template <class T>
bool isNan([[maybe_unused]] const T& value) {
    if constexpr (support::isReal<T>) {
        return std::isnan(value);
    } else if constexpr (support::isHalf<T>) {
        return isnan(value);
    } else if constexpr (support::isInteger<T> || support::isBool<T> || support::isFixedPoint<T> ||
                         support::isVerdict<T>) {
        return false;
    } else {
        static_assert(support::isForgotten<T>, "A value type that has a NaN or none.");
    }
}

/// Equality under which a NaN equals a NaN: a signal that stays NaN does not change.
template <class T>
bool sameValue(const T& a, const T& b) {
    return a == b || (isNan(a) && isNan(b));
}

}  // namespace support
}  // namespace vorm::assessments
