#pragma once

#include <vorm/assessments/trace/value_type.hpp>

#include <cmath>
#include <type_traits>

namespace vorm::assessments {

/// Whether a trace of T may be linear. Values between samples are then computed in double and
/// converted back. The integers, bool and verdicts are only ever held.
template <class T>
struct IsFloatingPoint : std::is_floating_point<T> {};
template <>
struct IsFloatingPoint<HalfFloat> : std::true_type {};
template <>
struct IsFloatingPoint<ValueType<FixedPoint>> : std::true_type {};

/// The zero of a value type. Verdicts have none: throws std::runtime_error with the text
/// "Unsupported operator 'ZERO' for type resultType_t".
template <class T>
T ZERO() {
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

/// The value of an interpolating type as a double.
template <class T>
double toDouble(const T& value) {
    if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return fixedPointToDouble(value);
    } else {
        return static_cast<double>(value);
    }
}

/// A double as a value of an interpolating type; a fixed-point value takes the type descriptor of
/// `like`.
template <class T>
T fromDouble(double number, [[maybe_unused]] const T& like) {
    if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return fixedPointFromDouble(number, like);
    } else {
        return static_cast<T>(number);
    }
}

template <class T>
bool isNan([[maybe_unused]] const T& value) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::isnan(value);
    } else if constexpr (std::is_same_v<T, HalfFloat>) {
        return isnan(value);
    } else {
        return false;
    }
}

/// Equality under which a NaN equals a NaN: a signal that stays NaN does not change.
template <class T>
bool sameValue(const T& a, const T& b) {
    return a == b || (isNan(a) && isNan(b));
}

}  // namespace detail
}  // namespace vorm::assessments
