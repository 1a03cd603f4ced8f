#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/explanation.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/explanation_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>

#include <iostream>

namespace assess {
namespace {

using namespace vorm::evaluation;

ExplanationStyle styleOf(const Options& options) {
    ExplanationStyle style;
    style.colours = wantsColours(options);
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    style.mostValues = options.values.value_or(style.mostValues);
    if (options.margin) {
        style.margin = vorm::evaluation::ExactTime::ofSeconds(*options.margin);
    }
    return style;
}

}  // namespace

ExitCode showAssessment(const Options& options) {
    const AssessmentFile file = readAssessmentFile(options.assessments);
    const Assessment& assessment = file.find(options.name);
    ProgressLine progress(options);
    RunOptions run;
    run.jobs = options.jobs;
    run.only = {assessment.name};
    run.progress = [&](const std::string& text) { progress.show(text); };

    RunOutcome outcomes{file.name, file.title, {}};
    std::string report;
    for (const RecordingSource& source : recordingsOf(options)) {
        outcomes.recordings.push_back({source.name(), std::nullopt, {}});
        RecordingOutcome& outcome = outcomes.recordings.back();
        try {
            const Explanation explanation =
                explain(file, assessment, readRecordingFor(file, source, run), run);
            report += (report.empty() ? "" : "\n") + source.name() + "\n" +
                      explanationReport(explanation, styleOf(options));
            outcome.assessments.push_back(explanation.outcome);
        } catch (const InputError& error) {
            progress.clear();
            std::cerr << messageOf(error) << "\n";
            outcome.error = error;
        }
    }
    progress.clear();
    writeResults(options, options.format == Format::Json ? jsonReport(outcomes) : report);
    if (outcomes.hasErrors()) {
        return ExitCode::UnusableInput;
    }
    return outcomes.hasFailures() ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
}

}  // namespace assess
