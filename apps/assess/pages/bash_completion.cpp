#include "pages.hpp"
#include "words.hpp"

namespace assess {
namespace {

constexpr const char* head = R"bash(# Completion of the program assess for bash.
_assess() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
)bash";

// One candidate a line, since names of files have blanks.
constexpr const char* tail = R"bash(    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _assess assess
)bash";

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    for (const SubCommand& command : subCommands()) {
        names.emplace_back(command.name);
    }
    return names;
}

// Finds the sub-command before the cursor.
std::string findingCommand(const std::string& programOptions) {
    return R"(    local command="" each options=")" + programOptions +
           R"(" words=""
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $each in )" +
           joined(commandNames(), " | ") + R"() command=$each && break ;; esac
    done
    COMPREPLY=()
)";
}

// The places after which a value of that option stands, as patterns of a sub-command and a word.
std::string placesOf(const OptionEntry& entry) {
    std::vector<std::string> owners;
    for (const Command command : entry.commands) {
        owners.emplace_back(nameOf(command));
    }
    if (owners.empty()) {
        owners.emplace_back("*");
    }
    std::vector<std::string> places;
    for (const std::string& owner : owners) {
        for (const std::string& name : split(entry.names, ',')) {
            places.emplace_back(owner).append(":").append(name);
        }
    }
    return joined(places, " | ");
}

std::string choosingValues(const std::vector<OptionEntry>& options) {
    std::string text = "    case $command:$before in\n";
    for (const OptionEntry& entry : options) {
        if (isPositional(entry) || valueText(entry).empty() || entry.isPath) {
            continue;
        }
        const std::string words = joined(offeredWords(entry), " ");
        text += "        " + placesOf(entry) + ") " +
                (words.empty() ? "return" : "words=\"" + words + "\"") + " ;;\n";
    }
    return text + "    esac\n";
}

template <class IsWanted>
std::string longNames(const std::vector<OptionEntry>& options, IsWanted isWanted) {
    std::vector<std::string> names;
    for (const OptionEntry& entry : options) {
        if (!isPositional(entry) && isWanted(entry)) {
            names.push_back(longName(entry));
        }
    }
    return joined(names, " ");
}

std::string choosingOptions(const std::vector<OptionEntry>& options) {
    std::string text = "    case $command in\n";
    for (const SubCommand& command : subCommands()) {
        const std::string names = longNames(
            options, [&](const OptionEntry& entry) { return isOf(entry, command.command); });
        text += std::string("        ") + command.name + ") options+=\" " + names + "\" ;;\n";
    }
    return text +
           "    esac\n"
           "    if [[ -z $words && $word == -* ]]; then\n"
           "        words=$options\n"
           "    elif [[ -z $words && -z $command ]]; then\n"
           "        words=\"" +
           joined(commandNames(), " ") +
           "\"\n"
           "    fi\n";
}

}  // namespace

std::string bashCompletion(const std::vector<OptionEntry>& options) {
    const std::string everywhere =
        longNames(options, [](const OptionEntry& entry) { return entry.commands.empty(); });
    return head + findingCommand(everywhere) + choosingValues(options) + choosingOptions(options) +
           tail;
}

}  // namespace assess
