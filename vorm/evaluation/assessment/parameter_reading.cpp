#include "parameter_reading.hpp"

#include <vorm/evaluation/formula/token.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

// Integers in decimal, and of other numbers the digits that stand there, as formulas write them.
std::string numberText(const TomlDocument& document, const toml::node& number) {
    if (number.is_integer()) {
        return std::to_string(number.as_integer()->get());
    }
    std::string digits = document.digitsOf(number);
    digits.erase(0, digits.starts_with('+') ? 1 : 0);
    return digits;
}

FormulaParameter parameterOf(const TomlDocument& document, const std::string& name,
                             const toml::node& node) {
    const SourceLocation where = document.placeOf(node);
    FormulaParameter parameter{.name = name,
                               .source = where.file + ":" + std::to_string(where.line)};
    if (node.is_number()) {
        parameter.kind = ParameterKind::Number;
        parameter.value = numberText(document, node);
    } else if (const auto* flag = node.as_boolean()) {
        parameter.kind = ParameterKind::Bool;
        parameter.value = flag->get() ? "true" : "false";
    } else if (const auto* text = node.as_string()) {
        parameter.value = text->get();
    } else {
        document.fail(node,
                      "the parameter '" + name + "' has to be a number, true or false, or a text",
                      name + " = 27.8, or " + name + " = \"500 ms\"");
    }
    return parameter;
}

// The text of a number in TOML, which a document of its own reads.
std::optional<std::string> numberIn(const std::string& text) {
    if (text.find_first_not_of("0123456789abcdefinoxABCDEFX_+-.") != std::string::npos) {
        return std::nullopt;
    }
    try {
        const std::string line = "value = " + text;
        const TomlDocument document(line, "");
        const toml::node& value = *document.root.get("value");
        return value.is_number() ? std::optional(numberText(document, value)) : std::nullopt;
    } catch (const InputError&) {
        return std::nullopt;
    }
}

std::string valueOf(const ParameterSetting& setting, const FormulaParameter& parameter) {
    const auto fail = [&](const std::string& wanted, const std::string& advice) {
        failAt({setting.source},
               "'" + setting.value + "' is " + wanted + ", as the parameter '" + setting.name +
                   "' is one in " + parameter.source,
               advice);
    };
    switch (parameter.kind) {
        case ParameterKind::Number:
            if (const auto number = numberIn(setting.value)) {
                return *number;
            }
            fail("no number", "write it as the file would: " + parameter.value);
            break;
        case ParameterKind::Bool:
            if (setting.value != "true" && setting.value != "false") {
                fail("neither true nor false", "write true or false");
            }
            break;
        case ParameterKind::Text:
            break;
    }
    return setting.value;
}

[[noreturn]] void refuseName(const ParameterSetting& setting, const FormulaParameters& parameters,
                             const std::string& file) {
    const std::string near = suggestion(setting.name, namesOf(parameters));
    failAt({setting.source}, "there is no parameter '" + setting.name + "' in " + file,
           !near.empty()        ? near
           : parameters.empty() ? "the file has no table [parameters]"
                                : "it has " + quotedList(namesOf(parameters)));
}

}  // namespace

FormulaParameter readParameter(const TomlDocument& document, const std::string& name,
                               const toml::node& node) {
    if (!isName(name)) {
        document.fail(node, "formulas cannot name a parameter '" + name + "'",
                      "its name is letters, digits, _ and ., and does not begin with a digit");
    }
    return parameterOf(document, name, node);
}

void setParameters(FormulaParameters& parameters, const std::vector<ParameterSetting>& settings,
                   const std::string& file) {
    for (const ParameterSetting& setting : settings) {
        const auto parameter =
            std::find_if(parameters.begin(), parameters.end(),
                         [&](const auto& candidate) { return candidate.name == setting.name; });
        if (parameter == parameters.end()) {
            refuseName(setting, parameters, file);
        }
        if (parameter->initial) {
            failAt({setting.source}, "the parameter '" + setting.name + "' is set twice",
                   "set it once");
        }
        std::string value = valueOf(setting, *parameter);
        parameter->initial = std::exchange(parameter->value, std::move(value));
        parameter->source = setting.source;
    }
}

}  // namespace vorm::evaluation::detail
