#pragma once

// A recording with what the assessments of a file need of it; for the sources of this folder.

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation::detail {

class AssessedRecording {
public:
    /// Reads the signals that the assessments use. Throws InputError as readRecording does.
    AssessedRecording(const AssessmentFile& file, const std::vector<const Assessment*>& assessments,
                      const RecordingSource& source, const RunOptions& options);

    AssessedRecording(const AssessedRecording&) = delete;
    AssessedRecording& operator=(const AssessedRecording&) = delete;

    /// The formula of an assessment for the types of this recording. Throws InputError.
    Formula formulaOf(const Assessment& assessment) const;

    /// The range of time that an assessment looks at; nothing where its signals have no samples
    /// there.
    std::optional<TimeRange> rangeOf(const Assessment& assessment, const Formula& formula) const;

    /// Verdict, times, failing intervals and the reason for no result, from the truth values.
    void judge(const Assessment& assessment, const Formula& formula, const Truth& truth,
               AssessmentOutcome& outcome) const;

    /// Whether the trigger of a formula is certainly false wherever the assessment looks at it.
    bool isFalseThroughout(const Assessment& assessment, const Formula& formula,
                           const Trigger& trigger, const Truth& truth) const;

    /// Whether nothing that is open can make a difference to the assessment's robustness. Where it
    /// is false that may still be so.
    bool surelyDecidesRobustness(const Assessment& assessment, const Formula& formula) const;

    /// The message of an evaluation that failed, placed at the formula in its file.
    std::string failureMessage(const Assessment& assessment, const Formula& formula,
                               const std::exception_ptr& failure) const;

    SignalLookup lookup() const;
    EvaluationOptions evaluationOptions() const;
    const Recording& recording() const { return recording_; }

    /// The signals that a formula looks at.
    std::vector<const Signal*> signalsOf(const Formula& formula) const;

private:
    std::string reasonForNoResult(const Assessment& assessment, const Formula& formula) const;

    const AssessmentFile& file_;
    const RunOptions& options_;
    Recording recording_;
    FormulaNames names_;  // refers to the recording
};

/// What does not depend on data.
AssessmentOutcome describedOutcome(const Assessment& assessment);

}  // namespace vorm::evaluation::detail
