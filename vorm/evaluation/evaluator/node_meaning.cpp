#include "node_meaning.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>

namespace vorm::evaluation {

using namespace assessments;

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
    switch (op) {
        case VORM_OP::Eq:
        case VORM_OP::Neq:
        case VORM_OP::Lt:
        case VORM_OP::Leq:
        case VORM_OP::Gt:
        case VORM_OP::Geq:
            return NodeRole::Comparison;
        case VORM_OP::And:
        case VORM_OP::Or:
        case VORM_OP::Eventually:
        case VORM_OP::Globally:
        case VORM_OP::Until:
        case VORM_OP::Shift:
            return NodeRole::Logic;
        case VORM_OP::Not:
            return NodeRole::Negation;
        case VORM_OP::EpsilonShift:
            return NodeRole::Instant;
        case VORM_OP::None:
        case VORM_OP::Cast:
        case VORM_OP::Plus:
        case VORM_OP::Minus:
        case VORM_OP::UnaryMinus:
        case VORM_OP::Multiply:
        case VORM_OP::Abs:
        case VORM_OP::Slope:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
            break;
    }
    return NodeRole::Term;
}

}  // namespace vorm::evaluation
