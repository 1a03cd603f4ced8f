#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/baseline.hpp>

#include <string>

namespace vorm::evaluation {

/// The outcome as JUnit XML, for continuous integration: a test suite per recording, a test case
/// per assessment. FAIL is a failure, input that cannot be used an error, NO_RESULT a skipped case
/// with the reason; where the run is strict, what does not pass throughout is a failure. What is
/// otherwise than in a baseline is among the output of its test case.
std::string junitReport(const RunOutcome& run, const BaselineComparison* comparison = nullptr);

}  // namespace vorm::evaluation
