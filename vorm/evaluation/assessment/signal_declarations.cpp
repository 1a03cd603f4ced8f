#include "signal_declarations.hpp"

#include <vorm/evaluation/assessment/layout_reading.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <utility>
#include <vector>

namespace vorm::evaluation::detail {

void SignalDeclarations::readEnumeration(const std::string& name, const toml::node& node) {
    enumerations_[name] = nullptr;
    const toml::array* list = node.as_array();
    auto enumeration = std::make_shared<Enumeration>();
    enumeration->name = name;
    if (list != nullptr && !valueTypeOf(name) && name != "enum") {
        for (const toml::node& member : *list) {
            if (const auto* text = member.as_string()) {
                enumeration->members.push_back(text->get());
            }
        }
        const std::set<std::string> distinct(enumeration->members.begin(),
                                             enumeration->members.end());
        if (!list->empty() && distinct.size() == list->size()) {
            enumerations_[name] = std::move(enumeration);
            return;
        }
    }
    document_.fail(node, "'" + name + "' is no enumeration",
                   "write its members in order, each once: " + name + R"( = ["off", "on"])");
}

std::optional<SignalLayout> SignalDeclarations::signal(const std::string& name,
                                                       const toml::node& node) const {
    SignalLayout signal;
    signal.name = name;
    signal.where = document_.placeOf(node);
    if (const auto* column = node.as_string()) {
        signal.column = column->get();
    } else if (const auto* keys = node.as_table()) {
        TomlTable table(document_, *keys, "the signal '" + name + "'");
        readKeys(table, signal);
    } else {
        document_.fail(node, "the signal '" + name + "' has to be a column name or a table",
                       name + R"( = { column = "...", interpolation = "linear" })");
    }
    const bool isOfUnread = signal.type && !signal.type->isKnown();
    return isOfUnread ? std::nullopt : std::optional(std::move(signal));
}

void SignalDeclarations::readKeys(TomlTable& table, SignalLayout& signal) const {
    signal.column = table.text("column").value_or("");
    signal.file = table.text("file").value_or("");
    signal.type = typeOf(table, signal.name);
    signal.interpolation = interpolation(table);
    requireLines(table, signal);
    signal.unit = table.text("unit").value_or("");
    signal.maxGap = maxGap(table);
    signal.equalTimes = equalTimes(table);
    table.refuseOthers();
}

void SignalDeclarations::requireLines(TomlTable& table, const SignalLayout& signal) const {
    const bool isLinear = signal.interpolation == assessments::INTERPOLATION_METHOD::LINEAR;
    if (isLinear && signal.type && signal.type->isKnown() && !hasLines(*signal.type->valueType)) {
        document_.fail(*table.node("interpolation"),
                       "the signal '" + signal.name + "' is of type " + typeText(*signal.type) +
                           ", which has no linear interpolation",
                       "leave it out, or declare type = \"double\" for numbers");
    }
}

std::optional<SignalType> SignalDeclarations::typeOf(TomlTable& table,
                                                     const std::string& signal) const {
    const auto name = table.text("type");
    if (!name) {
        return std::nullopt;
    }
    if (const auto index = valueTypeOf(*name)) {
        return SignalType{*index, nullptr};
    }
    if (*name == "enum") {
        return SignalType::of(std::make_shared<Enumeration>(Enumeration{signal, {}}));
    }
    if (const auto found = enumerations_.find(*name); found != enumerations_.end()) {
        return found->second == nullptr ? SignalType() : SignalType::of(found->second);
    }
    std::vector<std::string> types = valueTypeNames();
    types.emplace_back("enum");
    for (const auto& [enumeration, members] : enumerations_) {
        types.push_back(enumeration);
    }
    document_.fail(*table.node("type"), "there is no type '" + *name + "'",
                   "it is one of " + quotedList(types, types.size()));
}

}  // namespace vorm::evaluation::detail
