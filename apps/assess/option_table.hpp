#pragma once

// The options of the program, once: the parser, the manual and the completions are made of them.

#include "options.hpp"
#include "sub_commands.hpp"
#include "value_checks.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace assess {

/// What is told in the place of a run.
enum class Answer { Help, Version };

/// Where values go: a flag to a bool, a value to another member, and what is no member's value is
/// taken by a function, which gets all texts that were given.
using Storing =
    std::variant<Answer, bool Options::*, unsigned Options::*, double Options::*,
                 std::optional<std::size_t> Options::*, std::optional<double> Options::*,
                 std::string Options::*, std::vector<std::string> Options::*,
                 std::function<void(Options&, const std::vector<std::string>&)>>;

enum class Occurrence {
    Once,
    Repeatable,  ///< each time with one value
    Several,     ///< with several values after it
};

enum class OptionGroup { Own, Layout };

struct OptionEntry {
    std::string names;  ///< `-o,--output`, or of what has a place of its own a word: `RECORDING`
    std::vector<Command> commands{};  ///< those that have it; none: all, before or after them
    std::string value{};  ///< a word for its value, or forms of it: `FILE`, `recorded|NUMBER`
    std::vector<std::string> choices{};      ///< in the place of `value`: nothing else is taken
    std::vector<std::string> suggestions{};  ///< what completions offer, where more is taken
    bool isPath = false;                     ///< whether completions offer files
    bool mayBeMissing = false;               ///< of what has a place of its own
    Occurrence occurrence = Occurrence::Once;
    OptionGroup group = OptionGroup::Own;
    std::string help;    ///< one clause without a full stop; completions show it up to a `;` or `:`
    std::string more{};  ///< sentences that the manual adds
    ValueCheck check{};  ///< of each value; none: every text is taken
    Storing store;
};

/// All of them, in the order in which help and manual list them.
const std::vector<OptionEntry>& optionTable();

/// Without a name that begins with a dash: its place among the arguments tells what it is.
bool isPositional(const OptionEntry& entry);

/// Whether the entry belongs to that sub-command alone or among others, but not to the program.
bool isOf(const OptionEntry& entry, Command command);

/// The last of its names, which is its long one.
std::string longName(const OptionEntry& entry);

/// Its value as help shows it: `FILE`, `auto|always|never`; empty for a flag.
std::string valueText(const OptionEntry& entry);

/// What completions offer for its value.
const std::vector<std::string>& offeredWords(const OptionEntry& entry);

}  // namespace assess
