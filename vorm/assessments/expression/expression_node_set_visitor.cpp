#include "expression_node_set_visitor.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>

#include <utility>

namespace vorm::assessments {
namespace {

// The element that stands for a node; nodes without a case of their own count as their base.
struct Element : boost::static_visitor<Expression> {
    template <class Leaf>
    Expression operator()(const Leaf& node) const {
        return node;
    }
    Expression operator()(const timed_unary_op& node) const { return base<unary_op>(node); }
    Expression operator()(const timedwindow_unary_op& node) const { return base<unary_op>(node); }
    Expression operator()(const timedwindow_binary_op& node) const { return base<binary_op>(node); }

    template <class Base>
    static Expression base(const Base& node) {
        return node;
    }
};

}  // namespace

ExpressionNodeSetVisitor::NodeSet ExpressionNodeSetVisitor::getNodes(const Expression& expression) {
    addAll(expression);
    return std::exchange(nodes_, {});
}

void ExpressionNodeSetVisitor::operator()(const constantValue& node) {
    nodes_.insert(node);
}

void ExpressionNodeSetVisitor::operator()(const variable& node) {
    nodes_.insert(node);
}

void ExpressionNodeSetVisitor::operator()(const unary_op& node) {
    nodes_.insert(node);
    addAll(node.child);
}

void ExpressionNodeSetVisitor::operator()(const binary_op& node) {
    nodes_.insert(node);
    addAll(node.lhs);
    addAll(node.rhs);
}

void ExpressionNodeSetVisitor::operator()(const cast_op& node) {
    nodes_.insert(node);
    addAll(node.child);
}

void ExpressionNodeSetVisitor::operator()(const alias& node) {
    nodes_.insert(node);
    addAll(node.body);
}

void ExpressionNodeSetVisitor::addAll(const Expression& tree) {
    support::forEachNode(tree, [this](const Expression& node) {
        if (node.which() != 0) {
            nodes_.insert(boost::apply_visitor(Element(), node));
        }
    });
}

}  // namespace vorm::assessments
