#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/table_report.hpp>

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vorm::evaluation {

/// What an earlier JSON report told, as far as later ones are compared with it.
struct Baseline {
    struct Entry {
        std::string verdict;
        bool passesThroughout = false;
        Severity severity = Severity::Error;
        std::vector<std::pair<double, double>> failures;  ///< start and end, in seconds
    };

    struct Recording {
        bool isUsable = true;
        std::map<std::string, Entry> assessments;
    };

    std::string path;
    bool strict = false;  ///< whether what is open has failed its run
    std::map<std::string, Recording> recordings;
};

/// Reads a report of `assess run --format json`. What earlier versions did not tell may be missing.
/// Throws InputError, with its line, for a file that cannot be read or is no such report.
Baseline readBaseline(const std::string& path);

/// What is otherwise than in a baseline.
struct BaselineChange {
    enum class Kind {
        NewFailure,  ///< fails now, and did not, was only open, was of less severity, or was not
                     ///< there
        Fixed,       ///< failed, and passes now
        Changed,     ///< of another verdict, or fails at other times
        Added,       ///< was not there
        Gone,        ///< is not there any more
    };

    Kind kind;
    std::string recording;
    std::string assessment;  ///< empty: the recording itself
    std::string what;        ///< `FAIL, was PASS`
    bool isError = false;    ///< of a failure: whether it makes a run fail
};

inline constexpr std::size_t changeKinds = 5;

struct BaselineComparison {
    std::string baseline;                 ///< its path
    std::vector<BaselineChange> changes;  ///< by kind, and then in the order of the run
    bool hasCommonRecording = false;

    std::array<std::size_t, changeKinds> counts() const;
    /// Whether something fails that makes a run fail and did not fail before.
    bool hasNewFailure() const;
};

/// Compares a run with a baseline, recordings and assessments by their names; what fails is what
/// makes the run fail but for its severity. Times are compared as reports have them, without any
/// tolerance. What was not chosen to be run is not gone as long as the file has it.
BaselineComparison compare(const Baseline& baseline, const AssessmentFile& file,
                           const RunOutcome& run);

/// How many changes there are, and the first forty of them; all where the style is verbose.
std::string baselineReport(const BaselineComparison& comparison, const TableStyle& style);

/// `new failure`, `fixed`, `changed`, `new`, `gone`
const char* nameOf(BaselineChange::Kind kind);

}  // namespace vorm::evaluation
