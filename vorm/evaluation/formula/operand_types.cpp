#include "operand_types.hpp"

#include "type_rules.hpp"

namespace vorm::evaluation {

std::vector<OperandType> typesOf(const ParsedFormula& formula, const NameTypes& names) {
    return TypeRules(formula, names).types();
}

void settle(const SyntaxNodes& nodes, const SignalType& wanted, std::vector<OperandType>& types) {
    if (types.back().isOpen) {
        types.back().type = wanted;
    }
    for (std::size_t index = nodes.size(); index-- > 0;) {
        if (!types[index].isOpen) {
            continue;
        }
        if (!types[index].type.isKnown()) {
            types[index].type = SignalType::of<double>();
        }
        const int operands = operandsOf(nodes[index].kind);
        if (operands > 0) {
            types[nodes[index].left] = types[index];
        }
        if (operands > 1) {
            types[nodes[index].right] = types[index];
        }
    }
}

}  // namespace vorm::evaluation
