#pragma once

#include <vorm/evaluation/formula/formula_error.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <exception>

namespace vorm::evaluation {

/// The failure of an evaluation as an error of the formula whose text the span is: the first fault
/// as the message, and as the advice the sub-formulas that failed by it, from the innermost on, and
/// what to do. Their times are written as in `times`.
FormulaError evaluationError(const std::exception_ptr& failure, TextSpan span,
                             const TimeTexts& times);

}  // namespace vorm::evaluation
