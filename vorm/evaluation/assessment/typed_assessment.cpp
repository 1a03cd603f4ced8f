#include "typed_assessment.hpp"

#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

std::map<std::string, ParsedFormula> definitionsOf(const AssessmentFile& file) {
    std::map<std::string, ParsedFormula> definitions;
    for (const auto& [name, definition] : file.definitions) {
        definitions.emplace(name, definition.formula);
    }
    return definitions;
}

constexpr ExactTime farthest = 1'000 * 86'400 * second;

ExactTime lengthOf(const WrittenTime& written) {
    const ExactTime time = written.time.value_or(farthest);
    return std::min(std::max(time, -time), farthest);
}

ExactTime reachOf(const ParsedFormula& formula) {
    std::vector<ExactTime> reaches;
    for (const SyntaxNode& node : formula.nodes()) {
        ExactTime below;
        if (operandsOf(node.kind) > 0) {
            below = reaches[node.left];
        }
        if (operandsOf(node.kind) > 1) {
            below = std::max(below, reaches[node.right]);
        }
        const ExactTime own = std::max(lengthOf(node.a), lengthOf(node.b));
        reaches.push_back(std::min(below + own, farthest));
    }
    return reaches.back();
}

void requireVerdicts(const Formula& formula, const std::string& text) {
    const FormulaError::Span whole{0, text.size()};
    if (formula.type.isKnown() && !formula.type.is<bool>()) {
        throw FormulaError(
            "an assessment is true or false, but this is of type " + typeText(formula.type), whole,
            "compare it with something, for example 'x <= 20'");
    }
    if (formula.signals.empty()) {
        throw FormulaError("the formula reads no signal", whole,
                           "without one there is no time at which to assess it");
    }
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

}  // namespace

std::set<std::string> namesToRead(const AssessmentFile& file,
                                  const std::vector<const Assessment*>& assessments) {
    std::set<std::string> names;
    std::vector<const ParsedFormula*> pending;
    for (const Assessment* assessment : assessments) {
        pending.push_back(&assessment->requirement.formula);
    }
    while (!pending.empty()) {
        const ParsedFormula& formula = *pending.back();
        pending.pop_back();
        for (const std::string& name : formula.names()) {
            const auto definition = file.definitions.find(name);
            if (names.insert(name).second && definition != file.definitions.end()) {
                pending.push_back(&definition->second.formula);
            }
        }
    }
    return names;
}

ExactTime reachOf(const AssessmentFile& file, const std::vector<const Assessment*>& assessments) {
    ExactTime reach;
    for (const Assessment* assessment : assessments) {
        reach = std::max(reach, reachOf(assessment->requirement.formula));
    }
    // None of them is part of another one twice on any way.
    for (const auto& [name, definition] : file.definitions) {
        reach = std::min(reach + reachOf(definition.formula), farthest);
    }
    return reach;
}

FormulaNames namesWithoutData(const AssessmentFile& file) {
    FormulaNames names;
    std::map<std::string, SignalType> declared;
    for (const SignalLayout& signal : file.layout.signals) {
        declared.emplace(signal.name, signal.type.value_or(SignalType()));
        names.signalNames.push_back(signal.name);
    }
    names.signalType = [declared](const std::string& name) -> std::optional<SignalType> {
        const auto found = declared.find(name);
        return found == declared.end() ? SignalType() : found->second;
    };
    names.definitions = definitionsOf(file);
    names.tick = file.layout.time.resolution.length;
    return names;
}

FormulaNames namesIn(const AssessmentFile& file, const Recording& recording) {
    FormulaNames names;
    names.signalType = [&recording](const std::string& name) -> std::optional<SignalType> {
        const Signal* signal = recording.find(name);
        return signal == nullptr ? std::nullopt : std::optional(signal->type);
    };
    names.definitions = definitionsOf(file);
    names.tick = recording.timeline.tick();
    names.signalNames = recording.availableNames;
    if (!recording.leftOut.empty()) {
        names.whySignalsMayMiss = std::string("not read: ") + recording.leftOut.front().what();
    }
    return names;
}

Formula typedFormula(const AssessmentFile& file, const Assessment& assessment,
                     const FormulaNames& names) {
    const SourcedFormula& requirement = assessment.requirement;
    return placingErrors(file, requirement.source, [&] {
        Formula formula = buildFormula(requirement.formula, names);
        requireVerdicts(formula, requirement.source.text);
        return formula;
    });
}

void checkDefinition(const AssessmentFile& file, const std::string& definition,
                     const FormulaNames& names) {
    const SourcedFormula& sourced = file.definitions.at(definition);
    placingErrors(file, sourced.source, [&] { return buildFormula(sourced.formula, names); });
}

}  // namespace vorm::evaluation
