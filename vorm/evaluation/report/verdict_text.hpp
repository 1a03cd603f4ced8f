#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>

#include <string>

namespace vorm::evaluation {

/// How an assessment ended, in one word: `PASS`, `FAIL`, `NO_RESULT` or `ERROR`.
std::string verdictText(const AssessmentOutcome& outcome);

/// `PASS`, `FAIL` or `NO_RESULT`.
std::string verdictName(assessments::resultEnum_t verdict);

/// How many of the assessments of a run ended in each way. A recording that cannot be used is one
/// error.
struct VerdictCounts {
    std::size_t passed = 0;
    std::size_t failed = 0;
    std::size_t noResult = 0;
    std::size_t errors = 0;
};

VerdictCounts countVerdicts(const RunOutcome& run);
VerdictCounts countVerdicts(const RecordingOutcome& recording);

/// A time in seconds: with fifteen digits where these tell it to the nanosecond, which hides the
/// one representable step by which an end can lie beside a time of the recording; else with all
/// digits.
std::string timeText(double seconds);

/// A length of time in seconds with up to nine digits, since it is a sum.
std::string durationText(double seconds);

/// `from 3 s to 4.5 s`, or `at 3 s` for one instant.
std::string intervalText(const FailingInterval& interval);

}  // namespace vorm::evaluation
