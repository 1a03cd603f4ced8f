#include "spellings.hpp"
#include "type_rules.hpp"

#include <vorm/assessments/expression/operator_family.hpp>

namespace vorm::evaluation {

SignalType TypeRules::shared(const SyntaxNode& node) {
    OperandType& left = types_[node.left];
    OperandType& right = types_[node.right];
    if (left.isOpen != right.isOpen) {
        OperandType& open = left.isOpen ? left : right;
        const OperandType& closed = left.isOpen ? right : left;
        if (isNoNumber(closed.type)) {
            refuseClash(node);
        }
        open.type = closed.type;
        // The operator is the next node to be typed.
        open.settledBy = types_.size();
        return closed.type;
    }
    if (left.type.isKnown() && right.type.isKnown() && !(left.type == right.type)) {
        refuseClash(node);
    }
    return left.type.isKnown() ? left.type : right.type;
}

void TypeRules::requireValue(std::size_t operand) const {
    if (types_[operand].isMember && !types_[operand].type.isEnumerated()) {
        refuseMember(operand, {});
    }
}

void TypeRules::requireNumber(const SyntaxNode& node, std::size_t operand) const {
    requireValue(operand);
    if (isNoNumber(types_[operand].type)) {
        refuseOperand(node, operand, "a number", "");
    }
}

void TypeRules::requireFloating(const SyntaxNode& node, std::size_t operand) const {
    requireNumber(node, operand);
    const OperandType& type = types_[operand];
    const bool isFloating =
        type.type.is<double>() || type.type.is<float>() || type.type.is<assessments::HalfFloat>();
    if (!type.isOpen && type.type.isKnown() && !isFloating) {
        refuseOperand(node, operand, "a floating-point number",
                      "write double(" + textOf(operand) + ")");
    }
}

void TypeRules::requireBool(const SyntaxNode& node, std::size_t operand) const {
    requireValue(operand);
    const OperandType& type = types_[operand];
    if (type.isOpen || (type.type.isKnown() && !type.type.is<bool>())) {
        refuseOperand(node, operand, "bool",
                      "compare it, for example `" + textOf(operand) +
                          (type.type.isEnumerated() ? " == '...'`" : " > 0`"));
    }
}

void TypeRules::requireTimes(const SyntaxNode& node) const {
    const bool isWindow = node.kind == SyntaxKind::Window || node.kind == SyntaxKind::Until;
    const bool isOfTruth = mayHaveNoEnd(node.op);
    const bool hasNoEnd = isOfTruth && node.b.isBeyondAll();
    if (!node.a.time || (isWindow && !node.b.time && !hasNoEnd)) {
        throw FormulaError("a time is finite", node.sign,
                           !isWindow   ? ""
                           : isOfTruth ? "only the end of an interval may be inf"
                                       : "end the interval with the longest time that matters");
    }
    if (isWindow && !hasNoEnd && node.b.time < node.a.time) {
        throw FormulaError("the interval ends before it begins", node.sign, "swap its ends");
    }
    if (node.op == assessments::VORM_OP::Mean && node.a.time == node.b.time) {
        throw FormulaError("a mean is over a time that has a length", node.sign,
                           "end the interval later than it begins");
    }
    if (!node.a.isNegative()) {
        return;
    }
    if (assessments::support::looksBack(node.op)) {
        throw FormulaError("'" + operatorText(node) + "' counts its times backwards", node.sign,
                           "write [0, 5 s] for the last 5 s");
    }
    if (node.kind == SyntaxKind::Until) {
        throw FormulaError("an until does not look back", node.sign,
                           "begin the interval at 0, or use since");
    }
}

bool isNoNumber(const SignalType& type) {
    return type.isEnumerated() || type.is<bool>() || type.is<assessments::Verdict>();
}

}  // namespace vorm::evaluation
