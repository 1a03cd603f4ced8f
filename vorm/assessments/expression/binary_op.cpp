#include "binary_op.hpp"

#include <vorm/assessments/expression/tree_ownership.hpp>

#include <algorithm>

namespace vorm::assessments {

binary_op::binary_op(VORM_OP operation, const Expression& left, const Expression& right,
                     std::string symbol)
    : binary_op(operation, Expression(left), Expression(right), std::move(symbol)) {}

binary_op::binary_op(VORM_OP operation, Expression&& left, Expression&& right, std::string symbol)
    : InnerNode(std::max(detail::levelsOf(left), detail::levelsOf(right))),
      op(operation),
      label(std::move(symbol)),
      lhs(detail::taken(left)),
      rhs(detail::taken(right)) {}

binary_op::binary_op(const binary_op& other)
    : InnerNode(other),
      op(other.op),
      label(other.label),
      lhs(detail::copyOf(other.lhs)),
      rhs(detail::copyOf(other.rhs)) {}

binary_op::binary_op(binary_op&& other)
    : InnerNode(other),
      op(other.op),
      label(std::move(other.label)),
      lhs(detail::taken(other.lhs)),
      rhs(detail::taken(other.rhs)) {}

binary_op::binary_op(const binary_op& other, detail::WithoutChildren)
    : InnerNode(other), op(other.op), label(other.label) {}

binary_op& binary_op::operator=(const binary_op& other) {
    return *this = binary_op(other);
}

binary_op::~binary_op() {
    detail::dismantle(lhs);
    detail::dismantle(rhs);
}

}  // namespace vorm::assessments
