#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/layout_keys.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace assess {

/// What the program tells its caller; of several things the greatest one.
enum class ExitCode : int {
    NothingFailed = 0,
    SomethingFailed = 1,
    WrongUsage = 2,
    UnusableInput = 3,  ///< also of an output that cannot be written
};

enum class ColourChoice { Auto, Always, Never };

/// What sets parameters, also for messages.
inline constexpr const char* parameterOption = "--set";

/// What the command line asks for.
struct Options {
    ExitCode (*command)(const Options&) = nullptr;  ///< the sub-command

    std::string assessments;              ///< path; `-` is standard input
    std::vector<std::string> recordings;  ///< paths; `-` is standard input
    std::string recordingList;            ///< path of a list of more of them; or empty
    std::string name;                     ///< of the assessment to show
    std::vector<std::string> only;        ///< the assessments to run; empty: all
    std::vector<std::string> skip;        ///< those to leave out
    bool together = false;                ///< whether all paths are one recording
    std::vector<vorm::evaluation::LayoutSetting>
        layout;  ///< changes to that of the assessment file
    std::vector<vorm::evaluation::ParameterSetting> parameters;  ///< in the assessment file
    bool robustness = false;
    bool explain = false;
    std::string baseline;         ///< path of an earlier report in JSON to compare with; or empty
    bool failsOnNewOnly = false;  ///< whether only what did not fail in the baseline fails the run
    bool resume = false;          ///< whether to go on after the lines that a file has
    bool strict = false;          ///< whether what is open at some time has not passed

    std::string format = "table";  ///< of the results: one of those of the sub-command
    std::string output;            ///< path; empty: standard output
    /// Results that go to files of their own, each as its format and its path.
    std::vector<std::pair<std::string, std::string>> reports;
    double reportMegabytes = 20;  ///< what a page takes at most
    bool plotsAll = false;        ///< also of what passes
    std::optional<std::size_t> intervals;
    std::optional<std::size_t> values;
    std::optional<double> margin;
    bool withoutPlot = false;  ///< no picture where an assessment is shown on a terminal

    unsigned jobs = 1;
    bool quiet = false;
    bool verbose = false;  ///< whether to tell how recordings are read
    ColourChoice colour = ColourChoice::Auto;
};

}  // namespace assess
