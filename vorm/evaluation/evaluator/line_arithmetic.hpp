#pragma once

// For the evaluator: arithmetic of numbers of which some are lines.
//
// The core reads a line by its slope and samples every result where its operands cross. Both round:
// a difference that is zero in truth comes out beside zero, and a bend beside the time at which a
// comparison finds the same crossing. Here lines are read as comparisons read them, and a result
// bends where it has to and nowhere else.

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/evaluation/evaluator/changed_trace.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>

namespace vorm::evaluation {

/// The sum, difference or product (Plus, Minus, Multiply) of two quantities; of a product one
/// operand is a constant. Throws as the core's operators do.
SharedPieces arithmetic(assessments::VORM_OP op, const TracePieces& left, const TracePieces& right);

/// The magnitude of a quantity. `isComputed` tells whether its samples are rounded.
SharedPieces magnitude(const TracePieces& quantity, bool isComputed);

}  // namespace vorm::evaluation
