#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/explanation.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/recording/recording_parts.hpp>
#include <vorm/evaluation/report/explanation_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/parameter_text.hpp>
#include <vorm/evaluation/report/terminal_plot.hpp>

#include <algorithm>
#include <iostream>

namespace assess {
namespace {

using namespace vorm::evaluation;

ExplanationStyle styleOf(const Options& options) {
    ExplanationStyle style;
    style.colours = wantsColours(options);
    style.width = terminalWidth(options);
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    style.mostValues = options.values.value_or(style.mostValues);
    if (options.margin) {
        style.margin = vorm::evaluation::ExactTime::ofSeconds(*options.margin);
    }
    return style;
}

ExitCode codeOf(const AssessmentOutcome& outcome) {
    if (outcome.error) {
        return ExitCode::UnusableInput;
    }
    return outcome.failsRun(false) ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
}

// Collects what is to be written in the format asked for.
class ShownRecordings {
public:
    ShownRecordings(const AssessmentFile& file, const Options& options)
        : isJson_(options.format == "json"),
          style_(styleOf(options)),
          plotWidth_(options.withoutPlot ? std::nullopt : terminalWidth(options)),
          outcomes_{file.name, file.title, {}, false, file.parameters} {}

    void add(const Recording& recording, const Explanation& explanation) {
        if (isJson_) {
            outcomes_.recordings.push_back({recording.name,
                                            std::nullopt,
                                            {explanation.outcome},
                                            recording.remarks,
                                            recording.warnings});
        } else {
            text_ += (text_.empty() ? "" : "\n") + recording.name + "\n" +
                     explanationReport(explanation, style_) +
                     plotOf(explanation.outcome, recording);
        }
    }

    void add(const std::string& recording, const InputError& error) {
        outcomes_.recordings.push_back({recording, error, {}, {}, {}});
    }

    std::string text() const {
        if (isJson_) {
            return jsonReport(outcomes_);
        }
        const std::string settings = settingsText(outcomes_.parameters);
        return settings.empty() ? text_ : settings + "\n\n" + text_;
    }

private:
    std::string plotOf(const AssessmentOutcome& outcome, const Recording& recording) const {
        if (!plotWidth_) {
            return "";
        }
        TerminalPlotStyle plot;
        plot.width = *plotWidth_;
        plot.margin = style_.margin;
        plot.colours = style_.colours;
        const std::string text = terminalPlot(outcome, recording, plot);
        return text.empty() ? "" : "\n" + text;
    }

    bool isJson_;
    ExplanationStyle style_;
    std::optional<std::size_t> plotWidth_;
    RunOutcome outcomes_;
    std::string text_;
};

// The page or the picture of a run of that assessment alone.
ExitCode showPlots(const Options& options, const Assessment& assessment) {
    if (options.format == "svg" && recordingsOf(options).size() > 1) {
        throw WrongUsage("a picture is of one recording: give one, or --format html for several");
    }
    Options run = options;
    run.only = {assessment.name};
    run.plotsAll = true;
    return runAssessments(run);
}

}  // namespace

ExitCode showAssessment(const Options& options) {
    const AssessmentFile file = assessmentsOf(options);
    const Assessment& assessment = file.find(options.name);
    if (options.format == "html" || options.format == "svg") {
        return showPlots(options, assessment);
    }
    ProgressLine progress(options);
    RunOptions run;
    run.jobs = options.jobs;
    run.only = {assessment.name};
    run.progress = [&](const std::string& text) { progress.show(text); };

    ShownRecordings shown(file, options);
    ExitCode code = ExitCode::NothingFailed;
    for (const RecordingSource& source : recordingsOf(options)) {
        try {
            for (const RecordingSource& part : partsOf(source, file.layout)) {
                const Recording recording = readRecordingFor(file, part, run);
                const Explanation explanation = explain(file, assessment, recording, run);
                progress.clear();
                noteReading(recording.remarks, recording.warnings, options);
                shown.add(recording, explanation);
                code = std::max(code, codeOf(explanation.outcome));
            }
        } catch (const InputError& error) {
            progress.clear();
            std::cerr << messageOf(error) << "\n";
            shown.add(source.name(), error);
            code = ExitCode::UnusableInput;
        }
    }
    progress.clear();
    writeResults(options, shown.text());
    return code;
}

}  // namespace assess
