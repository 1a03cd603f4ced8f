#pragma once

// For the evaluator: sums over windows, per second.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/timeline.hpp>

namespace vorm::evaluation {

/// The integral, the mean, the duration or the count over the window [t + a, t + b] of one piece,
/// known wherever all of the window is. Throws AssessmentInternalException for a line and, naming
/// the time, for a NaN or an infinite number.
assessments::TimedTrace windowSum(assessments::VORM_OP op, double a, double b,
                                  const assessments::TimedTrace& piece, const Timeline& timeline);

}  // namespace vorm::evaluation
