#pragma once

// Formulas on the signals of a recording; for the sources of this folder.

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <vector>

namespace vorm::evaluation::detail {

/// The pieces of the recording's signals, which it shares, and its time, sharp at the numbers that
/// the formulas compare it with. It has all signals of a formula that was typed for the recording.
SignalLookup lookupIn(const Recording& recording,
                      const std::vector<const assessments::Expression*>& formulas);

/// Refers to both arguments.
EvaluationOptions evaluationOptions(const Recording& recording, const RunOptions& options);

}  // namespace vorm::evaluation::detail
