#pragma once

// For the evaluator: by how much comparisons hold, and what robustness is of truth that no change
// of a number alters: plus infinity where it is true, minus infinity where it is false.
//
// A line cannot reach infinity: its slope there would be one, and the values on it NaN. Where a
// held infinity meets a line it is therefore 1e200 until the result is final. Robustness of that
// size in a linear trace then counts as infinite. Beside a line, certainty that flips at two
// neighbouring doubles hides the value at the first of them.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/evaluator/changed_trace.hpp>

namespace vorm::evaluation {

/// A bool trace as infinities of double.
assessments::TimedTrace asCertainty(const assessments::TimedTrace& trace);

/// By how much the comparison of that code holds: a difference of double for numbers, certainty for
/// bool, verdicts and enumerations. Fails as compare does.
assessments::TimedTrace comparisonRobustness(assessments::VORM_OP op,
                                             const assessments::TimedTrace& left,
                                             const assessments::TimedTrace& right);

/// The trace with 1e200 for infinity, as an operand beside a line; one without infinities stays as
/// it is.
ChangedTrace withFiniteCertainty(const assessments::TimedTrace& trace);

/// A line with infinity for 1e200 and more; any other trace as it is.
assessments::TimedTrace withInfiniteCertainty(const assessments::TimedTrace& trace);

/// Whether withInfiniteCertainty changes anything.
bool hasFiniteCertainty(const assessments::TimedTrace& trace);

}  // namespace vorm::evaluation
