#pragma once

#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/report/run_summary.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vorm::evaluation {

struct TableStyle {
    bool colours = false;
    /// Failing intervals of each assessment, and as many without result; the others are counted.
    std::size_t mostIntervals = 10;
    /// The columns of the terminal, of which at least 60 are used: long names lose their middle,
    /// and long lines go on below. Nothing: lines of any length.
    std::optional<std::size_t> width;
    /// Of several recordings each with its assessments, and all recordings in the summary.
    bool verbose = false;
};

/// The outcome of a run as a table for a terminal, in parts that can be shown when recordings are
/// assessed. One recording gets a table of its assessments: the verdict, how long it passed, failed
/// and was without result, the first failure, the failing intervals and those without result. Of
/// several each gets a line, and all of them a matrix at the end.
///
/// Times are rounded to one digit more than those of the recording have; where that would give two
/// of an assessment's times one text, they have more.
class TableReport {
public:
    /// Of a run that has so many recordings; `about` gives the title, the parameters and whether
    /// the run is strict.
    TableReport(const RunOutcome& about, std::size_t recordings, TableStyle style);

    /// What stands above the first recording.
    std::string begin() const;
    std::string recording(const RecordingOutcome& outcome) const;
    /// What stands below the last recording of the run; the summary is one for this style.
    std::string end(const RunSummary& run) const;

private:
    bool hasLines() const { return recordings_ > 1 && !style_.verbose; }

    std::string title_;
    std::string settings_;
    bool strict_;
    std::size_t recordings_;
    TableStyle style_;
};

/// An empty summary that keeps what is shown below the recordings: the worst forty, or all where
/// the style is verbose.
RunSummary summaryFor(bool strict, const TableStyle& style);

/// All parts.
std::string tableReport(const RunOutcome& run, const TableStyle& style = {});

}  // namespace vorm::evaluation
