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
        OperandType type = typeOf(node);
        if (operandsOf(node.kind) > 0) {
            type.interpolation = interpolationOf(node);
        }
        types_.push_back(std::move(type));
    }
    requireValue(nodes_.size() - 1);
    return std::move(types_);
}

OperandType TypeRules::typeOf(const SyntaxNode& node) {
    switch (node.kind) {
        case SyntaxKind::Number:
            return {.isOpen = true};
        case SyntaxKind::TypedLiteral:
            return {.type = {node.target, nullptr}};
        case SyntaxKind::Name:
        case SyntaxKind::QuotedName:
            return name(node);
        case SyntaxKind::Member:
            return {.isMember = true};
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
            return window(node);
        case SyntaxKind::Until:
            break;
    }
    requireTimes(node);
    return logic(node);
}

OperandType TypeRules::unary(const SyntaxNode& node) {
    const OperandType& operand = types_[node.left];
    switch (familyOf(node.op)) {
        case OperatorFamily::Negation:
        case OperatorFamily::Edge:
            return logic(node);
        case OperatorFamily::Change:
            requireValue(node.left);
            return {.type = SignalType::of<bool>()};
        case OperatorFamily::Function:
            return floating(node);
        default:
            requireNumber(node, node.left);
    }
    if (node.op == VORM_OP::Slope) {
        return {.type = SignalType::of<double>()};
    }
    return operand;
}

OperandType TypeRules::cast(const SyntaxNode& node) {
    requireValue(node.left);
    if (types_[node.left].type.isEnumerated()) {
        refuseOperand(node, node.left, "a number, a bool or a verdict",
                      "compare it with a member by ==");
    }
    const bool isVerdict = types_[node.left].type.is<assessments::Verdict>();
    const bool becomesVerdict = node.target == assessments::valueTypeIndex<assessments::Verdict>;
    if (becomesVerdict && !isVerdict) {
        requireBool(node, node.left);
    }
    if (isVerdict && !becomesVerdict) {
        refuseOperand(node, node.left, "a number or a bool", "compare it with a verdict by ==");
    }
    return {.type = {node.target, nullptr}};
}

OperandType TypeRules::binary(const SyntaxNode& node) {
    const OperatorFamily family = familyOf(node.op);
    const bool isLogic =
        family == OperatorFamily::Connective || family == OperatorFamily::Implication;
    return isLogic                                                         ? logic(node)
           : family == OperatorFamily::Comparison                          ? comparison(node)
           : family == OperatorFamily::Power || node.op == VORM_OP::Divide ? floating(node)
                                                                           : arithmetic(node);
}

OperandType TypeRules::arithmetic(const SyntaxNode& node) {
    requireNumber(node, node.left);
    requireNumber(node, node.right);
    return {.type = shared(node), .isOpen = types_[node.left].isOpen && types_[node.right].isOpen};
}

// Of literals alone it is double: an integer that they meet would divide without fractions.
OperandType TypeRules::floating(const SyntaxNode& node) {
    const bool isBinary = operandsOf(node.kind) == 2;
    requireFloating(node, node.left);
    bool isOpen = types_[node.left].isOpen;
    SignalType type = types_[node.left].type;
    if (isBinary) {
        requireFloating(node, node.right);
        type = shared(node);
        isOpen = isOpen && types_[node.right].isOpen;
    }
    return {.type = isOpen ? SignalType::of<double>() : type};
}

OperandType TypeRules::window(const SyntaxNode& node) {
    requireTimes(node);
    const OperandType& operand = types_[node.left];
    if (familyOf(node.op) == OperatorFamily::Window) {
        return logic(node);
    }
    if (node.op == VORM_OP::Duration || node.op == VORM_OP::Count) {
        requireBool(node, node.left);
        return {.type = node.op == VORM_OP::Count ? SignalType::of<std::int32_t>()
                                                  : SignalType::of<double>()};
    }
    requireNumber(node, node.left);
    return familyOf(node.op) == OperatorFamily::NumberWindow
               ? operand
               : OperandType{.type = SignalType::of<double>()};
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
    return {.type = SignalType::of<bool>()};
}

OperandType TypeRules::crossing(const SyntaxNode& node) {
    requireTimes(node);
    requireNumber(node, node.left);
    requireNumber(node, node.right);
    shared(node);
    return {.type = SignalType::of<bool>()};
}

OperandType TypeRules::logic(const SyntaxNode& node) {
    requireBool(node, node.left);
    if (operandsOf(node.kind) == 2) {
        requireBool(node, node.right);
    }
    return {.type = SignalType::of<bool>()};
}

OperandType TypeRules::name(const SyntaxNode& node) {
    if (const std::optional<OperandType> known = names_.typeOf(node.text)) {
        return *known;
    }
    if (node.kind == SyntaxKind::Name) {
        refuseName(node);
    }
    return {.isMember = true};
}

}  // namespace vorm::evaluation
