#include "type_rules.hpp"

#include <vorm/assessments/expression/operator_family.hpp>

#include <utility>

namespace vorm::evaluation {

using assessments::VORM_OP;
using assessments::support::familyOf;
using assessments::support::OperatorFamily;

TypeRules::TypeRules(const ParsedFormula& formula, const NameTypes& names)
    : formula_(formula), nodes_(formula.nodes()), names_(names) {
    types_.reserve(nodes_.size());
}

std::vector<OperandType> TypeRules::types() && {
    for (const SyntaxNode& node : nodes_) {
        types_.push_back(typeOf(node));
    }
    requireValue(nodes_.size() - 1);
    return std::move(types_);
}

OperandType TypeRules::typeOf(const SyntaxNode& node) {
    switch (node.kind) {
        case SyntaxKind::Number:
            return {.isOpen = true, .isConstant = true};
        case SyntaxKind::TypedLiteral:
            return {.type = {node.target, nullptr}, .isConstant = true};
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
            return name(node);
        case SyntaxKind::Member:
            return {.isConstant = true, .isMember = true};
        case SyntaxKind::Cast:
            return cast(node);
        case SyntaxKind::Unary:
            return unary(node);
        case SyntaxKind::Shifted:
            requireTimes(node);
            requireValue(node.left);
            return types_[node.left];
        case SyntaxKind::Binary:
            return binary(node);
        case SyntaxKind::Crossing:
            return crossing(node);
        case SyntaxKind::Window:
        case SyntaxKind::Edge:
        case SyntaxKind::Until:
        case SyntaxKind::Implication:
            break;
    }
    requireTimes(node);
    return logic(node);
}

OperandType TypeRules::unary(const SyntaxNode& node) {
    if (node.op == VORM_OP::Not) {
        return logic(node);
    }
    requireNumber(node, node.left);
    const OperandType& operand = types_[node.left];
    if (node.op == VORM_OP::Slope) {
        return {.type = SignalType::of<double>(), .isConstant = operand.isConstant};
    }
    return operand;
}

OperandType TypeRules::cast(const SyntaxNode& node) {
    requireValue(node.left);
    if (types_[node.left].type.isEnumerated()) {
        refuseOperand(node, node.left, "a number, a bool or a verdict",
                      "compare it with a member by ==");
    }
    return {.type = {node.target, nullptr}, .isConstant = types_[node.left].isConstant};
}

OperandType TypeRules::binary(const SyntaxNode& node) {
    const OperatorFamily family = familyOf(node.op);
    return family == OperatorFamily::Connective   ? logic(node)
           : family == OperatorFamily::Comparison ? comparison(node)
                                                  : arithmetic(node);
}

OperandType TypeRules::arithmetic(const SyntaxNode& node) {
    requireNumber(node, node.left);
    requireNumber(node, node.right);
    const bool isLeftConstant = types_[node.left].isConstant;
    const bool isRightConstant = types_[node.right].isConstant;
    if (node.op == VORM_OP::Multiply && !isLeftConstant && !isRightConstant) {
        throw FormulaError(
            "neither `" + textOf(node.left) + "` nor `" + textOf(node.right) + "` is a constant",
            node.where, "signals are multiplied by literals only");
    }
    return {.type = shared(node),
            .isOpen = types_[node.left].isOpen && types_[node.right].isOpen,
            .isConstant = isLeftConstant && isRightConstant};
}

OperandType TypeRules::comparison(const SyntaxNode& node) {
    const bool isEquality = node.op == VORM_OP::Eq || node.op == VORM_OP::Neq;
    if (isEquality) {
        resolveMember(node.left, node.right);
        resolveMember(node.right, node.left);
    } else {
        for (const std::size_t operand : {node.left, node.right}) {
            requireValue(operand);
            if (types_[operand].type.isEnumerated()) {
                refuseOperand(node, operand, "an order", "compare it by == or ~=");
            }
        }
    }
    shared(node);
    return {.type = SignalType::of<bool>(),
            .isConstant = types_[node.left].isConstant && types_[node.right].isConstant};
}

OperandType TypeRules::crossing(const SyntaxNode& node) {
    requireTimes(node);
    requireNumber(node, node.left);
    requireNumber(node, node.right);
    shared(node);
    return {.type = SignalType::of<bool>(),
            .isConstant = types_[node.left].isConstant && types_[node.right].isConstant};
}

OperandType TypeRules::logic(const SyntaxNode& node) {
    requireBool(node, node.left);
    bool isConstant = types_[node.left].isConstant;
    if (operandsOf(node.kind) == 2) {
        requireBool(node, node.right);
        isConstant = isConstant && types_[node.right].isConstant;
    }
    return {.type = SignalType::of<bool>(), .isConstant = isConstant};
}

OperandType TypeRules::name(const SyntaxNode& node) {
    if (const std::optional<OperandType> known = names_.typeOf(node.text)) {
        return *known;
    }
    if (node.kind == SyntaxKind::Name) {
        refuseName(node);
    }
    return {.isConstant = true, .isMember = true};
}

}  // namespace vorm::evaluation
