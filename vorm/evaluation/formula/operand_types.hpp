#pragma once

// The types of all parts of a formula, from the names upwards. For buildFormula.

#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// What a quantity is between its samples; nothing where no file and no recording tells.
using Interpolation = std::optional<assessments::INTERPOLATION_METHOD>;

struct OperandType {
    SignalType type{};
    /// Made of numbers only, so that the type is that of the operand that it meets.
    bool isOpen = false;
    /// A member of an enumeration: of `type`, or of one that nothing is known of yet.
    bool isMember = false;
    Interpolation interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    /// Where an open operand took its type, as the index of the operator.
    std::optional<std::size_t> settledBy{};
};

struct NameTypes {
    /// The type of what a name stands for, or nothing.
    std::function<std::optional<OperandType>(const std::string&)> typeOf;
    /// What to write instead of a name that stands for nothing.
    std::function<std::string(const std::string&)> suggestion;
};

/// The type of each node. Open ones that met no other operand are still without one. Throws
/// FormulaError where operands do not fit together.
std::vector<OperandType> typesOf(const ParsedFormula& formula, const NameTypes& names);

/// Gives open nodes that have no type yet that of the operators they are in: `wanted` for the
/// formula as a whole.
void settle(const SyntaxNodes& nodes, const SignalType& wanted, std::vector<OperandType>& types);

/// The text of a part of a formula for messages, shortened.
std::string excerptOf(const ParsedFormula& formula, const TextSpan& part);

}  // namespace vorm::evaluation
