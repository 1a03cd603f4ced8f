#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/time_writer.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// How many causes of an interval lists for people show.
inline constexpr std::size_t mostCausesShown = 5;

/// `at 3 s`, `from 3 s to 4.5 s`: when the condition of a cause is so.
std::string whenText(const Cause& cause, const TimeWriter& times);

/// `p is false at 3 s`.
std::string causeText(const Cause& cause, const TimeWriter& times);

/// `'radar' has a hole from 3 s to 4 s`.
std::string reasonText(const OpenReason& reason, const TimeWriter& times);

/// Why a requirement fails in one interval, a line for each cause, `because p is false at 3 s`; at
/// most that many, one that counts the others, and one for each definition that they name. The last
/// line tells how many other sets of conditions account for it.
std::vector<std::string> causeLines(const FailureExplanation& explanation, std::size_t most,
                                    const TimeWriter& times);

/// That so many intervals more are as those that are shown: `and in 2 more intervals`.
std::string moreIntervalsText(std::size_t count);

/// A line for each failing interval, at most that many, with its causes where they are explained,
/// and one that counts the others. Times have enough digits to differ in the text.
std::vector<std::string> failureLines(const AssessmentOutcome& outcome, std::size_t most,
                                      const TimeWriter& times);

/// The same for the times without result, with the share of the range that they are and the reasons
/// for them; the reasons only where there is no result at all.
std::vector<std::string> openLines(const AssessmentOutcome& outcome, std::size_t most,
                                   const TimeWriter& times);

}  // namespace vorm::evaluation
