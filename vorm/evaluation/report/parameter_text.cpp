#include "parameter_text.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <iterator>

namespace vorm::evaluation {

std::string parametersText(const FormulaParameters& parameters) {
    std::string text;
    for (const FormulaParameter& parameter : parameters) {
        text += (text.empty() ? "" : ", ") + parameter.name + " = " +
                parameterText(parameter.kind, parameter.value);
        if (parameter.initial) {
            text += " (" + parameterText(parameter.kind, *parameter.initial) + ")";
        }
    }
    return withoutControls(text);
}

std::string settingsText(const FormulaParameters& parameters) {
    FormulaParameters set;
    std::copy_if(parameters.begin(), parameters.end(), std::back_inserter(set),
                 [](const FormulaParameter& parameter) { return parameter.initial.has_value(); });
    return set.empty() ? "" : "with " + parametersText(set);
}

}  // namespace vorm::evaluation
