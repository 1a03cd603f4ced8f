#pragma once

// For the evaluator: the extremum of a number over a window of time.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/signal/signal.hpp>

namespace vorm::evaluation {

/// The extremum over the window [a, b] of that operator, known wherever the number is in all of the
/// window, also before it begins. NaN where a piece of NaN lies in the window, which is beside what
/// it interrupts with nothing between. Throws AssessmentInternalException for a window that does
/// not end.
SharedPieces numberWindow(assessments::VORM_OP op, double a, double b, const TracePieces& number);

}  // namespace vorm::evaluation
