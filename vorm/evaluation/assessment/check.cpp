#include "check.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

namespace vorm::evaluation {
namespace {

constexpr std::size_t rowsThatTellTypes = 1000;

template <class Check>
void addError(std::vector<InputError>& errors, Check check) {
    try {
        check();
    } catch (const InputError& error) {
        errors.push_back(error);
    }
}

std::vector<InputError> checkWith(const AssessmentFile& file, const FormulaNames& names) {
    std::vector<InputError> errors;
    for (const Assessment& assessment : file.assessments) {
        addError(errors, [&] { typedFormula(file, assessment, names); });
    }
    if (errors.empty()) {
        for (const auto& [name, definition] : file.definitions) {
            addError(errors, [&, &name = name] { checkDefinition(file, name, names); });
        }
    }
    return errors;
}

Recording headerOf(const AssessmentFile& file, const RecordingSource& source) {
    ReadingOptions reading;
    reading.wanted = namesToRead(file, chosenAssessments(file, RunOptions()));
    for (const auto& [name, definition] : file.definitions) {
        reading.wanted->merge(definition.formula.names());
    }
    reading.maximumRows = rowsThatTellTypes;
    RecordingSource first = source;
    first.part = file.layout.time.timesBack == TimesBack::Split ? 1 : 0;
    return readRecording(first, file.layout, reading);
}

}  // namespace

std::vector<InputError> check(const AssessmentFile& file) {
    return checkWith(file, namesWithoutData(file));
}

std::vector<InputError> check(const AssessmentFile& file, const Recording& recording) {
    return checkWith(file, namesIn(file, recording));
}

std::vector<InputError> check(const AssessmentFile& file, const RecordingSource& source) {
    std::vector<InputError> errors;
    addError(errors, [&] { errors = check(file, headerOf(file, source)); });
    return errors;
}

}  // namespace vorm::evaluation
