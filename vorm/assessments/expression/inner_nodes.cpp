#include "inner_nodes.hpp"

#include <vorm/assessments/expression/tree_ownership.hpp>

#include <algorithm>

namespace vorm::assessments {
namespace {

std::size_t levelsOf(const Expression& body, const std::vector<AliasArgument>& arguments) {
    std::size_t levels = detail::levelsOf(body);
    for (const AliasArgument& argument : arguments) {
        if (const auto* tree = boost::get<Expression>(&argument)) {
            levels = std::max(levels, detail::levelsOf(*tree));
        }
    }
    return levels;
}

}  // namespace

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

alias::alias(Expression&& value, std::vector<AliasArgument>&& list, Listed)
    : InnerNode(levelsOf(value, list)), body(detail::taken(value)), arguments(std::move(list)) {}

// Arguments are not copied as variants, since that would recurse from argument to argument.
alias::alias(const alias& other) : alias(other, detail::WithoutChildren()) {
    body = detail::copyOf(other.body);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (const auto* tree = boost::get<Expression>(&other.arguments[i])) {
            arguments[i] = detail::copyOf(*tree);
        }
    }
}

alias::alias(alias&& other)
    : InnerNode(other), body(detail::taken(other.body)), arguments(std::move(other.arguments)) {}

alias::alias(const alias& other, detail::WithoutChildren) : InnerNode(other) {
    arguments.reserve(other.arguments.size());
    for (const AliasArgument& argument : other.arguments) {
        const bool isTree = boost::get<Expression>(&argument) != nullptr;
        arguments.push_back(isTree ? AliasArgument(Expression()) : argument);
    }
}

alias& alias::operator=(const alias& other) {
    return *this = alias(other);
}

alias::~alias() {
    detail::dismantle(body);
    for (AliasArgument& argument : arguments) {
        if (auto* tree = boost::get<Expression>(&argument)) {
            detail::dismantle(*tree);
        }
    }
}

}  // namespace vorm::assessments
