#pragma once

// What is installed beside the program to tell of its options. It is written while the program is
// built, from the options that it is given.

#include "option_table.hpp"

#include <string>
#include <vector>

namespace assess {

/// The manual, from a frame with the marks `@VERSION@`, `@OPTIONS@` and `@LAYOUT_OPTIONS@`. Throws
/// std::invalid_argument where the frame lacks one.
std::string manualPage(std::string frame, const std::vector<OptionEntry>& options);

// Names of options and words of values must be free of what shells read as something else.

std::string bashCompletion(const std::vector<OptionEntry>& options);

std::string zshCompletion(const std::vector<OptionEntry>& options);

}  // namespace assess
