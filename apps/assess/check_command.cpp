#include "commands.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

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
    for (const auto& [name, definition] : file.definitions) {
        reading.wanted->merge(definition.formula.names());
    }
    reading.maximumRows = rowsThatTellTypes;
    return readRecording(source, file.layout, reading);
}

// Calls check and reports what it throws; gives whether it did.
template <class Check>
bool hasProblem(Check check) {
    try {
        check();
        return false;
    } catch (const InputError& error) {
        std::cerr << messageOf(error) << "\n";
        return true;
    }
}

// Reports every formula that does not fit, and tells whether there is one. Definitions that an
// assessment uses are reported with it.
bool hasProblems(const AssessmentFile& file, const FormulaNames& names) {
    bool found = false;
    for (const Assessment& assessment : file.assessments) {
        found |= hasProblem([&] { typedFormula(file, assessment, names); });
    }
    if (!found) {
        for (const auto& [name, definition] : file.definitions) {
            found |= hasProblem([&, &name = name] { checkDefinition(file, name, names); });
        }
    }
    return found;
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
        if (hasProblems(file, namesWithoutData(file))) {
            return ExitCode::UnusableInput;
        }
        writeResults(options, summaryOf(file, ""));
        if (!options.quiet) {
            std::cerr << "note: without a recording, signals of any name are accepted; --against "
                         "checks them\n";
        }
        return ExitCode::NothingFailed;
    }
    bool found = false;
    for (const RecordingSource& source : recordingsOf(options)) {
        found |= hasProblem([&] {
            const Recording recording = headerOf(file, source);
            if (hasProblems(file, namesIn(file, recording))) {
                found = true;
            } else {
                writeResults(options, summaryOf(file, " " + source.name()));
            }
        });
    }
    return found ? ExitCode::UnusableInput : ExitCode::NothingFailed;
}

}  // namespace assess
