#pragma once

// For the evaluator: functions of one or two held numbers, value by value.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/assessments/facade/timed_trace.hpp>

namespace vorm::evaluation {

/// The function of that code of each value of a held trace of a floating type. What it is not
/// defined for gives NaN. Throws AssessmentInternalException for a line, of which it makes none.
assessments::TimedTrace functionOf(assessments::VORM_OP op, const assessments::TimedTrace& trace);

/// Each value to the power of the other trace's. Throws as functionOf does.
assessments::TimedTrace powerOf(const assessments::TimedTrace& base,
                                const assessments::TimedTrace& exponent);

/// Throws AssessmentInternalException for a line, which that operator makes no line of.
void requireHeldFor(assessments::VORM_OP op, const assessments::TimedTrace& trace);

}  // namespace vorm::evaluation
