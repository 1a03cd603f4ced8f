#include "formula_source.hpp"

#include <utility>

namespace vorm::evaluation {

InputError placed(const FormulaError& error, const FormulaSource& source) {
    InputProblem problem = error.within(source.text).problem();
    const SourceLocation inFormula = problem.where;
    problem.where = source.where;
    if (source.verbatim) {
        problem.where.line += inFormula.line - 1;
        problem.where.column =
            inFormula.line == 1 ? source.where.column + inFormula.column - 1 : inFormula.column;
    }
    return InputError(std::move(problem));
}

}  // namespace vorm::evaluation
