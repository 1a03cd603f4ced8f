#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

/// a > b. The strict comparison of two traces is combine<bool>(other, ValueGreater()); the others
/// follow from it by swapping the operands and negating. False where either is NaN.
struct VORM_ASSESSMENTS_EXPORT ValueGreater {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return b < a;
    }
};

/// a >= b.
struct VORM_ASSESSMENTS_EXPORT ValueGreaterEq {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return b <= a;
    }
};

/// a <= b.
struct VORM_ASSESSMENTS_EXPORT ValueLessEq {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return a <= b;
    }
};

}  // namespace vorm::assessments
