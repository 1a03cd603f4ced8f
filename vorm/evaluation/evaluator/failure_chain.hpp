#pragma once

// For the evaluator: failures as chains of formulas.

#include <vorm/assessments/expression/expression_type.hpp>

#include <exception>
#include <vector>

namespace vorm::evaluation {

/// The fault, wrapped by evaluation_exception_dispatcher for each of the formulas that failed by
/// it, the innermost first.
std::exception_ptr failureChain(std::exception_ptr fault,
                                const std::vector<const assessments::Expression*>& formulas);

}  // namespace vorm::evaluation
