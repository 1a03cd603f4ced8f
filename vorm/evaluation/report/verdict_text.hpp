#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/outcome_mark.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// The whole message of an error; empty where there is none.
std::string errorText(const std::optional<InputError>& error);

/// How an assessment ended, in one word: `PASS`, `FAIL`, `NO_RESULT` or `ERROR`.
std::string verdictText(const AssessmentOutcome& outcome);

/// How many of the assessments of a run ended in each way. A recording that cannot be used is one
/// error. Under strict, what passes and is open at some time counts as open.
struct VerdictCounts {
    std::size_t passed = 0;
    std::size_t failed = 0;    ///< of the severity error
    std::size_t warnings = 0;  ///< that failed
    std::size_t infos = 0;     ///< that failed
    std::size_t open = 0;
    std::size_t noResult = 0;
    std::size_t errors = 0;
};

/// Counts one assessment more.
void count(Mark mark, VerdictCounts& counts);

VerdictCounts countVerdicts(const RunOutcome& run);
VerdictCounts countVerdicts(const RecordingOutcome& recording, bool strict);

/// A number with up to so many digits.
std::string numberText(double number, int digits = 9);

/// Whether the recording decides the robustness, which was computed.
bool hasDecidedRobustness(const AssessmentOutcome& outcome);

/// The robustness, `-0.5`, or between what it lies, `-inf to 3`; `-` where there is none.
std::string robustnessText(const AssessmentOutcome& outcome);

/// A length of time in seconds with up to nine digits, since it is a sum.
std::string durationText(ExactTime length);

/// That an assessment was never triggered, and why; empty where it was.
std::string neverTriggeredText(const AssessmentOutcome& outcome);

}  // namespace vorm::evaluation
