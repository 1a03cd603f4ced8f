#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/typed_assessment.hpp>

#include <iostream>

namespace assess {
namespace {

using namespace vorm::evaluation;

constexpr std::size_t rowsThatTellTypes = 1000;

Recording headerOf(const AssessmentFile& file, const RecordingSource& source) {
    std::vector<const Assessment*> assessments;
    for (const Assessment& assessment : file.assessments) {
        assessments.push_back(&assessment);
    }
    ReadingOptions reading;
    reading.wanted = namesToRead(file, assessments);
    reading.maximumRows = rowsThatTellTypes;
    return readRecording(source, file.layout, reading);
}

// Reports every formula that does not fit and returns how many there are.
std::size_t countProblems(const AssessmentFile& file, const FormulaNames& names) {
    std::size_t problems = 0;
    for (const Assessment& assessment : file.assessments) {
        try {
            typedFormula(file, assessment, names);
        } catch (const InputError& error) {
            std::cerr << error.what() << "\n";
            ++problems;
        }
    }
    return problems;
}

std::string summaryOf(const AssessmentFile& file, const std::string& against) {
    const std::size_t count = file.assessments.size();
    return file.name + ": " + std::to_string(count) +
           (count == 1 ? " assessment fits" : " assessments fit") + against + "\n";
}

}  // namespace

ExitCode checkAssessments(const Options& options) {
    const AssessmentFile file = readAssessmentFile(options.assessments);
    if (options.recordings.empty()) {
        if (countProblems(file, namesWithoutData(file)) > 0) {
            return ExitCode::UnusableInput;
        }
        writeResults(options, summaryOf(file, ""));
        if (!options.quiet) {
            std::cerr << "note: without a recording, signals of any name are accepted; --against "
                         "checks them\n";
        }
        return ExitCode::NothingFailed;
    }
    std::size_t problems = 0;
    for (const RecordingSource& source : recordingsOf(options)) {
        const Recording recording = headerOf(file, source);
        const std::size_t found = countProblems(file, namesIn(file, recording));
        if (found == 0) {
            writeResults(options, summaryOf(file, " " + source.name()));
        }
        problems += found;
    }
    return problems > 0 ? ExitCode::UnusableInput : ExitCode::NothingFailed;
}

}  // namespace assess
