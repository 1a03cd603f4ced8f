#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace assess {

/// The sub-commands.
enum class Command { Run, Check, Signals, Show };

/// The forms in which results can be written.
enum class Format { Table, Json, Junit };

enum class ColourChoice { Auto, Always, Never };

/// What the command line asks for.
struct Options {
    Command command = Command::Run;

    std::string assessments;              ///< path; `-` is standard input
    std::vector<std::string> recordings;  ///< paths; `-` is standard input
    std::string name;                     ///< of the assessment to show
    std::vector<std::string> only;        ///< names of the assessments to run; empty: all
    bool together = false;                ///< whether all paths are one recording
    bool robustness = false;
    bool explain = false;
    bool strict = false;  ///< whether what is open at some time has not passed

    Format format = Format::Table;
    std::string output;  ///< path; empty: standard output
    std::optional<std::size_t> intervals;
    std::optional<std::size_t> values;
    std::optional<double> margin;

    unsigned jobs = 1;
    bool quiet = false;
    ColourChoice colour = ColourChoice::Auto;
};

}  // namespace assess
