#include "pages.hpp"
#include "words.hpp"

#include <cctype>
#include <stdexcept>

namespace assess {
namespace {

// Hyphens would become dashes that cannot be pasted into a shell.
std::string roffText(const std::string& text) {
    std::string roff;
    for (const char c : text) {
        roff += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    }
    return roff;
}

// Such a line would be a request to the formatter.
std::string line(const std::string& roff) {
    const bool isRequest = roff.starts_with('.') || roff.starts_with('\'');
    return (isRequest ? "\\&" : "") + roff + "\n";
}

std::string bold(const std::string& text) {
    return "\\fB" + roffText(text) + "\\fR";
}

// Words in capitals, which stand for others, are italic.
std::string valueMarkup(const std::string& value) {
    std::string roff;
    bool isItalic = false;
    for (const char c : value) {
        const bool isCapital = std::isupper(static_cast<unsigned char>(c)) != 0;
        if (isCapital != isItalic) {
            roff += isCapital ? "\\fI" : "\\fR";
            isItalic = isCapital;
        }
        roff += roffText({c});
    }
    return roff + (isItalic ? "\\fR" : "");
}

std::string heading(const OptionEntry& entry) {
    std::string names;
    for (const std::string& name : split(entry.names, ',')) {
        names += (names.empty() ? "" : ", ") + bold(name);
    }
    const std::string value = valueText(entry);
    return names + (value.empty() ? "" : " " + valueMarkup(value)) +
           (entry.occurrence == Occurrence::Several ? " ..." : "");
}

std::string asContinued(std::string sentence) {
    const bool isOrdinaryWord =
        sentence.size() > 1 && std::isupper(static_cast<unsigned char>(sentence[1])) == 0;
    if (isOrdinaryWord) {
        sentence[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(sentence[0])));
    }
    return sentence;
}

// `run, show: what it does.`; what belongs to all sub-commands names none.
std::string meaning(const OptionEntry& entry) {
    if (entry.commands.empty() || entry.commands.size() == subCommands().size()) {
        return roffText(entry.help) + ".";
    }
    std::string commands;
    for (const Command command : entry.commands) {
        commands += (commands.empty() ? "" : ", ") + bold(nameOf(command));
    }
    return commands + ": " + roffText(asContinued(entry.help)) + ".";
}

std::string item(const OptionEntry& entry) {
    return ".TP\n" + line(heading(entry)) + line(meaning(entry)) +
           (entry.occurrence == Occurrence::Repeatable ? "Can be repeated.\n" : "") +
           (entry.more.empty() ? "" : line(roffText(entry.more)));
}

std::string items(const std::vector<OptionEntry>& options, OptionGroup group) {
    std::string text;
    for (const OptionEntry& entry : options) {
        if (entry.group == group && !isPositional(entry)) {
            text += item(entry);
        }
    }
    return text;
}

void fill(std::string& frame, const std::string& mark, const std::string& text) {
    const std::size_t place = frame.find(mark);
    if (place == std::string::npos) {
        throw std::invalid_argument("the frame of the manual lacks " + mark);
    }
    frame.replace(place, mark.size(), text);
}

}  // namespace

std::string manualPage(std::string frame, const std::vector<OptionEntry>& options) {
    fill(frame, "@VERSION@", VORM_VERSION);
    fill(frame, "@OPTIONS@\n", items(options, OptionGroup::Own));
    fill(frame, "@LAYOUT_OPTIONS@\n", items(options, OptionGroup::Layout));
    return frame;
}

}  // namespace assess
