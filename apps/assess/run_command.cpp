#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/junit_report.hpp>
#include <vorm/evaluation/report/table_report.hpp>

namespace assess {
namespace {

using namespace vorm::evaluation;

std::string reportOf(const RunOutcome& outcome, const Options& options) {
    switch (options.format) {
        case Format::Json:
            return jsonReport(outcome);
        case Format::Junit:
            return junitReport(outcome);
        case Format::Table:
            break;
    }
    TableStyle style;
    style.colours = wantsColours(options);
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    return tableReport(outcome, style);
}

}  // namespace

ExitCode runAssessments(const Options& options) {
    const AssessmentFile file = readAssessmentFile(options.assessments);
    ProgressLine progress(options);
    RunOptions run;
    run.jobs = options.jobs;
    run.robustness = options.robustness;
    run.only = options.only;
    run.progress = [&](const std::string& text) { progress.show(text); };
    const RunOutcome outcome = vorm::evaluation::run(file, recordingsOf(options), run);
    progress.clear();
    writeResults(options, reportOf(outcome, options));
    if (outcome.hasErrors()) {
        return ExitCode::UnusableInput;
    }
    return outcome.hasFailures() ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
}

}  // namespace assess
