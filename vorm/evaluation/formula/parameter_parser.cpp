#include "number_text.hpp"
#include "parser.hpp"

#include <vorm/assessments/trace/value_type.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <utility>

namespace vorm::evaluation {
namespace {

std::string adviceFor(const std::string& name, const FormulaParameters& parameters) {
    if (parameters.empty()) {
        return "declare it below a line [parameters]: " + name + " = ...";
    }
    const std::string near = suggestion(name, namesOf(parameters));
    return near.empty() ? "there is " + quotedList(namesOf(parameters)) : near;
}

}  // namespace

const FormulaParameter& Parser::takeParameter() {
    const Token token = take();
    const std::string name(token.text.substr(1));
    if (parameters_ == nullptr) {
        fail("'$" + name + "' is a parameter, and only assessment files have parameters", token,
             "write its value");
    }
    const FormulaParameter* parameter = findParameter(*parameters_, name);
    if (parameter == nullptr) {
        fail("unknown parameter '" + name + "'", token, adviceFor(name, *parameters_));
    }
    return *parameter;
}

std::size_t Parser::parameter() {
    SyntaxNode node{.where = spanOf(next())};
    const FormulaParameter& parameter = takeParameter();
    node.text = parameter.value;
    switch (parameter.kind) {
        case ParameterKind::Number:
            node.kind = SyntaxKind::Number;
            break;
        case ParameterKind::Bool:
            node.kind = SyntaxKind::TypedLiteral;
            node.target = assessments::valueTypeIndex<bool>;
            break;
        case ParameterKind::Text:
            node.kind = SyntaxKind::Member;
            break;
    }
    return append(std::move(node));
}

std::optional<std::string> Parser::parameterOfType(std::size_t valueType) {
    const FormulaParameter& parameter = takeParameter();
    const bool isVerdict = valueType == assessments::valueTypeIndex<assessments::Verdict>;
    const bool isBool = valueType == assessments::valueTypeIndex<bool>;
    const ParameterKind wanted = isVerdict ? ParameterKind::Text
                                 : isBool  ? ParameterKind::Bool
                                           : ParameterKind::Number;
    const bool fits = parameter.kind == wanted && (!isVerdict || verdictOf(parameter.value));
    return fits ? std::optional(parameter.value) : std::nullopt;
}

// A number takes the unit that follows it, as a number that is written there does.
WrittenTime Parser::parameterTime(bool isNegative) {
    const Token token = next();
    const FormulaParameter& parameter = takeParameter();
    if (parameter.kind == ParameterKind::Bool) {
        failAsNoTime(parameter, token);
    }
    const std::vector<Token> words = tokensOf(parameter.value);
    const bool hasSign = words.front().is("-");
    const Token& number = words[hasSign ? 1 : 0];
    const bool isBelowZero = isNegative != hasSign;
    if (parameter.kind == ParameterKind::Number) {
        return timeOf(number.text, isBelowZero);
    }
    const auto unit = words.size() == (hasSign ? 4 : 3) && number.kind == TokenKind::Number
                          ? timeUnitOf(words[hasSign ? 2 : 1].text)
                          : std::nullopt;
    if (!unit) {
        failAsNoTime(parameter, token);
    }
    return writtenTime(number.text, unit, isBelowZero);
}

void Parser::failAsNoTime(const FormulaParameter& parameter, const Token& where) const {
    fail(parameterText(parameter.kind, parameter.value) + " is no time", where,
         "a time is a number of seconds, or a text of a number and one of the units " +
             std::string(timeUnitNames) + ": \"500 ms\"");
}

}  // namespace vorm::evaluation
