#pragma once

// For the operators: what plus, minus, times and order mean for each value type. Integers wrap,
// computed in the widest unsigned type since signed overflow is undefined and small types promote.

#include <vorm/assessments/trace/value_traits.hpp>

#include <cmath>
#include <cstdint>

namespace vorm::assessments::detail {

// Of bool too, although no operator adds truths: the operators refuse bool when they run.
template <class T>
inline constexpr bool wraps = support::isInteger<T> || support::isBool<T>;

// Verdicts too, whose operators throw.
template <class T>
inline constexpr bool isComputedAsIs =
    support::isReal<T> || support::isHalf<T> || support::isFixedPoint<T> || support::isVerdict<T>;

template <class T>
T sum(const T& a, const T& b) {
    if constexpr (wraps<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    } else if constexpr (isComputedAsIs<T>) {
        return a + b;
    } else {
        static_assert(support::isForgotten<T>, "A value type without a sum.");
    }
}

template <class T>
T difference(const T& a, const T& b) {
    if constexpr (wraps<T>) {
        return static_cast<T>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    } else if constexpr (isComputedAsIs<T>) {
        return a - b;
    } else {
        static_assert(support::isForgotten<T>, "A value type without a difference.");
    }
}

template <class T>
T differenceFromZeroUp(const T& a, const T& b) {
    const T exact = difference(a, b);
    if constexpr (support::isFixedPoint<T>) {
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
        static_assert(support::isForgotten<T>, "A value type without a product.");
    }
}

template <class T>
T negative(const T& a) {
    if constexpr (wraps<T>) {
        return difference(T{0}, a);
    } else if constexpr (isComputedAsIs<T>) {
        return -a;
    } else {
        static_assert(support::isForgotten<T>, "A value type without a negative.");
    }
}

template <class T>
T absolute(const T& a) {
    if constexpr (support::isReal<T>) {
        return std::fabs(a);
    } else if constexpr (support::isHalf<T>) {
        return abs(a);
    } else if constexpr (support::isFixedPoint<T>) {
        return T(abs(a.get()));
    } else if constexpr (support::isInteger<T>) {
        return a < T{0} ? negative(a) : a;
    } else {
        static_assert(support::isForgotten<T>, "A value type without an absolute value.");
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
