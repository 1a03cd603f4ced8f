#include "formula_source.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <string_view>

namespace vorm::evaluation {
InputError placed(const FormulaError& error, const FormulaSource& source) {
    const std::string_view text = source.text;
    const std::size_t begin = std::min(error.span().begin, text.size());
    const std::string_view before = text.substr(0, begin);
    const std::size_t newline = before.rfind('\n');
    const std::size_t lineBegin = newline == std::string_view::npos ? 0 : newline + 1;
    const std::string_view line = text.substr(lineBegin, text.find('\n', begin) - lineBegin);

    InputProblem problem;
    problem.message = error.what();
    problem.where = source.where;
    if (source.verbatim) {
        const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
        const std::size_t column = charactersIn(before.substr(lineBegin));
        problem.where.line += lines;
        problem.where.column = lines == 0 ? source.where.column + column : column + 1;
    }
    problem.excerpt = std::string(line);
    problem.caret = charactersIn(text.substr(lineBegin, begin - lineBegin));
    const std::size_t marked = std::min(error.span().length, lineBegin + line.size() - begin);
    problem.caretWidth = std::max<std::size_t>(1, charactersIn(text.substr(begin, marked)));
    problem.advice = error.advice();
    return InputError(std::move(problem));
}

}  // namespace vorm::evaluation
