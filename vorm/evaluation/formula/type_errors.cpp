#include "spellings.hpp"
#include "type_rules.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

namespace vorm::evaluation {

void TypeRules::refuseName(const SyntaxNode& node) const {
    const std::string name = recordedName(node.text);
    throw FormulaError("unknown signal '" + name + "'", node.where,
                       formula_.hasParameter(node.text)
                           ? "write $" + node.text + " for the value of the parameter"
                           : names_.suggestion(name));
}

void TypeRules::refuseClash(const SyntaxNode& node) const {
    const bool areNumbers =
        !isNoNumber(types_[node.left].type) && !isNoNumber(types_[node.right].type);
    const std::string conversion = node.kind == SyntaxKind::Crossing
                                       ? "convert one of them, for example " + asDouble(node.left)
                                       : "write " + asDouble(node.left) + " " + operatorText(node) +
                                             " " + asDouble(node.right);
    throw FormulaError(described(node.left) + ", but " + described(node.right), node.where,
                       areNumbers ? conversion : "");
}

void TypeRules::refuseOperand(const SyntaxNode& node, std::size_t operand,
                              const std::string& wanted, std::string advice) const {
    throw FormulaError(described(operand) + ", but '" + operatorText(node) + "' needs " + wanted,
                       nodes_[operand].where, std::move(advice));
}

std::string TypeRules::operatorText(const SyntaxNode& node) const {
    if (node.kind == SyntaxKind::Window || node.kind == SyntaxKind::Until) {
        return std::string(usualWord(node.op));
    }
    if (node.kind == SyntaxKind::Cast) {
        return valueTypeNames()[node.target];
    }
    if (node.kind == SyntaxKind::Crossing) {
        return node.rising ? "Rise" : "Fall";
    }
    return formula_.text().substr(node.sign.begin, node.sign.length);
}

std::string TypeRules::described(std::size_t operand) const {
    const OperandType& type = types_[operand];
    return "`" + textOf(operand) + "` is " + (type.isOpen ? "a number" : typeText(type.type));
}

std::string TypeRules::textOf(std::size_t operand) const {
    return excerptOf(formula_, nodes_[operand].where);
}

std::string TypeRules::asDouble(std::size_t operand) const {
    const OperandType& type = types_[operand];
    const bool isDouble = type.isOpen || type.type.is<double>();
    return isDouble ? textOf(operand) : "double(" + textOf(operand) + ")";
}

std::string excerptOf(const ParsedFormula& formula, const TextSpan& part) {
    constexpr std::size_t most = 60;
    if (part.length <= most) {
        return formula.text().substr(part.begin, part.length);
    }
    std::size_t length = most;
    // The bytes 10xxxxxx continue a character.
    while (length > 0 && (formula.text()[part.begin + length] & 0xc0) == 0x80) {
        --length;
    }
    return formula.text().substr(part.begin, length) + "...";
}

}  // namespace vorm::evaluation
