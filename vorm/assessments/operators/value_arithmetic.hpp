#pragma once

// For operators: what plus, minus and times mean for each value type. Integers wrap,
// computed in the widest unsigned type since signed overflow is undefined and small types promote.

#include <vorm/assessments/trace/value_traits.hpp>

#include <cmath>
#include <cstdint>
#include <limits>

namespace vorm::assessments::support {

// Of bool too, although no operator adds truths: the operators refuse bool when they run.
template <class T>
inline constexpr bool wraps = isInteger<T> || isBool<T>;

// Verdicts too, whose operators throw.
template <class T>
inline constexpr bool isComputedAsIs = isReal<T> || isHalf<T> || isFixedPoint<T> || isVerdict<T>;

template <class T>
T sum(const T& a, const T& b) {
    if constexpr (wraps<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    } else if constexpr (isComputedAsIs<T>) {
        return a + b;
    } else {
        static_assert(isForgotten<T>, "A value type without a sum.");
    }
}

template <class T>
T difference(const T& a, const T& b) {
    if constexpr (wraps<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    } else if constexpr (isComputedAsIs<T>) {
        return a - b;
    } else {
        static_assert(isForgotten<T>, "A value type without a difference.");
    }
}

template <class T>
T differenceFromZeroUp(const T& a, const T& b) {
    const T exact = difference(a, b);
    if constexpr (isFixedPoint<T>) {
        return a < b ? fromDouble(0, a) : exact;
    } else {
        return a < b ? ZERO<T>() : exact;
    }
}

template <class T>
T product(const T& a, const T& b) {
    if constexpr (wraps<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
    } else if constexpr (isComputedAsIs<T>) {
        return a * b;
    } else {
        static_assert(isForgotten<T>, "A value type without a product.");
    }
}

/// Of floating numbers; NaN where b is 0.
template <class T>
T quotient(const T& a, const T& b) {
    const double divisor = toDouble(b);
    return divisor == 0 ? fromDouble(std::numeric_limits<double>::quiet_NaN(), a)
                        : fromDouble(toDouble(a) / divisor, a);
}

template <class T>
T negative(const T& a) {
    if constexpr (wraps<T>) {
        return difference(T{0}, a);
    } else if constexpr (isComputedAsIs<T>) {
        return -a;
    } else {
        static_assert(isForgotten<T>, "A value type without a negative.");
    }
}

template <class T>
T absolute(const T& a) {
    if constexpr (isReal<T>) {
        return std::fabs(a);
    } else if constexpr (isHalf<T>) {
        return abs(a);
    } else if constexpr (isFixedPoint<T>) {
        return T(abs(a.get()));
    } else if constexpr (isInteger<T>) {
        return a < T{0} ? negative(a) : a;
    } else {
        static_assert(isForgotten<T>, "A value type without an absolute value.");
    }
}

}  // namespace vorm::assessments::support
