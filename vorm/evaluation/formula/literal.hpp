#pragma once

// The values that literals stand for. For the sources that build formulas.

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <cstddef>
#include <string_view>

namespace vorm::evaluation {

/// The literal of a node of kind Number or TypedLiteral as a value of a type, given by its index.
/// Throws FormulaError where it is none: an integer that the type does not have exactly, a fraction
/// of a type without fractions, a number past the range.
assessments::Expression literalOf(const SyntaxNode& node, std::size_t valueType);

/// The fixed-point number of a stored integer in decimal and a type's text, `u16f4` or
/// `u16f4*0.1+5`. Throws std::invalid_argument with the reason where there is none.
assessments::FixedPoint fixedPointOf(std::string_view storedInteger, std::string_view type);

}  // namespace vorm::evaluation
