#pragma once

#include "options.hpp"

#include <vorm/evaluation/recording/recording.hpp>

#include <string>
#include <vector>

namespace assess {

// The sub-commands. They throw vorm::evaluation::InputError for input that cannot be used.

/// The names of the formats that runAssessments knows.
std::vector<std::string> runFormats();

ExitCode runAssessments(const Options& options);
ExitCode checkAssessments(const Options& options);
ExitCode showSignals(const Options& options);
ExitCode showAssessment(const Options& options);

/// The recordings that the command line names: each path one, or all of them together.
std::vector<vorm::evaluation::RecordingSource> recordingsOf(const Options& options);

}  // namespace assess
