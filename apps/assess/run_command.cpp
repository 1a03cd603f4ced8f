#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/junit_report.hpp>
#include <vorm/evaluation/report/table_report.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>
#include <iostream>

namespace assess {
namespace {

using namespace vorm::evaluation;

struct Format {
    const char* name;
    std::string (*report)(const RunOutcome&, const Options&);
};

std::string table(const RunOutcome& outcome, const Options& options) {
    TableStyle style;
    style.colours = wantsColours(options);
    style.mostIntervals = options.intervals.value_or(style.mostIntervals);
    return tableReport(outcome, style);
}

constexpr auto formats = std::to_array<Format>({
    {"table", table},
    {"json", [](const RunOutcome& outcome, const Options&) { return jsonReport(outcome); }},
    {"junit", [](const RunOutcome& outcome, const Options&) { return junitReport(outcome); }},
});

std::string reportOf(const RunOutcome& outcome, const Options& options) {
    return std::find_if(formats.begin(), formats.end(),
                        [&](const Format& format) { return format.name == options.format; })
        ->report(outcome, options);
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
    std::cerr << "note: " << names.size()
              << (names.size() == 1 ? " assessment was" : " assessments were")
              << " never triggered: ";
    for (const std::string& name : names) {
        std::cerr << (&name == &names.front() ? "" : ", ") << name;
    }
    std::cerr << "\n";
}

}  // namespace

std::vector<std::string> runFormats() {
    std::vector<std::string> names;
    for (const Format& format : formats) {
        names.emplace_back(format.name);
    }
    return names;
}

ExitCode runAssessments(const Options& options) {
    const AssessmentFile file = readAssessmentFile(options.assessments);
    ProgressLine progress(options);
    RunOptions run;
    run.jobs = options.jobs;
    run.robustness = options.robustness;
    run.strict = options.strict;
    run.explain = options.explain;
    run.only = options.only;
    run.progress = [&](const std::string& text) { progress.show(text); };
    const RunOutcome outcome = vorm::evaluation::run(file, recordingsOf(options), run);
    progress.clear();
    writeResults(options, reportOf(outcome, options));
    if (!options.quiet) {
        for (const RecordingOutcome& recording : outcome.recordings) {
            noteReading(recording.remarks, recording.warnings, options);
        }
        noteNeverTriggered(outcome);
    }
    if (outcome.hasErrors()) {
        return ExitCode::UnusableInput;
    }
    return outcome.hasFailures() ? ExitCode::SomethingFailed : ExitCode::NothingFailed;
}

}  // namespace assess
