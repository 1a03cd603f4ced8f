#pragma once

#include "options.hpp"

#include <variant>

namespace assess {

/// Reads the command line. Where there is nothing more to do (help, version, wrong usage) the text
/// has been written and the result is the program's exit code.
std::variant<Options, ExitCode> parseCommandLine(int argc, const char* const* argv);

}  // namespace assess
