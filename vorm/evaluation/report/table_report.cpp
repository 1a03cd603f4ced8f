#include "table_report.hpp"

#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <sstream>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;

Colour colourOf(const AssessmentOutcome& outcome, bool strict) {
    if (outcome.error) {
        return Colour::Magenta;
    }
    switch (outcome.verdict) {
        case resultEnum_t::PASS:
            return strict && !outcome.passesThroughout() ? Colour::Yellow : Colour::Green;
        case resultEnum_t::FAIL:
            return Colour::Red;
        case resultEnum_t::NO_RESULT:
            break;
    }
    return Colour::Yellow;
}

// Under strict, PASS is not the whole truth of what is open at some time.
TextTable::Cell verdictCell(const AssessmentOutcome& outcome, bool strict) {
    const bool isOpen = outcome.verdict == resultEnum_t::PASS && !outcome.passesThroughout();
    return {verdictText(outcome) + (strict && isOpen ? " (open)" : ""), false,
            colourOf(outcome, strict)};
}

class RecordingTable {
public:
    RecordingTable(const RecordingOutcome& recording, bool strict, const TableStyle& style)
        : strict_(strict),
          style_(style),
          withRobustness_(
              std::any_of(recording.assessments.begin(), recording.assessments.end(),
                          [](const auto& outcome) { return outcome.leastRobustness.has_value(); })),
          table_(header()) {
        for (const AssessmentOutcome& outcome : recording.assessments) {
            add(outcome);
        }
    }

    std::string text() const { return table_.text("  ", style_.colours); }

private:
    std::vector<TextTable::Cell> header() const {
        std::vector<TextTable::Cell> cells{
            {"verdict"},          {"assessment"},          {"passed [s]", true},
            {"failed [s]", true}, {"no result [s]", true}, {"first failure [s]", true}};
        if (withRobustness_) {
            cells.push_back({"robustness", true});
        }
        return cells;
    }

    void add(const AssessmentOutcome& outcome) {
        std::vector<TextTable::Cell> row{verdictCell(outcome, strict_), {outcome.name}};
        if (!outcome.error) {
            row.push_back({durationText(outcome.passed), true});
            row.push_back({durationText(outcome.failed), true});
            row.push_back({durationText(outcome.open), true});
            row.push_back(
                {outcome.failures.empty() ? "-" : outcome.failures[0].start.text(), true});
            if (withRobustness_) {
                row.push_back({robustnessText(outcome), true});
            }
        }
        table_.addRow(std::move(row));
        addNotes(outcome);
    }

    void addNotes(const AssessmentOutcome& outcome) {
        addLines(errorText(outcome.error));
        addLines(outcome.reason);
        addLines(neverTriggeredText(outcome));
        addLines(errorText(outcome.robustnessError));
        for (const std::string& line : failureLines(outcome, style_.mostIntervals)) {
            table_.addNote(line);
        }
        for (const std::string& line : openLines(outcome, style_.mostIntervals)) {
            table_.addNote(line);
        }
    }

    void addLines(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            table_.addNote(line);
        }
    }

    bool strict_;
    const TableStyle& style_;
    bool withRobustness_;
    TextTable table_;
};

std::string recordingText(const RecordingOutcome& recording, bool strict, const TableStyle& style) {
    std::string text = recording.recording + "\n";
    if (recording.error) {
        text += "  " + (style.colours ? coloured("ERROR", Colour::Magenta) : "ERROR") +
                "  cannot be used:\n";
        std::istringstream lines(recording.error->what());
        for (std::string line; std::getline(lines, line);) {
            text += "    " + line + "\n";
        }
        return text;
    }
    return text + RecordingTable(recording, strict, style).text();
}

std::string summary(const RunOutcome& run) {
    const VerdictCounts counts = countVerdicts(run);
    std::string text =
        std::to_string(counts.passed) + " passed, " + std::to_string(counts.failed) + " failed";
    if (counts.open > 0) {
        text += ", " + std::to_string(counts.open) + " open";
    }
    if (counts.noResult > 0) {
        text += ", " + std::to_string(counts.noResult) + " without result";
    }
    if (counts.errors > 0) {
        text += ", " + std::to_string(counts.errors) + " could not be assessed";
    }
    return text + "\n";
}

}  // namespace

std::string tableReport(const RunOutcome& run, const TableStyle& style) {
    std::string text = run.title.empty() ? "" : run.title + "\n\n";
    for (const RecordingOutcome& recording : run.recordings) {
        text += recordingText(recording, run.strict, style) + "\n";
    }
    return text + summary(run);
}

}  // namespace vorm::evaluation
