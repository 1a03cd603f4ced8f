#include "table_report.hpp"

#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/parameter_text.hpp>
#include <vorm/evaluation/report/recording_matrix.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/text_columns.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <algorithm>
#include <array>

namespace vorm::evaluation {
namespace {

// Under strict, PASS is not the whole truth of what is open at some time.
TextTable::Cell verdictCell(const AssessmentOutcome& outcome, bool strict) {
    const Mark mark = markOf(outcome, strict);
    const MarkStyle& style = styleOf(mark);
    return {mark == Mark::Open ? "PASS (open)" : style.verdict, false, style.colour};
}

// With no more digits than the numbers of the table need.
RecordedTimes timesOfNumbers(const RecordingOutcome& recording) {
    RecordedTimes times = recording.times;
    int needed = 0;
    const auto look = [&](ExactTime time) {
        needed = std::max(needed, digitsOf(rounded(time, times.digits)));
    };
    for (const AssessmentOutcome& outcome : recording.assessments) {
        for (const ExactTime length : {outcome.passed, outcome.failed, outcome.open}) {
            look(length);
        }
        if (!outcome.failures.empty()) {
            look(outcome.failures.front().start);
        }
    }
    times.digits = needed;
    return times;
}

class RecordingTable {
public:
    RecordingTable(const RecordingOutcome& recording, bool strict, const TableStyle& style)
        : strict_(strict),
          style_(style),
          leastDigits_(recording.times.digits),
          numbers_(timesOfNumbers(recording)),
          times_(recording.times),
          withRobustness_(
              std::any_of(recording.assessments.begin(), recording.assessments.end(),
                          [](const auto& outcome) { return outcome.leastRobustness.has_value(); })),
          table_(header()) {
        table_.allowEliding(1);
        table_.repeatColumns(2);
        for (const AssessmentOutcome& outcome : recording.assessments) {
            add(outcome);
        }
    }

    std::string text() const { return table_.text({"  ", style_.colours, style_.width}); }

private:
    std::vector<TextTable::Cell> header() const {
        std::vector<TextTable::Cell> cells{{"verdict"},         {"assessment"},
                                           {"passed", true},    {"failed", true},
                                           {"no result", true}, {"first failure", true}};
        if (withRobustness_) {
            cells.push_back({"robustness", true});
        }
        return cells;
    }

    void add(const AssessmentOutcome& outcome) {
        std::vector<TextTable::Cell> row{verdictCell(outcome, strict_), {outcome.name}};
        if (!outcome.error) {
            for (const ExactTime length : {outcome.passed, outcome.failed, outcome.open}) {
                row.push_back({durationCell(length), true});
            }
            row.push_back({outcome.failures.empty()
                               ? "-"
                               : TimeWriter(numbers_).alignedNumber(outcome.failures.front().start),
                           true});
            if (withRobustness_) {
                row.push_back({robustnessText(outcome), true});
            }
        }
        table_.addRow(std::move(row));
        addNotes(outcome);
    }

    // Of a sum of times; what would look like nothing is told.
    std::string durationCell(ExactTime length) const {
        if (length == ExactTime()) {
            return "0";
        }
        return rounded(length, leastDigits_) == ExactTime()
                   ? "< " + ExactTime::of("1e-" + std::to_string(leastDigits_), second)->text()
                   : TimeWriter(numbers_).alignedNumber(length);
    }

    void addNotes(const AssessmentOutcome& outcome) {
        for (const std::string& text :
             {errorText(outcome.error), outcome.reason, neverTriggeredText(outcome),
              errorText(outcome.robustnessError)}) {
            addLines(text);
        }
        for (const auto& lines : {failureLines(outcome, style_.mostIntervals, times_),
                                  openLines(outcome, style_.mostIntervals, times_)}) {
            std::for_each(lines.begin(), lines.end(),
                          [this](const std::string& line) { table_.addNote(line); });
        }
    }

    void addLines(const std::string& text) {
        for (const std::string_view line : linesOf(text)) {
            table_.addNote(line);
        }
    }

    bool strict_;
    const TableStyle& style_;
    const int leastDigits_;  // of what is not nothing
    const RecordedTimes numbers_;
    const TimeWriter times_;
    bool withRobustness_;
    TextTable table_;
};

// `drive.csv, from 0 s to 120 s`
std::string headOf(const RecordingOutcome& recording) {
    std::optional<TimeSpan> whole;
    for (const AssessmentOutcome& outcome : recording.assessments) {
        if (!outcome.error && outcome.from < outcome.to) {
            const TimeSpan span = whole.value_or(TimeSpan{outcome.from, outcome.to});
            whole = {std::min(span.start, outcome.from), std::max(span.end, outcome.to)};
        }
    }
    const auto& clock = recording.times.clock;
    return withoutControls(recording.recording) +
           (whole ? ", " + TimeWriter(recording.times).interval(*whole) : "") +
           (whole && clock ? ", dates in " + clock->zoneName() : "");
}

std::string recordingText(const RecordingOutcome& recording, bool strict, const TableStyle& style) {
    const TextTable::Style lines{"", style.colours, style.width};
    if (recording.error) {
        const std::string error = style.colours ? coloured("ERROR", Colour::Magenta) : "ERROR";
        return indentedLines(withoutControls(recording.recording), lines) + "  " + error +
               "  cannot be used:\n" +
               indentedLines(recording.error->what(), {"    ", style.colours, style.width});
    }
    return indentedLines(headOf(recording), lines) +
           RecordingTable(recording, strict, style).text();
}

// What the assessments say of a recording, in one word: of what is not known only where nothing is,
// or where a run is strict.
TextTable::Cell verdictOn(const RecordingOutcome& recording, bool strict) {
    Mark worst = recording.error ? Mark::Error : Mark::Passed;
    bool passes = false;
    for (const AssessmentOutcome& outcome : recording.assessments) {
        worst = std::min(worst, markOf(outcome, strict));
        passes = passes || outcome.verdict == assessments::resultEnum_t::PASS;
    }
    if (worst == Mark::NoResult && (passes || strict)) {
        worst = strict ? Mark::Open : Mark::Passed;
    }
    const MarkStyle& style = styleOf(worst);
    return {style.verdict, false, style.colour};
}

constexpr std::array<std::string_view, 3> listNumbers{"failed", "no result", "passed"};

// Of a list that grows while recordings are assessed: its columns have widths of their own, and
// names, of which nobody knows the longest yet, stand last.
std::string listLine(const TextTable::Cell& verdict, const std::vector<std::string>& numbers,
                     const std::string& name, const TableStyle& style) {
    constexpr std::size_t verdictWidth = 9;
    const auto blanks = [](std::size_t width, const std::string& text) {
        return std::string(width - std::min(width, text.size()), ' ');
    };
    std::string line = (style.colours ? coloured(verdict.text, verdict.colour) : verdict.text) +
                       blanks(verdictWidth, verdict.text);
    std::size_t taken = verdictWidth;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t width = listNumbers[i].size();
        line += "  " + blanks(width, numbers[i]) + numbers[i];
        taken += 2 + width;
    }
    const std::string shown = withoutControls(name);
    return line + "  " + (style.width ? elided(shown, *style.width - taken - 2) : shown) + "\n";
}

std::string listHead(const TableStyle& style) {
    return listLine({"verdict"}, {listNumbers.begin(), listNumbers.end()}, "recording", style);
}

std::string listEntry(const RecordingOutcome& recording, bool strict, const TableStyle& style) {
    const VerdictCounts counts = countVerdicts(recording, strict);
    std::vector<std::string> numbers{std::to_string(counts.failed + counts.warnings + counts.infos),
                                     std::to_string(counts.noResult + counts.open),
                                     std::to_string(counts.passed)};
    if (recording.error) {
        numbers.assign(numbers.size(), "-");
    }
    return listLine(verdictOn(recording, strict), numbers, recording.recording, style) +
           indentedLines(errorText(recording.error), {"    ", style.colours, style.width});
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what;
}

std::string summaryText(const RunSummary& run) {
    const VerdictCounts& counts = run.counts();
    std::string text = counted(counts.passed, "passed") + ", " + counted(counts.failed, "failed");
    const auto add = [&](std::size_t count, const std::string& what) {
        text += count > 0 ? ", " + counted(count, what) : "";
    };
    add(counts.warnings, "failed as warnings");
    add(counts.infos, "failed as infos");
    add(counts.open, "open");
    add(counts.noResult, "without result");
    add(counts.errors, "could not be assessed");
    const std::size_t recordings = run.recordings();
    return (recordings > 1 ? counted(recordings, "recordings: ") : "") + text + "\n";
}

}  // namespace

TableReport::TableReport(const RunOutcome& about, std::size_t recordings, TableStyle style)
    : title_(about.title),
      settings_(settingsText(about.parameters)),
      strict_(about.strict),
      recordings_(recordings),
      style_(style) {
    style_.width = usableWidth(style_.width);
}

std::string TableReport::begin() const {
    const TextTable::Style lines{"", style_.colours, style_.width};
    const std::string head =
        indentedLines(withoutControls(title_), lines) + indentedLines(settings_, lines);
    return (head.empty() ? "" : head + "\n") + (hasLines() ? listHead(style_) : "");
}

std::string TableReport::recording(const RecordingOutcome& outcome) const {
    return hasLines() ? listEntry(outcome, strict_, style_)
                      : recordingText(outcome, strict_, style_) + "\n";
}

std::string TableReport::end(const RunSummary& run) const {
    const std::string matrix = recordings_ > 1 ? recordingMatrix(run, style_) : "";
    return (hasLines() ? "\n" : "") + matrix +
           indentedLines(summaryText(run), {"", style_.colours, style_.width});
}

RunSummary summaryFor(bool strict, const TableStyle& style) {
    constexpr std::size_t mostRecordings = 40;
    return {strict, style.verbose ? RunSummary::allRecordings : mostRecordings};
}

std::string tableReport(const RunOutcome& run, const TableStyle& style) {
    const TableReport report(run, run.recordings.size(), style);
    std::string text = report.begin();
    RunSummary summary = summaryFor(run.strict, style);
    for (const RecordingOutcome& recording : run.recordings) {
        text += report.recording(recording);
        summary.add(recording);
    }
    return text + report.end(summary);
}

}  // namespace vorm::evaluation
