#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// How many causes of an interval lists for people show.
inline constexpr std::size_t mostCausesShown = 5;

/// `p is false at 3 s`.
std::string causeText(const Cause& cause);

/// Why a requirement fails in one interval, a line for each cause, `because p is false at 3 s`; at
/// most that many, and one that counts the others. The last line tells how many other sets of
/// conditions account for it.
std::vector<std::string> causeLines(const FailureExplanation& explanation, std::size_t most);

/// That so many intervals more are as those that are shown: `and in 2 more intervals`.
std::string moreIntervalsText(std::size_t count);

/// A line for each failing interval, at most that many, with its causes where they are explained,
/// and one that counts the others.
std::vector<std::string> failureLines(const AssessmentOutcome& outcome, std::size_t most);

/// The same for the times without result, with the share of the range that they are and the reasons
/// for them; the reasons only where there is no result at all.
std::vector<std::string> openLines(const AssessmentOutcome& outcome, std::size_t most);

}  // namespace vorm::evaluation
