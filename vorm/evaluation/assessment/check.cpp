#include "check.hpp"

#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/signal/held_name.hpp>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr std::size_t rowsThatTellTypes = 1000;

// In the order of the file; what several assessments have in common is told once.
void arrange(std::vector<InputError>& errors) {
    const auto place = [](const InputError& error) {
        return std::pair(error.problem().where.line, error.problem().where.column);
    };
    std::stable_sort(
        errors.begin(), errors.end(),
        [&](const InputError& one, const InputError& other) { return place(one) < place(other); });
    const auto isSame = [](const InputError& one, const InputError& other) {
        return std::string_view(one.what()) == other.what();
    };
    errors.erase(std::unique(errors.begin(), errors.end(), isSame), errors.end());
}

std::vector<const Assessment*> allOf(const AssessmentFile& file) {
    std::vector<const Assessment*> assessments;
    for (const Assessment& assessment : file.assessments) {
        assessments.push_back(&assessment);
    }
    return assessments;
}

template <class Check>
void addError(std::vector<InputError>& errors, Check check) {
    try {
        check();
    } catch (const InputError& error) {
        errors.push_back(error);
    }
}

// What `checkOne` refuses of the assessments, and the definitions that none of them uses.
template <class CheckOne>
std::vector<InputError> checkWith(const AssessmentFile& file, const FormulaNames& names,
                                  CheckOne checkOne) {
    std::vector<InputError> errors;
    for (const Assessment& assessment : file.assessments) {
        addError(errors, [&] { checkOne(assessment); });
    }
    const std::set<std::string> used = namesToRead(file, allOf(file));
    for (const auto& definition : file.definitions) {
        const std::string& name = definition.first;
        if (!used.contains(name)) {
            addError(errors, [&] { checkDefinition(file, name, names); });
        }
    }
    arrange(errors);
    return errors;
}

// Of what could not be read nothing is known.
FormulaNames withUnknown(FormulaNames names, const std::set<std::string>& unread) {
    names.signalType = [known = std::move(names.signalType), unread](const std::string& name) {
        return unread.contains(recordedName(name)) ? SignalType() : known(name);
    };
    names.interpolation = [known = std::move(names.interpolation),
                           unread](const std::string& name) {
        return unread.contains(recordedName(name)) ? std::nullopt : known(name);
    };
    return names;
}

std::vector<InputError> checkIn(const Recording& recording, const AssessmentFile& file,
                                const std::set<std::string>& unread) {
    const FormulaNames names = withUnknown(namesIn(file, recording), unread);
    return checkWith(file, names, [&](const Assessment& assessment) {
        const std::set<std::string> signals = typedFormula(file, assessment, names).signals;
        const auto isKnown = [&](const std::string& signal) {
            return !unread.contains(recordedName(signal));
        };
        if (std::all_of(signals.begin(), signals.end(), isKnown)) {
            typedAssessment(file, assessment, names, recording);
        }
    });
}

Recording headerOf(const AssessmentFile& file, const RecordingSource& source) {
    ReadingOptions reading;
    reading.wanted = namesToRead(file, allOf(file));
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
    return checkIn(recording, file, {});
}

std::vector<InputError> check(const AssessmentFile& file, const RecordingSource& source) {
    return check(PartlyReadFile{file, {}, {}}, source);
}

std::vector<InputError> check(const PartlyReadFile& read, const RecordingSource& source) {
    if (!read.hasLayout) {
        return check(read.file);
    }
    std::vector<InputError> errors;
    addError(errors,
             [&] { errors = checkIn(headerOf(read.file, source), read.file, read.unreadNames); });
    return errors;
}

}  // namespace vorm::evaluation
