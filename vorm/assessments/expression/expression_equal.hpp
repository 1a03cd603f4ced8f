#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/policies.hpp>

#include <boost/variant/static_visitor.hpp>

#include <string>
#include <type_traits>

namespace vorm::assessments {

namespace support {
/// The first tree under the aliases at the root.
VORM_ASSESSMENTS_EXPORT const Expression& withoutAliases(const Expression& tree);
}  // namespace support

/// Whether two formulas are the same: node for node of one kind with the same operator, offset,
/// window, cast target, and the same children in order.
///
/// A signal is its id and a literal its tag, type and value; names and labels do not count. Numbers
/// are compared exactly, except that two NaNs are the same. Policy is Inclusive, under which an
/// alias is the same as an alias of the same body and the same arguments, kind for kind and text
/// for text, or ModuloAliases. Linear in the smaller formula; most differing ones end at the root.
template <class Policy>
class VORM_ASSESSMENTS_EXPORT ExpressionEqual {
public:
    class Visitor;
    class AliasArgVisitor;

    bool operator()(const Expression& left, const Expression& right) const;
};

/// Compares two nodes; for boost::apply_visitor.
template <class Policy>
class VORM_ASSESSMENTS_EXPORT ExpressionEqual<Policy>::Visitor
    : public boost::static_visitor<bool> {
public:
    /// Two nodes of one kind.
    template <class Node>
    bool operator()(const Node& left, const Node& right) const;

    /// Two nodes of different kinds.
    template <class Left, class Right>
    bool operator()([[maybe_unused]] const Left& left, [[maybe_unused]] const Right& right) const {
        if constexpr (isTransparent<Left>) {
            return boost::apply_visitor([&](const auto& body) { return (*this)(body, right); },
                                        support::withoutAliases(left.body));
        } else if constexpr (isTransparent<Right>) {
            return (*this)(right, left);
        } else {
            return false;
        }
    }

private:
    template <class Node>
    static constexpr bool isTransparent =
        std::is_same_v<Policy, ModuloAliases>&& std::is_same_v<Node, alias>;
};

/// Compares two alias arguments, formulas under the policy; for boost::apply_visitor.
template <class Policy>
class VORM_ASSESSMENTS_EXPORT ExpressionEqual<Policy>::AliasArgVisitor
    : public boost::static_visitor<bool> {
public:
    bool operator()(bool left, bool right) const;
    bool operator()(int left, int right) const;
    bool operator()(double left, double right) const;
    bool operator()(const char* left, const char* right) const;
    bool operator()(const std::string& left, const std::string& right) const;
    bool operator()(const Expression& left, const Expression& right) const;

    /// Two arguments of different kinds.
    template <class Left, class Right>
    bool operator()(const Left&, const Right&) const {
        return false;
    }
};

extern template class ExpressionEqual<Inclusive>;
extern template class ExpressionEqual<ModuloAliases>;

}  // namespace vorm::assessments
