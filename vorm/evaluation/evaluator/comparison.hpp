#pragma once

// For the evaluator: the truth of comparisons.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>

namespace vorm::evaluation {

/// An operand of a comparison. What arithmetic made of a line has rounded samples; signals,
/// constants and what only moves or converts them have the samples that were recorded.
struct Compared {
    const TracePieces& pieces;
    bool isComputed;
};

/// Where the comparison of that code, Eq to Geq, of two quantities of one type holds: open where
/// either is not known. A NaN on either side makes each false, except Neq. Held values compare as
/// they are.
///
/// A line has its exact value at every time. Where two operands cross between two samples they are
/// equal at the nearest representable time and in their new order from the next one on; if that
/// nearest time is the one of another event, they are equal there. Only where both have a recorded
/// sample do these alone decide. Values on lines that differ by a few units in the last place are
/// equal, too. What a line does from one representable time to the next is a step, and crosses
/// nothing.
///
/// Throws AssessmentBinaryTypeException for operands of different types, for two enumerations, for
/// an enumeration beside something else, and for an order of an enumeration. Linear, with no look
/// at what either operand is outside the other's pieces.
Truth compare(assessments::VORM_OP op, const Compared& left, const Compared& right);

/// Where a quantity is not zero. Throws AssessmentTypeException for enumerations and verdicts.
Truth isNotZero(const Compared& quantity);

/// Throws AssessmentBinaryTypeException unless the types of the two can be compared so.
void requireComparable(assessments::VORM_OP op, const assessments::TimedTrace& left,
                       const assessments::TimedTrace& right);

}  // namespace vorm::evaluation
