#pragma once

// For windows to the end of what was recorded, or back to its begin.

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/time/time_span.hpp>

namespace vorm::evaluation {

/// From the first to the last time at which any signal of a formula is known; all of time where
/// none ever is. Linear in the formula.
CountedSpan recordedSpan(const assessments::Expression& formula, const SignalLookup& signals);

/// What such a window of a formula may look at: nothing beyond the end, or before the begin.
CountedSpan lookedAtUpToTheEnd(const assessments::Expression& formula, assessments::VORM_OP op,
                               const SignalLookup& signals);

/// True in the span, false elsewhere.
Truth truthWithin(const CountedSpan& span);

}  // namespace vorm::evaluation
