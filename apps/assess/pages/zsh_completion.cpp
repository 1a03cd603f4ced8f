#include "pages.hpp"
#include "words.hpp"

#include <algorithm>

namespace assess {
namespace {

// Within quotes, and there within brackets.
std::string withinBrackets(const std::string& text) {
    std::string shown;
    for (const char c : text) {
        shown += c == '\''               ? "'\\''"
                 : c == ']' || c == '\\' ? std::string("\\") + c
                                         : std::string(1, c);
    }
    return shown;
}

std::string described(const std::string& name, const std::string& help) {
    return name + "[" + withinBrackets(help.substr(0, help.find_first_of(";:"))) + "]";
}

// What is asked for, and what is offered.
std::string valueSpec(const OptionEntry& entry) {
    if (valueText(entry).empty()) {
        return "";
    }
    std::string asked = longName(entry).substr(2);
    std::replace(asked.begin(), asked.end(), '-', ' ');
    const std::string words = joined(offeredWords(entry), " ");
    return ":" + asked + ":" + (entry.isPath ? "_files" : words.empty() ? "" : "(" + words + ")");
}

// One spec, or one for each of several names, of which a line has one, unless it can be repeated.
std::string spec(const OptionEntry& entry) {
    const std::vector<std::string> names = split(entry.names, ',');
    const bool isRepeatable = entry.occurrence != Occurrence::Once;
    const std::string rest = valueSpec(entry) + "'";
    if (names.size() == 1) {
        return (isRepeatable ? "'*" : "'") + described(names.front(), entry.help) + rest;
    }
    return (isRepeatable ? "'*'" : "'(" + joined(names, " ") + ")'") + "{" + joined(names, ",") +
           "}" + described("'", entry.help) + rest;
}

template <class IsWanted>
std::string specs(const std::vector<OptionEntry>& options, const std::string& indent,
                  const std::string& lineEnd, IsWanted isWanted) {
    std::string text;
    for (const OptionEntry& entry : options) {
        if (!isPositional(entry) && isWanted(entry)) {
            text.append(indent).append(spec(entry)).append(lineEnd);
        }
    }
    return text;
}

// What can stand in the first place.
std::string firstWords(const std::vector<OptionEntry>& options) {
    std::string text = "        _values 'command'";
    for (const SubCommand& command : subCommands()) {
        text += " \\\n            '" + described(command.name, command.help) + "'";
    }
    for (const OptionEntry& entry : options) {
        if (std::holds_alternative<Answer>(entry.store)) {
            text += " \\\n            '" + described(longName(entry), entry.help) + "'";
        }
    }
    return text + "\n";
}

std::string commandArguments(const std::vector<OptionEntry>& options, const SubCommand& command) {
    return std::string("        ") + command.name +
           ")\n"
           "            _arguments $everywhere \\\n" +
           specs(options, "                ", " \\\n",
                 [&](const OptionEntry& entry) { return isOf(entry, command.command); }) +
           "                '*:file:_files'\n"
           "            ;;\n";
}

}  // namespace

std::string zshCompletion(const std::vector<OptionEntry>& options) {
    std::string text =
        "#compdef assess\n"
        "# Completion of the program assess for zsh.\n\n"
        "_assess() {\n"
        "    local -a everywhere=(\n" +
        specs(options, "        ", "\n",
              [](const OptionEntry& entry) { return entry.commands.empty(); }) +
        "    )\n"
        "    if ((CURRENT == 2)); then\n" +
        firstWords(options) +
        "        return\n"
        "    fi\n"
        "    local command=$words[2]\n"
        "    shift words\n"
        "    ((CURRENT--))\n"
        "    case $command in\n";
    for (const SubCommand& command : subCommands()) {
        text += commandArguments(options, command);
    }
    return text +
           "    esac\n"
           "}\n\n"
           "_assess \"$@\"\n";
}

}  // namespace assess
