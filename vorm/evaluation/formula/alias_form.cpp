#include "alias_form.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/expression_factory.hpp>

#include <boost/variant/get.hpp>

#include <cmath>
#include <string_view>

namespace vorm::evaluation {
namespace {

using namespace assessments;

const Expression* treeOf(const AliasArgument& argument) {
    return boost::get<Expression>(&argument);
}

std::string_view textOf(const AliasArgument& argument) {
    if (const auto* characters = boost::get<const char*>(&argument)) {
        return *characters == nullptr ? std::string_view() : std::string_view(*characters);
    }
    const auto* text = boost::get<std::string>(&argument);
    return text == nullptr ? std::string_view() : std::string_view(*text);
}

template <class Node>
const Node* operatorOf(const Expression* tree, VORM_OP op) {
    const auto* node = tree == nullptr ? nullptr : boost::get<Node>(tree);
    return node != nullptr && node->op == op ? node : nullptr;
}

const Expression* leftOf(const binary_op* node) {
    return node == nullptr ? nullptr : &node->lhs;
}

const Expression* rightOf(const binary_op* node) {
    return node == nullptr ? nullptr : &node->rhs;
}

template <class Node>
const Expression* childOf(const Node* node) {
    return node == nullptr ? nullptr : &node->child;
}

bool same(const Expression* part, const Expression* argument) {
    return part != nullptr && argument != nullptr &&
           ExpressionEqual<ModuloAliases>()(*part, *argument);
}

std::optional<AliasForm> crossing(const alias& node, const TimeTexts& times) {
    const Expression* x = treeOf(node.arguments[1]);
    const Expression* limit = treeOf(node.arguments[6]);
    const std::string_view word = textOf(node.arguments[2]);
    const bool rising = word == " Rise [";
    const auto* body = operatorOf<binary_op>(&node.body, VORM_OP::Gt);
    const auto* change = operatorOf<binary_op>(leftOf(body), VORM_OP::Minus);
    const Expression* later = rising ? leftOf(change) : rightOf(change);
    const Expression* now = rising ? rightOf(change) : leftOf(change);
    const auto* shift = operatorOf<timed_unary_op>(later, VORM_OP::Shift);
    if ((!rising && word != " Fall [") || !same(now, x) || !same(childOf(shift), x) ||
        !same(rightOf(body), limit)) {
        return std::nullopt;
    }
    const std::string distance = times.of(shift->offset);
    return AliasForm{(rising ? "Rise[" : "Fall[") + distance + "](", x, ", ", limit, ")"};
}

}  // namespace

std::optional<AliasForm> formOf(const alias& node, const TimeTexts& times) {
    return node.arguments.size() == 8 ? crossing(node, times) : std::nullopt;
}

}  // namespace vorm::evaluation
