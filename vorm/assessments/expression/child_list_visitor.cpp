#include "child_list_visitor.hpp"

#include <utility>

namespace vorm::assessments {
namespace {

ExpressionChild childOf(const Expression& tree) {
    return {tree, to_string(tree)};
}

}  // namespace

childListVisitor::result_type childListVisitor::operator()(const unary_op& node) const {
    return {childOf(node.child)};
}

childListVisitor::result_type childListVisitor::operator()(const binary_op& node) const {
    return {childOf(node.lhs), childOf(node.rhs)};
}

childListVisitor::result_type childListVisitor::operator()(const alias& node) const {
    result_type children;
    for (const AliasArgument& argument : node.arguments) {
        for (ExpressionChild& child : boost::apply_visitor(aliasArgsVisitor(), argument)) {
            children.push_back(std::move(child));
        }
    }
    return children;
}

childListVisitor::aliasArgsVisitor::result_type childListVisitor::aliasArgsVisitor::operator()(
    const Expression& argument) const {
    return {childOf(argument)};
}

}  // namespace vorm::assessments
