#pragma once

// For the evaluator: what one node of a formula makes of the values of its operands. Which
// operands a node has under which meaning is the formula graph's matter.

#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/evaluator/value.hpp>

#include <vector>

namespace vorm::evaluation {

/// The value of a formula from those of its vertex's operands. What a failing operation throws
/// passes through.
Value evaluateNode(const assessments::Expression& formula, Meaning meaning,
                   const std::vector<Value>& operands, const SignalLookup& signals,
                   const Timeline& timeline);

}  // namespace vorm::evaluation
