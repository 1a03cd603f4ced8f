#include "unary_op.hpp"

#include <vorm/assessments/expression/tree_ownership.hpp>

namespace vorm::assessments {

unary_op::unary_op(VORM_OP operation, const Expression& operand, std::string symbol)
    : unary_op(operation, Expression(operand), std::move(symbol)) {}

unary_op::unary_op(VORM_OP operation, Expression&& operand, std::string symbol)
    : InnerNode(detail::levelsOf(operand)),
      op(operation),
      label(std::move(symbol)),
      child(detail::taken(operand)) {}

unary_op::unary_op(const unary_op& other)
    : InnerNode(other), op(other.op), label(other.label), child(detail::copyOf(other.child)) {}

unary_op::unary_op(unary_op&& other)
    : InnerNode(other),
      op(other.op),
      label(std::move(other.label)),
      child(detail::taken(other.child)) {}

unary_op::unary_op(const unary_op& other, detail::WithoutChildren)
    : InnerNode(other), op(other.op), label(other.label) {}

unary_op& unary_op::operator=(const unary_op& other) {
    return *this = unary_op(other);
}

unary_op::~unary_op() {
    detail::dismantle(child);
}

}  // namespace vorm::assessments
