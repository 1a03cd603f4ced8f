#pragma once

// For the evaluator: what a node does for the robustness of a formula, and so which meaning of its
// operands it needs.

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/assessments/expression/vorm_op.hpp>

namespace vorm::evaluation {

enum class NodeRole {
    Term,         ///< has one meaning only: leaves, arithmetic, casts, changes and sums
    Comparison,   ///< makes truth of terms
    Logic,        ///< makes truth of truth: also windows and shifts
    Negation,     ///< does so, and the best there is becomes the worst
    Implication,  ///< does so, of a left operand that counts as its negation
    Instant,      ///< does so, from one representable time to the next
    Edge,         ///< does so, of what is now and the negation of what was just before
};

NodeRole roleOf(assessments::VORM_OP op);

/// The role of the node below the aliases at the root.
NodeRole roleOf(const assessments::Expression& formula);

}  // namespace vorm::evaluation
