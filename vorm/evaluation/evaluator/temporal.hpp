#pragma once

// For the evaluator: the operators over windows of time, on truth and on robustness over all of
// time. The end of a window may be infinite, never that of numbers.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>

namespace vorm::evaluation {

/// Whether the operand holds at some time of the window [a, b] of that operator, or throughout.
Truth windowOn(assessments::VORM_OP op, double a, double b, const Truth& operand);
assessments::TimedTrace windowOn(assessments::VORM_OP op, double a, double b,
                                 const assessments::TimedTrace& robustness);

/// The extremum of a number over a window, known wherever all of the window is, also before the
/// number begins. Throws AssessmentInternalException for a window that does not end.
assessments::TimedTrace windowOnNumbers(assessments::VORM_OP op, double a, double b,
                                        const assessments::TimedTrace& number);

/// Until or since.
Truth untilOn(assessments::VORM_OP op, double a, double b, const Truth& condition,
              const Truth& goal);
assessments::TimedTrace untilOn(assessments::VORM_OP op, double a, double b,
                                const assessments::TimedTrace& condition,
                                const assessments::TimedTrace& goal);

}  // namespace vorm::evaluation
