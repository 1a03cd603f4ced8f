#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/policies.hpp>

#include <boost/variant/static_visitor.hpp>

#include <cstddef>

namespace vorm::assessments {

/// A hash that formulas have in common when ExpressionEqual under the same policy holds of them.
///
/// A node's hash starts from the index of its kind; what ExpressionEqual compares is folded in, in
/// the order of the fields, with a child's hash in the child's place. Nothing is cached: every
/// call is linear in the formula.
template <class Policy>
class VORM_ASSESSMENTS_EXPORT ExpressionHash {
public:
    class Visitor;

    std::size_t operator()(const Expression& expression) const;
};

/// The hash of a node; for boost::apply_visitor.
template <class Policy>
class VORM_ASSESSMENTS_EXPORT ExpressionHash<Policy>::Visitor
    : public boost::static_visitor<std::size_t> {
public:
    template <class Node>
    std::size_t operator()(const Node& node) const;
};

extern template class ExpressionHash<Inclusive>;
extern template class ExpressionHash<ModuloAliases>;

}  // namespace vorm::assessments
