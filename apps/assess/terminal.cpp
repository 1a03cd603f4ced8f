#include "terminal.hpp"

#include "commands.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/output_file.hpp>
#include <vorm/evaluation/text/text_columns.hpp>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <iostream>

namespace assess {
namespace {

constexpr std::chrono::milliseconds progressDistance(100);
constexpr std::size_t widestProgress = 100;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

constexpr std::size_t leastWidth = 20;

// Of a terminal; nothing of anything else.
std::optional<std::size_t> widthOf(int file) {
    constexpr std::size_t usual = 80;
    if (::isatty(file) == 0) {
        return std::nullopt;
    }
    winsize size{};
    const bool isKnown = ::ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usual;
}

}  // namespace

bool wantsColours(const Options& options) {
    if (options.colour != ColourChoice::Auto) {
        return options.colour == ColourChoice::Always;
    }
    return options.output.empty() && !isSet("NO_COLOR") && ::isatty(STDOUT_FILENO) != 0;
}

std::optional<std::size_t> terminalWidth(const Options& options) {
    return options.output.empty() ? widthOf(STDOUT_FILENO) : std::nullopt;
}

void note(const std::string& kind, const std::string& text) {
    const std::string line = kind + ": " + vorm::evaluation::withoutControls(text);
    const auto width = widthOf(STDERR_FILENO);
    for (const std::string& part :
         width ? vorm::evaluation::wrapped(line, std::max(*width, leastWidth))
               : std::vector<std::string>{line}) {
        std::cerr << part << "\n";
    }
}

std::string today() {
    std::time_t now = std::time(nullptr);
    bool isNumber = true;
    const char* variable = std::getenv("SOURCE_DATE_EPOCH");
    const std::string_view text = variable == nullptr ? "" : variable;
    if (!text.empty()) {
        const auto end = std::from_chars(text.data(), text.data() + text.size(), now);
        isNumber = end.ec == std::errc() && end.ptr == text.data() + text.size();
    }
    std::array<char, 32> date{};
    std::tm parts{};
    if (!isNumber || ::gmtime_r(&now, &parts) == nullptr ||
        std::strftime(date.data(), date.size(), "%Y-%m-%d", &parts) == 0) {
        throw WrongUsage("SOURCE_DATE_EPOCH '" + std::string(text) +
                         "' is no time in seconds since 1970: unset it, or give one");
    }
    return date.data();
}

// The first text waits, so that short runs show none.
ProgressLine::ProgressLine(const Options& options)
    : isShown_(!options.quiet && ::isatty(STDERR_FILENO) != 0),
      next_(std::chrono::steady_clock::now() + 5 * progressDistance) {}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::show(const std::string& text) {
    const auto now = std::chrono::steady_clock::now();
    if (!isShown_ || now < next_) {
        return;
    }
    next_ = now + progressDistance;
    isDirty_ = true;
    // A line that goes on below could not be cleared.
    const std::size_t width = widthOf(STDERR_FILENO).value_or(widestProgress);
    std::cerr << "\r\033[K"
              << vorm::evaluation::elided(vorm::evaluation::withoutControls(text),
                                          std::clamp<std::size_t>(width, 2, widestProgress) - 1)
              << std::flush;
}

void ProgressLine::clear() {
    if (isDirty_) {
        std::cerr << "\r\033[K" << std::flush;
        isDirty_ = false;
    }
}

std::string messageOf(const vorm::evaluation::InputError& error) {
    return (error.problem().where.file.empty() ? "assess: " : "") + std::string(error.what());
}

void noteReading(const std::vector<std::string>& remarks, const std::vector<std::string>& warnings,
                 const Options& options) {
    if (options.quiet) {
        return;
    }
    if (options.verbose) {
        for (const std::string& remark : remarks) {
            note("note", remark);
        }
    }
    for (const std::string& warning : warnings) {
        note("warning", warning);
    }
}

void writeResults(const Options& options, const std::string& results) {
    if (!options.output.empty() && options.output != "-") {
        vorm::evaluation::writeFile(options.output, results);
        return;
    }
    writeToOutput(results);
}

void writeToOutput(const std::string& text) {
    vorm::evaluation::writeAll(STDOUT_FILENO, text, "the results to standard output",
                               "write them to a file with --output");
}

}  // namespace assess
