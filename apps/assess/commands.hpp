#pragma once

#include "exit_code.hpp"
#include "options.hpp"

#include <vorm/evaluation/recording/recording.hpp>

#include <vector>

namespace assess {

// The sub-commands. They throw vorm::evaluation::InputError for input that cannot be used.

ExitCode runAssessments(const Options& options);
ExitCode checkAssessments(const Options& options);
ExitCode showSignals(const Options& options);
ExitCode showAssessment(const Options& options);

/// The recordings that the command line names: each path one, or all of them together.
std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options);

}  // namespace assess
