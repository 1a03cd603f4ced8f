#pragma once

// For the operators: what plus, minus, times and order mean for each value type. Integers wrap,
// computed in the widest unsigned type since signed overflow is undefined and small types promote.

#include <vorm/assessments/trace/value_traits.hpp>

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace vorm::assessments::detail {

template <class T>
T sum(const T& a, const T& b) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    } else {
        return a + b;
    }
}

template <class T>
T difference(const T& a, const T& b) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    } else {
        return a - b;
    }
}

template <class T>
T differenceFromZeroUp(const T& a, const T& b) {
    const T exact = difference(a, b);
    if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return a < b ? fromDouble(0, a) : exact;
    } else {
        return a < b ? ZERO<T>() : exact;
    }
}

template <class T>
T product(const T& a, const T& b) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
    } else {
        return a * b;
    }
}

template <class T>
T negative(const T& a) {
    if constexpr (std::is_integral_v<T>) {
        return difference(T{0}, a);
    } else {
        return -a;
    }
}

template <class T>
T absolute(const T& a) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::fabs(a);
    } else if constexpr (std::is_same_v<T, HalfFloat>) {
        return abs(a);
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return T(abs(a.get()));
    } else {
        return a < T{0} ? negative(a) : a;
    }
}

/// Whether `a` is kept in preference to `b` as the greater one. A NaN is kept over any number:
/// where something is not known, neither is the extremum.
struct KeepGreater {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return b <= a || isNan(a);
    }
};

/// Whether `a` is kept in preference to `b` as the smaller one; a NaN is kept over any number.
struct KeepSmaller {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return a <= b || isNan(a);
    }
};

/// The one of two values that an order keeps.
template <class Keep>
struct Extremum {
    template <class T>
    T operator()(const T& a, const T& b) const {
        return Keep()(a, b) ? a : b;
    }
};

}  // namespace vorm::assessments::detail
