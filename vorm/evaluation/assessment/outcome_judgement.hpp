#pragma once

// What truth values make of the outcome of an assessment; for the sources of this folder.

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>

#include <exception>
#include <string>

namespace vorm::evaluation::detail {

/// What does not depend on data.
AssessmentOutcome describedOutcome(const Assessment& assessment);

/// Fills in verdict, times, failing intervals and the reason for no result.
void judge(const TypedAssessment& assessment, const Truth& truth, AssessmentOutcome& outcome);

/// Whether the trigger of a formula is certainly false wherever the assessment looks at it.
bool isFalseThroughout(const TypedAssessment& assessment, const Trigger& trigger,
                       const Truth& truth);

/// Whether nothing that is open can make a difference to the assessment's robustness. Where it
/// is false that may still be so.
bool surelyDecidesRobustness(const TypedAssessment& assessment);

/// The error of an evaluation that failed, placed at the formula in its file.
InputError evaluationFailure(const TypedAssessment& assessment, const std::exception_ptr& failure);

}  // namespace vorm::evaluation::detail
