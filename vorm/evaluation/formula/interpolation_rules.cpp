#include "type_rules.hpp"

#include <vorm/assessments/expression/operator_family.hpp>

namespace vorm::evaluation {

using assessments::INTERPOLATION_METHOD;
using assessments::VORM_OP;
using assessments::support::familyOf;
using assessments::support::OperatorFamily;

namespace {

constexpr auto held = INTERPOLATION_METHOD::ZOH;
constexpr auto linear = INTERPOLATION_METHOD::LINEAR;

Interpolation joined(Interpolation left, Interpolation right) {
    const bool isLine = left == linear || right == linear;
    return isLine ? linear : left == held ? right : left;
}

}  // namespace

Interpolation TypeRules::interpolationOf(const SyntaxNode& node) const {
    const Interpolation operand = types_[node.left].interpolation;
    if (node.kind == SyntaxKind::Cast) {
        if (node.target == assessments::valueTypeIndex<bool>) {
            return held;
        }
        if (!hasLines(node.target)) {
            requireHeld(node, node.left);
        }
        return operand;
    }
    switch (familyOf(node.op)) {
        case OperatorFamily::Numeric:
            if (node.op == VORM_OP::Slope) {
                requireLine(node, node.left);
                return held;
            }
            return operand;
        case OperatorFamily::Arithmetic:
            requireNoCurve(node);
            return joined(operand, types_[node.right].interpolation);
        case OperatorFamily::Extremum:
            return joined(operand, types_[node.right].interpolation);
        case OperatorFamily::Power:
            requireHeld(node, node.right);
            [[fallthrough]];
        case OperatorFamily::Function:
        case OperatorFamily::Change:
            requireHeld(node, node.left);
            return held;
        case OperatorFamily::Sum:
            requireHeld(node, node.left);
            return node.op == VORM_OP::Count ? held : linear;
        case OperatorFamily::NumberWindow:
        case OperatorFamily::Shift:
        case OperatorFamily::EpsilonShift:
            return operand;
        case OperatorFamily::None:
        case OperatorFamily::Cast:
        case OperatorFamily::Comparison:
        case OperatorFamily::Negation:
        case OperatorFamily::Connective:
        case OperatorFamily::Implication:
        case OperatorFamily::Edge:
        case OperatorFamily::Window:
        case OperatorFamily::Until:
            break;
    }
    return held;
}

void TypeRules::requireHeld(const SyntaxNode& node, std::size_t operand) const {
    if (types_[operand].interpolation == linear) {
        throw FormulaError("`" + textOf(operand) + "` is a line between samples, but '" +
                               operatorText(node) + "' needs what is held",
                           nodes_[operand].where,
                           "held(...) are the samples of a signal; all of them are held with "
                           "interpolation = \"held\"");
    }
}

void TypeRules::requireLine(const SyntaxNode& node, std::size_t operand) const {
    if (types_[operand].interpolation == held) {
        throw FormulaError("`" + textOf(operand) + "` is held between samples, but '" +
                               operatorText(node) + "' needs a line",
                           nodes_[operand].where,
                           "signals are lines where they have interpolation = \"linear\"");
    }
}

// A line times a line is none, nor is what is divided by one.
void TypeRules::requireNoCurve(const SyntaxNode& node) const {
    if (node.op == VORM_OP::Divide) {
        requireHeld(node, node.right);
    }
    if (node.op == VORM_OP::Multiply && types_[node.left].interpolation == linear) {
        requireHeld(node, node.right);
    }
}

}  // namespace vorm::evaluation
