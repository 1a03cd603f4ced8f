#pragma once

// For the evaluator: by how much formulas hold, as one trace of double over all of time. What is
// open is as bad or as good there as it can be, and what no change of a number alters is plus
// infinity where it is true and minus infinity where it is false.
//
// A line cannot reach infinity: its slope there would be one, and the values on it NaN. Beside
// lines an infinity is therefore 1e200 or -3e200 until the result is final, and comes and goes in
// one step of time. What is open is 5e200: where certainty flips at the last known time, the two
// steps after each other would else be one line, on which the value between them is lost.
// Robustness of such size then counts as infinite.

#include <vorm/evaluation/evaluator/changed_trace.hpp>
#include <vorm/evaluation/evaluator/comparison.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/evaluator/step_line.hpp>

namespace vorm::evaluation {

bool isRobustness(Meaning meaning);

/// What the open counts as under a meaning that is one of robustness.
double openAs(Meaning meaning);

/// Truth as infinities.
SharedPieces certainty(const Truth& truth, double open);

/// By how much the comparison of that code holds: a difference of double for numbers, certainty for
/// bool, verdicts and enumerations. Fails as compare does.
SharedPieces comparisonRobustness(assessments::VORM_OP op, const Compared& left,
                                  const Compared& right, double open);

/// The robustness just before each time, for a formula with that truth: as epsilonShifted has it,
/// it is what it is where the truth begins to be known, and where it ends.
assessments::TimedTrace justBefore(const assessments::TimedTrace& robustness, const Truth& truth);

/// The trace with 1e200 or -3e200 for infinity, as an operand beside a line; one without infinities
/// stays as it is.
ChangedTrace withFiniteCertainty(const assessments::TimedTrace& trace);

/// The trace with infinity for 1e200 and more.
assessments::TimedTrace withInfiniteCertainty(const assessments::TimedTrace& trace);

/// Whether withInfiniteCertainty changes anything.
bool hasFiniteCertainty(const assessments::TimedTrace& trace);

/// The operation on two robustnesses, of which one may be a line.
template <class Operation>
assessments::TimedTrace onFinite(const assessments::TimedTrace& left,
                                 const assessments::TimedTrace& right, Operation operation) {
    if (!isMixed(left, right)) {
        return operation(left, right);
    }
    const ChangedTrace finiteLeft = withFiniteCertainty(left);
    const ChangedTrace finiteRight = withFiniteCertainty(right);
    return onAligned(changedOr(finiteLeft, left), changedOr(finiteRight, right), operation);
}

}  // namespace vorm::evaluation
