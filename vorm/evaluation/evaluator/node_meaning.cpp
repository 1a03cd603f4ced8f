#include "node_meaning.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>

namespace vorm::evaluation {

using namespace assessments;
using support::familyOf;
using support::OperatorFamily;

NodeRole roleOf(const Expression& formula) {
    return boost::apply_visitor(
        [](const auto& node) {
            if constexpr (requires { node.op; }) {
                return roleOf(node.op);
            } else {
                return NodeRole::Term;
            }
        },
        support::withoutAliases(formula));
}

NodeRole roleOf(VORM_OP op) {
    switch (familyOf(op)) {
        case OperatorFamily::Comparison:
            return NodeRole::Comparison;
        case OperatorFamily::Connective:
        case OperatorFamily::Window:
        case OperatorFamily::Until:
        case OperatorFamily::Shift:
            return NodeRole::Logic;
        case OperatorFamily::Negation:
            return NodeRole::Negation;
        case OperatorFamily::Implication:
            return NodeRole::Implication;
        case OperatorFamily::EpsilonShift:
            return NodeRole::Instant;
        case OperatorFamily::Edge:
            return NodeRole::Edge;
        case OperatorFamily::None:
        case OperatorFamily::Cast:
        case OperatorFamily::Numeric:
        case OperatorFamily::Function:
        case OperatorFamily::Change:
        case OperatorFamily::Arithmetic:
        case OperatorFamily::Power:
        case OperatorFamily::Extremum:
        case OperatorFamily::NumberWindow:
        case OperatorFamily::Sum:
            break;
    }
    return NodeRole::Term;
}

}  // namespace vorm::evaluation
