#pragma once

// Walks over a formula without recursion, for every analysis of formulas. The sources that hold an
// analysis include it.

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/policies.hpp>
#include <vorm/assessments/value_families.hpp>

#include <boost/container/small_vector.hpp>
#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <type_traits>

namespace vorm::assessments::support {

/// Working storage of a walk; formulas of usual size need no memory from the heap.
template <class T>
using WalkStack = boost::container::small_vector<T, 32>;

template <class Policy, class Visit>
struct ChildVisitor : boost::static_visitor<> {
    Visit& visit;

    explicit ChildVisitor(Visit& function) : visit(function) {}

    template <class Node>
    void operator()([[maybe_unused]] Node& node) const {
        if constexpr (std::is_base_of_v<unary_op, Node>) {
            visit(node.child);
        } else if constexpr (std::is_base_of_v<binary_op, Node>) {
            visit(node.lhs);
            visit(node.rhs);
        } else if constexpr (std::is_base_of_v<alias, Node>) {
            visit(node.body);
            if constexpr (std::is_same_v<Policy, Inclusive>) {
                for (auto& argument : node.arguments) {
                    if (auto* tree = boost::get<Expression>(&argument)) {
                        visit(*tree);
                    }
                }
            }
        } else {
            static_assert(isOneOf<std::remove_const_t<Node>, nilClass, constantValue, variable>,
                          "A kind of node whose children are forgotten.");
        }
    }
};

/// Calls `visit` with each child of the root in evaluation order. The children of an alias are its
/// body and, under Inclusive, the formulas among its arguments.
template <class Policy, class Tree, class Visit>
void forEachChild(Tree& root, Visit visit) {
    boost::apply_visitor(ChildVisitor<Policy, Visit>(visit), root);
}

/// Whether `holds` is true of some node: parents come before children, left before right; of an
/// alias the body is looked at. Nothing is looked at after the first node found.
template <class Predicate>
bool anyNode(const Expression& root, Predicate holds) {
    WalkStack<const Expression*> pending{&root};
    while (!pending.empty()) {
        const Expression& tree = *pending.back();
        pending.pop_back();
        if (holds(tree)) {
            return true;
        }
        const auto children = static_cast<std::ptrdiff_t>(pending.size());
        forEachChild<ModuloAliases>(tree,
                                    [&](const Expression& child) { pending.push_back(&child); });
        std::reverse(pending.begin() + children, pending.end());
    }
    return false;
}

/// Calls `visit` with every node, in the order of anyNode.
template <class Visit>
void forEachNode(const Expression& root, Visit visit) {
    anyNode(root, [&visit](const Expression& tree) {
        visit(tree);
        return false;
    });
}

}  // namespace vorm::assessments::support
