#pragma once

// The formats that a run writes: one for the output, and others that name their file.

#include "options.hpp"

#include <string>
#include <vector>

namespace assess {

/// What is wrong with `format` or `format=path`, or nothing.
std::string reportProblem(const std::string& text);

/// Throws CLI::ValidationError for a second one without a file.
void takeReports(Options& options, const std::vector<std::string>& texts);

}  // namespace assess
