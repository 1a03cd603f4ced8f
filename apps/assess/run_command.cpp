#include "commands.hpp"
#include "json_lines.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/baseline.hpp>
#include <vorm/evaluation/report/html_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/junit_report.hpp>
#include <vorm/evaluation/report/svg_report.hpp>
#include <vorm/evaluation/report/table_report.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <array>
#include <optional>

namespace assess {
namespace {

using namespace vorm::evaluation;

// What reports are made of.
struct Results {
    AssessmentFile file;
    RunOutcome outcome;
    std::vector<RecordingDrawing> drawings;  // where a format wants them
    std::optional<BaselineComparison> comparison;

    const BaselineComparison* compared() const { return comparison ? &*comparison : nullptr; }
};

struct Format {
    const char* name;
    std::string (*report)(const Results&, const Options&);  // null for what comes in lines
    bool hasPlots = false;
    bool isOfOne = false;  // of one assessment on one recording
};

TableStyle tableStyle(const Options& options) {
    TableStyle style;
    style.colours = wantsColours(options);
    style.width = terminalWidth(options);
    style.verbose = options.verbose;
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    return style;
}

// Of a file that is written besides, there is no terminal.
std::string table(const Results& results, const Options& options) {
    TableStyle style = tableStyle(options);
    style.width.reset();
    return tableReport(results.outcome, style) +
           (results.comparison ? baselineReport(*results.comparison, style) : "");
}

// A run without its recordings.
RunOutcome aboutRun(const AssessmentFile& file, const Options& options) {
    return {file.name, file.title, {}, options.strict, file.parameters};
}

// The table on standard output, recording by recording as they are done.
class TableOnOutput {
public:
    TableOnOutput(const AssessmentFile& file, const Options& options, ProgressLine& progress)
        : about_(aboutRun(file, options)), options_(options), progress_(progress) {}

    void add(const RecordingOutcome& recording, std::size_t count) {
        begin(count);
        write(report_->recording(recording));
    }

    void end(const Results& results) {
        begin(results.outcome.recordings.size());
        write(report_->end(results.outcome));
        if (results.comparison) {
            write(baselineReport(*results.comparison, tableStyle(options_)));
        }
    }

private:
    void begin(std::size_t recordings) {
        if (!report_) {
            report_.emplace(about_, recordings, tableStyle(options_));
            write(report_->begin());
        }
    }

    void write(const std::string& text) {
        progress_.clear();
        writeResults(options_, text);
    }

    const RunOutcome about_;
    const Options& options_;
    ProgressLine& progress_;
    std::optional<TableReport> report_;
};

bool showsTable(const Options& options) {
    return options.format == "table" && options.output.empty();
}

std::string page(const Results& results, const Options& options) {
    HtmlStyle style;
    style.program = "assess " VORM_VERSION;
    style.date = today();
    style.mostBytes = static_cast<std::size_t>(options.reportMegabytes * 1e6);
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    return htmlReport(results.file, results.outcome, results.drawings, style);
}

// A picture has no place for an error.
std::string picture(const Results& results, const Options&) {
    const auto& recordings = results.outcome.recordings;
    if (recordings.size() != 1) {
        throw WrongUsage("a picture is of one recording, and this one is split into " +
                         std::to_string(recordings.size()) + ": use --format html");
    }
    const RecordingOutcome& recording = recordings.front();
    if (const auto& error =
            recording.error ? recording.error : recording.assessments.front().error) {
        throw InputError(*error);
    }
    return svgReport(recording, 0, results.drawings.front());
}

std::string json(const Results& results, const Options&) {
    return jsonReport(results.outcome, results.compared());
}

std::string junit(const Results& results, const Options&) {
    return junitReport(results.outcome, results.compared());
}

constexpr auto formats = std::to_array<Format>({
    {"table", table},
    {"json", json},
    {"jsonl", nullptr},
    {"junit", junit},
    {"html", page, true},
    {"svg", picture, true, true},
});

const Format& formatOf(const std::string& name) {
    return *std::find_if(formats.begin(), formats.end(),
                         [&](const Format& format) { return format.name == name; });
}

bool wantsPlots(const Options& options) {
    return formatOf(options.format).hasPlots ||
           std::any_of(options.reports.begin(), options.reports.end(),
                       [](const auto& report) { return formatOf(report.first).hasPlots; });
}

void writeReports(const Results& results, const Options& options) {
    for (const auto& [format, path] : options.reports) {
        if (!comesInLines(format)) {
            writeFile(path, formatOf(format).report(results, options));
        }
    }
    if (!showsTable(options) && !comesInLines(options.format)) {
        writeResults(options, formatOf(options.format).report(results, options));
    }
}

// The assessments that were never triggered, each as a note names it: with the number of recordings
// where others did trigger it.
std::vector<std::string> neverTriggered(const RunOutcome& run) {
    std::vector<const RecordingOutcome*> usable;
    for (const RecordingOutcome& recording : run.recordings) {
        if (!recording.error) {
            usable.push_back(&recording);
        }
    }
    std::vector<std::string> names;
    const std::size_t assessments = usable.empty() ? 0 : usable.front()->assessments.size();
    for (std::size_t i = 0; i < assessments; ++i) {
        const auto count = static_cast<std::size_t>(
            std::count_if(usable.begin(), usable.end(), [i](const RecordingOutcome* recording) {
                return recording->assessments[i].neverTriggered;
            }));
        if (count > 0) {
            names.push_back("'" + withoutControls(usable.front()->assessments[i].name) + "'");
        }
        if (count > 0 && count < usable.size()) {
            names.back() += " (in " + std::to_string(count) + " of " +
                            std::to_string(usable.size()) + " recordings)";
        }
    }
    return names;
}

// What passes without having been put to the test is easily taken for a success.
void noteNeverTriggered(const RunOutcome& run) {
    const std::vector<std::string> names = neverTriggered(run);
    if (names.empty()) {
        return;
    }
    std::string text = std::to_string(names.size()) +
                       (names.size() == 1 ? " assessment was" : " assessments were") +
                       " never triggered: ";
    for (const std::string& name : names) {
        text += (&name == &names.front() ? "" : ", ") + name;
    }
    note("note", text);
}

// That some input cannot be used is told by the exit code, and must not hide that others fail.
void noteFailuresBesideErrors(const RunOutcome& run) {
    std::vector<std::string> failing;
    for (const RecordingOutcome& recording : run.recordings) {
        if (recording.hasFailures(run.strict)) {
            failing.push_back(recording.recording);
        }
    }
    if (run.hasErrors() && !failing.empty()) {
        note("note", "not all input could be used, and of what could be, assessments failed on " +
                         quotedList(failing));
    }
}

}  // namespace

std::vector<std::string> runFormats() {
    std::vector<std::string> names;
    for (const Format& format : formats) {
        if (!format.isOfOne) {
            names.emplace_back(format.name);
        }
    }
    return names;
}

ExitCode runAssessments(const Options& options) {
    if (options.failsOnNewOnly && options.baseline.empty()) {
        throw WrongUsage("--fail-on new needs what is not new: --baseline FILE");
    }
    Results results{assessmentsOf(options), {}, {}, {}};
    const auto baseline =
        options.baseline.empty() ? std::nullopt : std::optional(readBaseline(options.baseline));
    ProgressLine progress(options);
    RunOptions run;
    run.jobs = options.jobs;
    run.robustness = options.robustness;
    run.strict = options.strict;
    run.explain = options.explain;
    run.only = options.only;
    run.skip = options.skip;
    run.progress = [&](const std::string& text) { progress.show(text); };
    if (wantsPlots(options)) {
        run.explain = true;
        DrawingOptions drawing;
        drawing.drawsAll = options.plotsAll;
        drawing.strict = options.strict;
        run.assessed = [&results, drawing](const AssessedRecording& assessed) {
            results.drawings.push_back(drawRecording(results.file, assessed, drawing));
        };
    }
    TableOnOutput shown(results.file, options, progress);
    const RunOutcome about = aboutRun(results.file, options);
    JsonLines lines(about, options, progress);
    run.done = [&](const RecordingOutcome& recording, std::size_t count) {
        lines.add(recording);
        if (showsTable(options)) {
            shown.add(recording, count);
        }
    };
    results.outcome = vorm::evaluation::run(results.file, recordingsOf(options), run);
    const RunOutcome& outcome = results.outcome;
    progress.clear();
    if (baseline) {
        results.comparison = compare(*baseline, results.file, outcome);
        if (!results.comparison->hasCommonRecording) {
            note("warning", "no recording of the run is in " + options.baseline +
                                ": recordings are compared by their paths as they are given");
        }
    }
    if (showsTable(options)) {
        shown.end(results);
    }
    writeReports(results, options);
    if (!options.quiet) {
        for (const RecordingOutcome& recording : outcome.recordings) {
            noteReading(recording.remarks, recording.warnings, options);
        }
        noteNeverTriggered(outcome);
        noteFailuresBesideErrors(outcome);
    }
    if (outcome.hasErrors()) {
        return ExitCode::UnusableInput;
    }
    const bool hasFailed =
        options.failsOnNewOnly ? results.comparison->hasNewFailure() : outcome.hasFailures();
    return hasFailed ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
}

}  // namespace assess
