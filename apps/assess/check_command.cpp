#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/check.hpp>

#include <algorithm>
#include <iostream>

namespace assess {
namespace {

using namespace vorm::evaluation;

std::string summaryOf(const AssessmentFile& file, const std::string& against) {
    const std::size_t count = file.assessments.size();
    return file.name + ": " + std::to_string(count) +
           (count == 1 ? " assessment fits" : " assessments fit") + against + "\n";
}

// Writes the errors, or that there is none.
ExitCode report(const Options& options, const std::vector<InputError>& errors,
                const std::string& summary) {
    for (const InputError& error : errors) {
        std::cerr << messageOf(error) << "\n";
    }
    if (!errors.empty()) {
        return ExitCode::UnusableInput;
    }
    writeResults(options, summary);
    return ExitCode::NothingFailed;
}

}  // namespace

ExitCode checkAssessments(const Options& options) {
    const AssessmentFile file = assessmentsOf(options);
    if (options.recordings.empty()) {
        const ExitCode code = report(options, check(file), summaryOf(file, ""));
        if (code == ExitCode::NothingFailed && !options.quiet) {
            std::cerr << "note: without a recording, signals of any name are accepted; --against "
                         "checks them\n";
        }
        return code;
    }
    ExitCode code = ExitCode::NothingFailed;
    for (const RecordingSource& source : recordingsOf(options)) {
        code = std::max(code,
                        report(options, check(file, source), summaryOf(file, " " + source.name())));
    }
    return code;
}

}  // namespace assess
