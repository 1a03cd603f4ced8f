#pragma once

// For the facade: every comparison of two traces as one algorithm with a table as its parameter.

#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments::detail {

/// What a comparison is for each order of two values. Where one is NaN they have none.
struct Relation {
    bool less;
    bool equal;
    bool greater;
    bool unordered = false;

    template <class T>
    bool operator()(const T& a, const T& b) const {
        if (a < b) {
            return less;
        }
        if (b < a) {
            return greater;
        }
        return a == b ? equal : unordered;
    }
};

/// combine with a relation. The crossings of two lines do not depend on the relation, so that a
/// comparison and its opposite never hold at one time. Throws AssessmentBinaryTypeException unless
/// both traces are of the same enumeration or of none.
template <class T>
TimedTrace_T<bool> compare(const TimedTrace_T<T>& left, const TimedTrace_T<T>& right,
                           const Relation& relation);

}  // namespace vorm::assessments::detail
