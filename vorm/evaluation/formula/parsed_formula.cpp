#include "formula.hpp"
#include "parser.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {

ParsedFormula::ParsedFormula(std::string text, std::shared_ptr<const FormulaParameters> parameters)
    : text_(std::move(text)), parameters_(std::move(parameters)) {
    try {
        nodes_ = std::make_shared<const SyntaxNodes>(Parser(text_, parameters_.get()).nodes());
    } catch (const FormulaError& error) {
        throw placed(error);
    }
}

bool ParsedFormula::hasParameter(std::string_view name) const {
    return parameters_ && findParameter(*parameters_, name) != nullptr;
}

FormulaError ParsedFormula::placed(const FormulaError& error) const {
    const InputProblem& problem = error.problem();
    const std::string_view marked = std::string_view(text_).substr(
        std::min(error.span().begin, text_.size()), error.span().length);
    std::string advice = problem.advice;
    std::set<std::string_view> told;
    for (const Token& token : tokensOf(marked)) {
        const FormulaParameter* parameter = parameters_ && token.kind == TokenKind::Parameter
                                                ? findParameter(*parameters_, token.text.substr(1))
                                                : nullptr;
        if (parameter != nullptr && told.insert(token.text).second) {
            advice += (advice.empty() ? "" : "\n  ") + std::string(token.text) + " is " +
                      parameterText(parameter->kind, parameter->value) + ", from " +
                      parameter->source;
        }
    }
    return FormulaError(problem.message, error.span(), advice, error.definition()).within(text_);
}

std::set<std::string> ParsedFormula::names() const {
    std::set<std::string> names;
    for (const SyntaxNode& node : *nodes_) {
        if (node.kind == SyntaxKind::Name || node.kind == SyntaxKind::QuotedName) {
            names.insert(node.text);
            names.insert(recordedName(node.text));
        }
    }
    return names;
}

}  // namespace vorm::evaluation
