#pragma once

#include "options.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace assess {

/// Whether results on standard output are to be coloured.
bool wantsColours(const Options& options);

/// How many characters a line of the terminal takes; nothing where results go elsewhere.
std::optional<std::size_t> terminalWidth(const Options& options);

/// The date for reports, `2026-11-23`: that of SOURCE_DATE_EPOCH, where it is set, so that the same
/// input gives the same bytes. Throws WrongUsage where that is no time.
std::string today();

/// Writes `note: ...` or another kind of message to standard error, in lines that fit a terminal.
void note(const std::string& kind, const std::string& text);

/// One line on standard error that shows what is being done; nothing where that is no terminal or
/// the user wants quiet.
class ProgressLine {
public:
    explicit ProgressLine(const Options& options);
    /// Clears the line.
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows a text, unless the last one was shown just now.
    void show(const std::string& text);
    void clear();

private:
    bool isShown_;
    bool isDirty_ = false;
    std::chrono::steady_clock::time_point next_;
};

/// The message of an error; of one without a file the program says who speaks.
std::string messageOf(const vorm::evaluation::InputError& error);

/// Tells on standard error what was left out or changed in reading and, where the options ask for
/// it, how it was read; nothing where the user wants quiet.
void noteReading(const std::vector<std::string>& remarks, const std::vector<std::string>& warnings,
                 const Options& options);

/// Writes results to the output that the options name. Throws vorm::evaluation::InputError where
/// that fails.
void writeResults(const Options& options, const std::string& results);

/// Writes to standard output. Throws vorm::evaluation::InputError where that fails.
void writeToOutput(const std::string& text);

}  // namespace assess
