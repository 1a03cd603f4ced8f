#include "typed_assessment.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::INTERPOLATION_METHOD;

std::map<std::string, ParsedFormula> definitionsOf(const AssessmentFile& file) {
    std::map<std::string, ParsedFormula> definitions;
    for (const auto& [name, definition] : file.definitions) {
        definitions.emplace(name, definition.formula);
    }
    return definitions;
}

void requireVerdicts(const Formula& formula, const std::string& text) {
    const auto fail = [&](const std::string& message, const std::string& advice) {
        throw FormulaError(message, {0, text.size()}, advice).within(text);
    };
    if (formula.type.isKnown() && !formula.type.is<bool>()) {
        fail("an assessment is true or false, but this is of type " + typeText(formula.type),
             "compare it with something, for example 'x <= 20'");
    }
    if (formula.signals.empty()) {
        fail("the formula reads no signal", "without one there is no time at which to assess it");
    }
}

struct DeclaredSignal {
    SignalType type;
    std::optional<INTERPOLATION_METHOD> interpolation;
};

// Where lines are the default only numbers are lines, and only data tell whether these are numbers.
DeclaredSignal declaredSignal(const SignalLayout& signal, const RecordingLayout& layout) {
    const bool isCertain =
        signal.interpolation || signal.type || layout.interpolation == INTERPOLATION_METHOD::ZOH;
    return {signal.type.value_or(SignalType()),
            isCertain ? std::optional(signal.interpolation.value_or(layout.interpolation))
                      : std::nullopt};
}

// What `build` gives; its errors are placed at the definition that they name, or else at `source`.
template <class Build>
Formula placingErrors(const AssessmentFile& file, const FormulaSource& source, Build build) {
    try {
        return build();
    } catch (const FormulaError& error) {
        const auto definition = file.definitions.find(error.definition());
        throw placed(error,
                     definition == file.definitions.end() ? source : definition->second.source);
    }
}

// Of the times that an assessment states, in the recording, and of what is known.
void placeRange(const Assessment& assessment, TypedAssessment& typed) {
    const Recording& recording = *typed.recording;
    if (assessment.from) {
        typed.from = assessment.from->firstTimeIn(recording);
    }
    if (assessment.to) {
        typed.to = assessment.to->lastTimeIn(recording);
    }
    if (typed.from && typed.to && *typed.to < *typed.from) {
        throw assessment.to->error("'to' is before 'from'");
    }
    std::optional<CountedSpan> range = typed.known;
    if (!range && typed.from && typed.to) {
        range.emplace();
    }
    if (range && typed.from) {
        range->first = recording.timeline.at(*typed.from);
    }
    if (range && typed.to) {
        range->last = recording.timeline.at(*typed.to);
    }
    typed.range = range && range->first <= range->last ? range : std::nullopt;
}

}  // namespace

FormulaNames namesWithoutData(const AssessmentFile& file) {
    FormulaNames names;
    std::map<std::string, DeclaredSignal> declared;
    for (const SignalLayout& signal : file.layout.signals) {
        declared.emplace(signal.name, declaredSignal(signal, file.layout));
        names.signalNames.push_back(signal.name);
    }
    names.signalType = [declared](const std::string& name) -> std::optional<SignalType> {
        const auto found = declared.find(recordedName(name));
        return found == declared.end() ? SignalType() : found->second.type;
    };
    names.interpolation = [declared](const std::string& name) {
        const auto found = declared.find(name);
        return found == declared.end() ? std::nullopt : found->second.interpolation;
    };
    names.definitions = definitionsOf(file);
    names.tick = file.layout.time.resolution.length;
    return names;
}

FormulaNames namesIn(const Recording& recording) {
    FormulaNames names;
    names.signalType = [&recording](const std::string& name) -> std::optional<SignalType> {
        const Signal* signal = recording.find(name);
        return signal == nullptr ? std::nullopt : std::optional(signal->type);
    };
    names.interpolation =
        [&recording](const std::string& name) -> std::optional<INTERPOLATION_METHOD> {
        const Signal* signal = recording.find(name);
        return signal == nullptr || signal->pieces->empty()
                   ? std::nullopt
                   : std::optional(signal->pieces->front().getInterpolation());
    };
    names.tick = recording.timeline.tick();
    names.signalNames = recording.availableNames;
    if (!recording.leftOut.empty()) {
        names.whySignalsMayMiss = std::string("not read: ") + recording.leftOut.front().what();
    }
    return names;
}

FormulaNames namesIn(const AssessmentFile& file, const Recording& recording) {
    FormulaNames names = namesIn(recording);
    names.definitions = definitionsOf(file);
    return names;
}

Formula typedFormula(const ParsedFormula& parsed, const FormulaNames& names) {
    Formula formula = buildFormula(parsed, names);
    requireVerdicts(formula, parsed.text());
    return formula;
}

std::vector<const Signal*> signalsOf(const Formula& formula, const Recording& recording) {
    std::vector<const Signal*> signals;
    for (const std::string& name : formula.signals) {
        signals.push_back(recording.find(name));
    }
    if (signals.size() > 1 && recording.time) {
        std::erase(signals, &*recording.time);
    }
    return signals;
}

Formula typedFormula(const AssessmentFile& file, const Assessment& assessment,
                     const FormulaNames& names) {
    const SourcedFormula& requirement = assessment.requirement;
    return placingErrors(file, requirement.source,
                         [&] { return typedFormula(requirement.formula, names); });
}

void checkDefinition(const AssessmentFile& file, const std::string& definition,
                     const FormulaNames& names) {
    const SourcedFormula& sourced = file.definitions.at(definition);
    placingErrors(file, sourced.source, [&] { return buildFormula(sourced.formula, names); });
}

TypedAssessment typedAssessment(const AssessmentFile& file, const Assessment& assessment,
                                const FormulaNames& names, const Recording& recording) {
    Formula formula = typedFormula(file, assessment, names);
    auto signals = signalsOf(formula, recording);
    const auto known = knownRange(signals);
    TypedAssessment typed{
        &assessment,  &recording, std::move(formula), std::move(signals), std::nullopt,
        std::nullopt, known,      std::nullopt};
    placeRange(assessment, typed);
    return typed;
}

}  // namespace vorm::evaluation
