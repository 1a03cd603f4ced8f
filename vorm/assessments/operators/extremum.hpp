#pragma once

// For whatever looks for the greatest or the least of several values.

#include <vorm/assessments/trace/value_traits.hpp>

namespace vorm::assessments::support {

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

}  // namespace vorm::assessments::support
