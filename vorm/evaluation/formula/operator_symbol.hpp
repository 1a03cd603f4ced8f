#pragma once

// How operators are written. For formulaText.

#include <vorm/assessments/expression/vorm_op.hpp>

#include <string_view>

namespace vorm::evaluation {

/// An operator between two operands, with the blanks around it. Throws std::invalid_argument where
/// it is none.
std::string_view symbolOf(assessments::VORM_OP op);

/// An operator before the bracket of an operand. Throws std::invalid_argument where it is none.
std::string_view prefixOf(assessments::VORM_OP op);

}  // namespace vorm::evaluation
