#include "commands.hpp"
#include "earlier_run.hpp"
#include "json_lines.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/baseline.hpp>
#include <vorm/evaluation/report/html_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/junit_report.hpp>
#include <vorm/evaluation/report/run_summary.hpp>
#include <vorm/evaluation/report/svg_report.hpp>
#include <vorm/evaluation/report/table_report.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/fingerprint.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace assess {
namespace {

using namespace vorm::evaluation;

// What reports are made of.
struct Results {
    AssessmentFile file;
    RunOutcome outcome;                      // with its recordings where a report needs them
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

bool showsTable(const Options& options) {
    return options.format == "table" && options.output.empty();
}

// The table on standard output, recording by recording as they are done, if the options ask for it.
class TableOnOutput {
public:
    /// `about` needs no recordings.
    TableOnOutput(const RunOutcome& about, const Options& options, ProgressLine& progress)
        : about_(about), options_(options), progress_(progress) {}

    void add(const RecordingOutcome& recording, std::size_t count) {
        if (showsTable(options_)) {
            begin(count);
            write(report_->recording(recording));
        }
    }

    void end(const RunSummary& summary, const BaselineComparison* comparison) {
        if (!showsTable(options_)) {
            return;
        }
        begin(summary.recordings());
        write(report_->end(summary));
        if (comparison != nullptr) {
            write(baselineReport(*comparison, tableStyle(options_)));
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

    const RunOutcome& about_;
    const Options& options_;
    ProgressLine& progress_;
    std::optional<TableReport> report_;
};

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
std::vector<std::string> neverTriggered(const RunSummary& run) {
    std::vector<std::string> names;
    for (const AssessmentSummary& assessment : run.assessments()) {
        const std::size_t count = assessment.neverTriggered;
        if (count > 0) {
            names.push_back("'" + withoutControls(assessment.name) + "'");
        }
        if (count > 0 && count < run.usable()) {
            names.back() += " (in " + std::to_string(count) + " of " +
                            std::to_string(run.usable()) + " recordings)";
        }
    }
    return names;
}

// What passes without having been put to the test is easily taken for a success.
void noteNeverTriggered(const RunSummary& run) {
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
void noteFailuresBesideErrors(const RunSummary& run) {
    if (run.hasErrors() && run.hasFailures()) {
        note("note", "not all input could be used, and of what could be, assessments failed on " +
                         quotedListOf(run.failingCount(), run.failing()));
    }
}

void noteEarlierRun(const EarlierRun& earlier) {
    if (earlier.count() > 0) {
        note("note", std::to_string(earlier.count()) +
                         (earlier.count() == 1 ? " recording was" : " recordings were") +
                         " done before, and not looked at again");
    }
}

RunOptions runOptions(const Options& options) {
    RunOptions run;
    run.jobs = options.jobs;
    run.robustness = options.robustness;
    run.strict = options.strict;
    run.explain = options.explain || wantsPlots(options);
    run.only = options.only;
    run.skip = options.skip;
    return run;
}

// Of all that the outcome of a recording depends on beside it.
std::string fingerprintOf(const AssessmentFile& file, const Options& options) {
    Fingerprint fingerprint;
    fingerprint.add(VORM_VERSION).add(file.fingerprint);
    for (const ParameterSetting& setting : options.parameters) {
        fingerprint.add("parameter").add(setting.name).add(setting.value);
    }
    const RunOptions run = runOptions(options);
    for (const std::string& name : run.only) {
        fingerprint.add("only").add(name);
    }
    for (const std::string& name : run.skip) {
        fingerprint.add("skip").add(name);
    }
    for (const bool choice : {run.robustness, run.strict, run.explain, options.together}) {
        fingerprint.add(choice ? "yes" : "no");
    }
    return fingerprint.text();
}

// One run of the command.
class AssessmentRun {
public:
    explicit AssessmentRun(const Options& options)
        : options_(options), results_{assessmentsOf(options), {}, {}, {}} {
        const AssessmentFile& file = results_.file;
        results_.outcome = {file.name,      file.title,      {},
                            options.strict, file.parameters, fingerprintOf(file, options)};
        const std::string resumed = fileToResume(options);
        if (!options.baseline.empty()) {
            baseline_ = readBaseline(options.baseline);
        }
        if (!resumed.empty()) {
            earlier_ = EarlierRun(resumed, results_.outcome.fingerprint,
                                  [&](const RecordingOutcome& done) {
                                      requireSameAssessments(done, resumed);
                                      summary_.add(done);
                                  });
        }
    }

    ExitCode run() {
        assessAll();
        compareWithBaseline();
        shown_.end(summary_, results_.compared());
        writeReports(results_, options_);
        if (!options_.quiet) {
            noteNeverTriggered(summary_);
            noteFailuresBesideErrors(summary_);
            noteEarlierRun(earlier_);
        }
        return exitCode();
    }

private:
    void requireSameAssessments(const RecordingOutcome& done, const std::string& path) const {
        const auto chosen = chosenAssessments(results_.file, runOptions(options_));
        const bool areSame = std::equal(
            chosen.begin(), chosen.end(), done.assessments.begin(), done.assessments.end(),
            [](const Assessment* one, const auto& outcome) { return one->name == outcome.name; });
        if (!done.error && !areSame) {
            failAt({path}, "tells of other assessments than this run has",
                   "write to another file, or take that line away");
        }
    }

    void assessAll() {
        RunOptions run = runOptions(options_);
        run.progress = [this](const std::string& text) { progress_.show(text); };
        if (wantsPlots(options_)) {
            DrawingOptions drawing;
            drawing.drawsAll = options_.plotsAll;
            drawing.strict = options_.strict;
            run.assessed = [this, drawing](const AssessedRecording& assessed) {
                results_.drawings.push_back(drawRecording(results_.file, assessed, drawing));
            };
        }
        RecordingQueue queue{recordingCount(options_),
                             [this](std::size_t i) { return recordingAt(options_, i); },
                             {}};
        if (earlier_.count() > 0) {
            queue.isLeftOut = [this](const RecordingSource& source) {
                return earlier_.hasDone(source);
            };
        }
        runEach(results_.file, queue, run, [this](RecordingOutcome&& recording, std::size_t count) {
            earlier_.requireAllAsked();
            take(std::move(recording), count + earlier_.count());
        });
        earlier_.requireAllAsked();
        lines_.end();
        progress_.clear();
    }

    void take(RecordingOutcome&& recording, std::size_t count) {
        lines_.add(recording);
        summary_.add(recording);
        shown_.add(recording, count);
        progress_.clear();
        noteReading(recording.remarks, recording.warnings, options_);
        if (needsAllOutcomes(options_)) {
            results_.outcome.recordings.push_back(std::move(recording));
        }
    }

    void compareWithBaseline() {
        if (!baseline_) {
            return;
        }
        results_.comparison = compare(*baseline_, results_.file, results_.outcome);
        if (!results_.comparison->hasCommonRecording) {
            note("warning", "no recording of the run is in " + options_.baseline +
                                ": recordings are compared by their paths as they are given");
        }
    }

    ExitCode exitCode() const {
        if (summary_.hasErrors()) {
            return ExitCode::UnusableInput;
        }
        const bool hasFailed =
            options_.failsOnNewOnly ? results_.comparison->hasNewFailure() : summary_.hasFailures();
        return hasFailed ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
    }

    const Options& options_;
    Results results_;
    std::optional<Baseline> baseline_;
    RunSummary summary_ = summaryFor(options_.strict, tableStyle(options_));
    EarlierRun earlier_;
    ProgressLine progress_{options_};
    TableOnOutput shown_{results_.outcome, options_, progress_};
    JsonLines lines_{results_.outcome, options_, earlier_, progress_};
};

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

bool needsAllOutcomes(const Options& options) {
    const bool hasReports =
        std::any_of(options.reports.begin(), options.reports.end(),
                    [](const auto& report) { return !comesInLines(report.first); });
    return hasReports || !options.baseline.empty() ||
           !(showsTable(options) || comesInLines(options.format));
}

ExitCode runAssessments(const Options& options) {
    if (options.failsOnNewOnly && options.baseline.empty()) {
        throw WrongUsage("--fail-on new needs what is not new: --baseline FILE");
    }
    return AssessmentRun(options).run();
}

}  // namespace assess
