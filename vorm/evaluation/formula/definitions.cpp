#include "definitions.hpp"

#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/signal/time_line.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>

namespace vorm::evaluation {

const ParsedFormula* Definitions::find(const std::string& name) const {
    const auto definition = names_.definitions.find(name);
    return definition == names_.definitions.end() ? nullptr : &definition->second;
}

TreeSize Definitions::sizeOf(const ParsedFormula& formula) {
    return evaluation::sizeOf(formula.nodes(),
                              [this](const SyntaxNode& node) { return sizeOfName(node); });
}

TreeSize Definitions::sizeOfName(const SyntaxNode& node) {
    const ParsedFormula* definition = find(node.text);
    if (definition == nullptr) {
        return {};
    }
    if (const auto known = sizes_.find(node.text); known != sizes_.end()) {
        return known->second;
    }
    requireNoCircle(node);
    path_.push_back(node.text);
    TreeSize size = withinDefinition(node.text, [&] { return sizeOf(*definition); });
    path_.pop_back();
    ++size.height;
    return sizes_[node.text] = size;
}

void Definitions::requireNoCircle(const SyntaxNode& node) const {
    const auto begin = std::find(path_.begin(), path_.end(), node.text);
    if (begin != path_.end()) {
        std::string circle;
        for (auto name = begin; name != path_.end(); ++name) {
            circle += *name + " -> ";
        }
        throw FormulaError("definitions go in a circle: " + circle + node.text, node.where);
    }
    if (path_.size() >= ParsedFormula::maximumNesting) {
        throw FormulaError("definitions are nested more than " +
                               std::to_string(ParsedFormula::maximumNesting) + " levels deep",
                           node.where);
    }
}

std::vector<OperandType> Definitions::typesOf(const ParsedFormula& formula) {
    return evaluation::typesOf(formula,
                               {[this](const std::string& name) { return typeOfName(name); },
                                [this](const std::string& name) { return suggestionFor(name); }});
}

const std::vector<OperandType>& Definitions::typesOf(const std::string& name) {
    const auto known = types_.find(name);
    if (known != types_.end()) {
        return known->second;
    }
    return types_[name] = withinDefinition(name, [&] { return typesOf(*find(name)); });
}

std::optional<OperandType> Definitions::typeOfName(const std::string& name) {
    const auto recorded = signalOfHeldName(name);
    if (recorded && find(*recorded) != nullptr) {
        return std::nullopt;
    }
    if (find(name) == nullptr) {
        const std::optional<SignalType> type = names_.signalType(name);
        return type ? std::optional(
                          OperandType{.type = *type, .interpolation = interpolationOf(name, *type)})
                    : std::nullopt;
    }
    const OperandType& whole = typesOf(name).back();
    return OperandType{
        .type = whole.type, .isOpen = whole.isOpen, .interpolation = whole.interpolation};
}

Interpolation Definitions::interpolationOf(const std::string& name, const SignalType& type) const {
    const bool isHeld = type.isKnown() && !hasLines(*type.valueType);
    return isHeld || signalOfHeldName(name) ? assessments::INTERPOLATION_METHOD::ZOH
                                            : names_.interpolation(name);
}

std::optional<std::string> Definitions::memberAdvice(const std::string& name) const {
    for (const std::string& signal : names_.signalNames) {
        const std::optional<SignalType> type = names_.signalType(signal);
        if (type && type->isEnumerated() && type->enumeration->valueOf(name)) {
            return "write '" + name + "' for the member of " + typeText(*type);
        }
    }
    return std::nullopt;
}

std::string Definitions::suggestionFor(const std::string& name) const {
    if (find(name) != nullptr) {
        return "that is a definition; held(...) takes the name of a signal";
    }
    if (names_.signalType(name)) {
        return "of that there are no samples that could be held";
    }
    std::vector<std::string> candidates = names_.signalNames;
    for (const auto& definition : names_.definitions) {
        candidates.push_back(definition.first);
    }
    std::vector<std::string> meant = candidates;
    const std::string time(timeName);
    if (names_.signalType(time) &&
        std::find(candidates.begin(), candidates.end(), time) == candidates.end()) {
        meant.push_back(time);
    }
    const std::string near = memberAdvice(name).value_or(suggestion(name, meant));
    std::string advice =
        near.empty() && !candidates.empty() ? "there is " + quotedList(candidates) : near;
    if (!names_.whySignalsMayMiss.empty()) {
        advice += (advice.empty() ? "" : "\n  ") + names_.whySignalsMayMiss;
    }
    return advice;
}

}  // namespace vorm::evaluation
