#pragma once

// For the evaluator: numeric operations on one held and one linear operand. Their result is linear,
// and combine shows a step of the held operand as a line from the sample before it. Here a step
// takes one representable double, so that the result is exact at every time.

#include <vorm/evaluation/evaluator/changed_trace.hpp>
#include <vorm/evaluation/signal/signal.hpp>

namespace vorm::evaluation {

/// A held trace of an interpolating type as a linear one with a sample of the old value at the
/// double before each step; any other trace, and one without a step, stays as it is.
ChangedTrace steppingLine(const assessments::TimedTrace& trace);

/// The pieces of a held quantity for an operation with lines, none of which leads to or from NaN:
/// each is NaN throughout or nowhere. The same pieces where `other` is not linear, or nothing is
/// NaN.
SharedPieces withNanApart(const SharedPieces& pieces, const TracePieces& other);

/// Whether one of the two is held and the other linear.
bool isMixed(const assessments::TimedTrace& left, const assessments::TimedTrace& right);

/// The operation on the two, a held one beside a linear one as a stepping line.
template <class Operation>
assessments::TimedTrace onAligned(const assessments::TimedTrace& left,
                                  const assessments::TimedTrace& right, Operation operation) {
    if (!isMixed(left, right)) {
        return operation(left, right);
    }
    const ChangedTrace leftLine = steppingLine(left);
    const ChangedTrace rightLine = steppingLine(right);
    return operation(changedOr(leftLine, left), changedOr(rightLine, right));
}

}  // namespace vorm::evaluation
