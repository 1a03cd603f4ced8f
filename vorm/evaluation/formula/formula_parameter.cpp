#include "formula_parameter.hpp"

#include "number_text.hpp"
#include "quoted_text.hpp"

#include <algorithm>
#include <charconv>

namespace vorm::evaluation {

std::string parameterText(ParameterKind kind, const std::string& value) {
    return kind == ParameterKind::Text ? inQuotes(value, '"') : value;
}

std::variant<bool, std::int64_t, double, std::string> valueOf(const FormulaParameter& parameter) {
    const std::string& value = parameter.value;
    switch (parameter.kind) {
        case ParameterKind::Number: {
            std::int64_t integer = 0;
            if (!isWrittenWhole(value)) {
                return nearestNumber<double>(value);
            }
            std::from_chars(value.data(), value.data() + value.size(), integer);
            return integer;
        }
        case ParameterKind::Bool:
            return value == "true";
        case ParameterKind::Text:
            break;
    }
    return value;
}

const FormulaParameter* findParameter(const FormulaParameters& parameters, std::string_view name) {
    const auto found =
        std::find_if(parameters.begin(), parameters.end(),
                     [&](const FormulaParameter& parameter) { return parameter.name == name; });
    return found == parameters.end() ? nullptr : &*found;
}

std::vector<std::string> namesOf(const FormulaParameters& parameters) {
    std::vector<std::string> names;
    for (const FormulaParameter& parameter : parameters) {
        names.push_back(parameter.name);
    }
    return names;
}

}  // namespace vorm::evaluation
