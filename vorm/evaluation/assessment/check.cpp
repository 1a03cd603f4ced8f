#include "check.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

#include <algorithm>
#include <set>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr std::size_t rowsThatTellTypes = 1000;

bool isBefore(const InputError& one, const InputError& other) {
    const auto place = [](const InputError& error) {
        return std::pair(error.problem().where.line, error.problem().where.column);
    };
    return place(one) < place(other);
}

// All that a formula uses, through the definitions that can be read.
bool usesOneOf(const std::set<std::string>& unread, const AssessmentFile& file,
               const ParsedFormula& formula) {
    std::set<std::string> seen;
    std::vector<std::string> pending;
    const auto look = [&](const ParsedFormula& part) {
        for (const std::string& name : part.names()) {
            if (seen.insert(name).second) {
                pending.push_back(name);
            }
        }
    };
    look(formula);
    while (!pending.empty()) {
        const auto definition = file.definitions.find(pending.back());
        pending.pop_back();
        if (definition != file.definitions.end()) {
            look(definition->second.formula);
        }
    }
    return std::any_of(unread.begin(), unread.end(),
                       [&](const std::string& name) { return seen.contains(name); });
}

template <class Check>
void addError(std::vector<InputError>& errors, Check check) {
    try {
        check();
    } catch (const InputError& error) {
        errors.push_back(error);
    }
}

// An error for each assessment that `checkOne` refuses.
template <class CheckOne>
std::vector<InputError> checkWith(const AssessmentFile& file, const FormulaNames& names,
                                  CheckOne checkOne) {
    std::vector<InputError> errors;
    for (const Assessment& assessment : file.assessments) {
        addError(errors, [&] { checkOne(assessment); });
    }
    std::stable_sort(errors.begin(), errors.end(), isBefore);
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
    const FormulaNames names = namesWithoutData(file);
    return checkWith(file, names,
                     [&](const Assessment& assessment) { typedFormula(file, assessment, names); });
}

std::vector<InputError> check(const AssessmentFile& file, const Recording& recording) {
    const FormulaNames names = namesIn(file, recording);
    return checkWith(file, names, [&](const Assessment& assessment) {
        typedAssessment(file, assessment, names, recording);
    });
}

std::vector<InputError> check(const AssessmentFile& file, const RecordingSource& source) {
    std::vector<InputError> errors;
    addError(errors, [&] { errors = check(file, headerOf(file, source)); });
    return errors;
}

AssessmentFile checkablePart(const PartlyReadFile& read) {
    AssessmentFile file = read.file;
    std::erase_if(file.assessments, [&](const Assessment& assessment) {
        return usesOneOf(read.unreadDefinitions, file, assessment.requirement.formula);
    });
    std::erase_if(file.definitions, [&](const auto& definition) {
        return usesOneOf(read.unreadDefinitions, read.file, definition.second.formula);
    });
    return file;
}

}  // namespace vorm::evaluation
