#include "expression_equal.hpp"

#include <vorm/assessments/expression/label_text.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/value_traits.hpp>

#include <algorithm>
#include <utility>

namespace vorm::assessments {
namespace {

struct SameValue : boost::static_visitor<bool> {
    template <class T>
    bool operator()(const T& left, const T& right) const {
        return support::sameValue(left, right);
    }
    // The type of a fixed-point literal decides how a formula computes with it.
    bool operator()(const ValueType<FixedPoint>& left, const ValueType<FixedPoint>& right) const {
        return left == right && left.get().descriptor() == right.get().descriptor();
    }
    template <class Left, class Right>
    bool operator()(const Left&, const Right&) const {
        return false;
    }
};

// Compares two nodes by what they hold themselves, and leaves pairs of children to `sameChild`.
template <class Policy, class SameChild>
class NodeComparison : public boost::static_visitor<bool> {
public:
    explicit NodeComparison(SameChild sameChild) : sameChild_(std::move(sameChild)) {}

    bool operator()(const nilClass&, const nilClass&) const { return true; }
    bool operator()(const constantValue& left, const constantValue& right) const {
        return left.tag == right.tag && boost::apply_visitor(SameValue(), left.value, right.value);
    }
    bool operator()(const variable& left, const variable& right) const {
        return left.id == right.id;
    }
    bool operator()(const unary_op& left, const unary_op& right) const {
        return left.op == right.op && sameChild_(left.child, right.child);
    }
    bool operator()(const binary_op& left, const binary_op& right) const {
        return left.op == right.op && sameChild_(left.lhs, right.lhs) &&
               sameChild_(left.rhs, right.rhs);
    }
    bool operator()(const timed_unary_op& left, const timed_unary_op& right) const {
        return support::sameValue(left.offset, right.offset) && sameOperator<unary_op>(left, right);
    }
    bool operator()(const timedwindow_unary_op& left, const timedwindow_unary_op& right) const {
        return sameWindow(left, right) && sameOperator<unary_op>(left, right);
    }
    bool operator()(const timedwindow_binary_op& left, const timedwindow_binary_op& right) const {
        return sameWindow(left, right) && sameOperator<binary_op>(left, right);
    }
    bool operator()(const cast_op& left, const cast_op& right) const {
        return left.target.which() == right.target.which() && sameOperator<unary_op>(left, right);
    }
    bool operator()(const alias& left, const alias& right) const {
        return sameChild_(left.body, right.body) &&
               (std::is_same_v<Policy, ModuloAliases> || sameArguments(left, right));
    }

    template <class Left, class Right>
    bool operator()(const Left&, const Right&) const {
        return false;
    }

private:
    template <class Base>
    bool sameOperator(const Base& left, const Base& right) const {
        return (*this)(left, right);
    }

    template <class Window>
    static bool sameWindow(const Window& left, const Window& right) {
        return support::sameValue(left.a, right.a) && support::sameValue(left.b, right.b);
    }

    bool sameArguments(const alias& left, const alias& right) const {
        using AliasArgVisitor = typename ExpressionEqual<Policy>::AliasArgVisitor;
        const auto same = [this](const AliasArgument& a, const AliasArgument& b) {
            const auto* leftTree = boost::get<Expression>(&a);
            const auto* rightTree = boost::get<Expression>(&b);
            if (leftTree != nullptr && rightTree != nullptr) {
                return sameChild_(*leftTree, *rightTree);
            }
            return boost::apply_visitor(AliasArgVisitor(), a, b);
        };
        return std::equal(left.arguments.begin(), left.arguments.end(), right.arguments.begin(),
                          right.arguments.end(), same);
    }

    SameChild sameChild_;
};

template <class Policy>
const Expression& seenUnder(const Expression& tree) {
    if constexpr (std::is_same_v<Policy, ModuloAliases>) {
        return support::withoutAliases(tree);
    } else {
        return tree;
    }
}

}  // namespace

const Expression& support::withoutAliases(const Expression& tree) {
    const Expression* seen = &tree;
    while (const auto* node = boost::get<alias>(seen)) {
        seen = &node->body;
    }
    return *seen;
}

template <class Policy>
bool ExpressionEqual<Policy>::operator()(const Expression& left, const Expression& right) const {
    support::WalkStack<std::pair<const Expression*, const Expression*>> pending{{&left, &right}};
    const auto compareLater = [&pending](const Expression& a, const Expression& b) {
        pending.emplace_back(&a, &b);
        return true;
    };
    const NodeComparison<Policy, decltype(compareLater)> compare(compareLater);
    while (!pending.empty()) {
        const auto [a, b] = pending.back();
        pending.pop_back();
        if (!boost::apply_visitor(compare, seenUnder<Policy>(*a), seenUnder<Policy>(*b))) {
            return false;
        }
    }
    return true;
}

template <class Policy>
template <class Node>
bool ExpressionEqual<Policy>::Visitor::operator()(const Node& left, const Node& right) const {
    return NodeComparison<Policy, ExpressionEqual>(ExpressionEqual())(left, right);
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(bool left, bool right) const {
    return left == right;
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(int left, int right) const {
    return left == right;
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(double left, double right) const {
    return support::sameValue(left, right);
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(const char* left,
                                                          const char* right) const {
    return detail::charactersOf(left) == detail::charactersOf(right);
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(const std::string& left,
                                                          const std::string& right) const {
    return left == right;
}

template <class Policy>
bool ExpressionEqual<Policy>::AliasArgVisitor::operator()(const Expression& left,
                                                          const Expression& right) const {
    return ExpressionEqual()(left, right);
}

#define VORM_NODE_KIND(Kind)                                                                       \
    template bool ExpressionEqual<Inclusive>::Visitor::operator()(const Kind&, const Kind&) const; \
    template bool ExpressionEqual<ModuloAliases>::Visitor::operator()(const Kind&, const Kind&)    \
        const;
#include <vorm/assessments/expression/node_kinds.def>

template class ExpressionEqual<Inclusive>;
template class ExpressionEqual<ModuloAliases>;

}  // namespace vorm::assessments
