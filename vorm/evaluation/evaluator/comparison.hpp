#pragma once

// For the evaluator: the truth of comparisons of two traces of one type. Each throws
// AssessmentBinaryTypeException for operands of different types, for two enumerations, for an
// enumeration beside something else, and for an order of an enumeration. The result is held, with
// exact crossings of lines.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/assessments/facade/timed_trace.hpp>

namespace vorm::evaluation {

/// The comparison of that code, Eq to Geq. A NaN on either side makes each false, except Neq.
assessments::TimedTrace compare(assessments::VORM_OP op, const assessments::TimedTrace& left,
                                const assessments::TimedTrace& right);

/// Where the trace is not zero. Throws AssessmentTypeException for enumerations and verdicts.
assessments::TimedTrace isNotZero(const assessments::TimedTrace& trace);

/// Logical negation. Throws AssessmentTypeException for all but bool.
assessments::TimedTrace logicalNot(const assessments::TimedTrace& trace);

/// Throws AssessmentBinaryTypeException unless the types of the two can be compared so.
void requireComparable(assessments::VORM_OP op, const assessments::TimedTrace& left,
                       const assessments::TimedTrace& right);

}  // namespace vorm::evaluation
