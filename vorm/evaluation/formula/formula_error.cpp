#include "formula_error.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

InputProblem problemOf(std::string message, std::string advice) {
    InputProblem problem;
    problem.message = std::move(message);
    problem.advice = std::move(advice);
    return problem;
}

}  // namespace

FormulaError::FormulaError(std::string message, TextSpan span, std::string advice,
                           std::string inDefinition)
    : InputError(problemOf(std::move(message), std::move(advice))),
      span_(span),
      definition_(std::move(inDefinition)) {}

FormulaError::FormulaError(InputProblem problem, const FormulaError& error)
    : InputError(std::move(problem)), span_(error.span_), definition_(error.definition_) {}

FormulaError FormulaError::within(std::string_view text) const {
    const std::size_t begin = std::min(span_.begin, text.size());
    const std::string_view before = text.substr(0, begin);
    const std::size_t newline = before.rfind('\n');
    const std::size_t lineBegin = newline == std::string_view::npos ? 0 : newline + 1;
    const std::string_view line = text.substr(lineBegin, text.find('\n', begin) - lineBegin);
    const std::size_t marked = std::min(span_.length, lineBegin + line.size() - begin);

    InputProblem placed = problem();
    placed.excerpt = std::string(line);
    placed.caret = charactersIn(before.substr(lineBegin));
    placed.caretWidth = std::max<std::size_t>(1, charactersIn(text.substr(begin, marked)));
    placed.where.line =
        1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    placed.where.column = placed.caret + 1;
    return {std::move(placed), *this};
}

}  // namespace vorm::evaluation
