#pragma once

#include "options.hpp"

#include <array>

namespace assess {

enum class Command { Run, Check, Signals, Init, Show };

struct SubCommand {
    Command command;
    const char* name;
    const char* help;
    const char* examples;  ///< lines that begin with two blanks
    ExitCode (*run)(const Options&);
};

/// All of them.
const std::array<SubCommand, 5>& subCommands();

const char* nameOf(Command command);

}  // namespace assess
