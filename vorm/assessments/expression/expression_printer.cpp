#include "expression_printer.hpp"

#include <iterator>
#include <utility>

namespace vorm::assessments::detail {

std::string ExpressionPrinter::print(const Expression& root) && {
    parts_.emplace_back(&root);
    while (!parts_.empty()) {
        const Part part = std::move(parts_.back());
        parts_.pop_back();
        std::visit([this](const auto& piece) { print(piece); }, part);
    }
    return std::move(text_);
}

void ExpressionPrinter::operator()(const unary_op& node) {
    prefix(node.label, node.child);
}

void ExpressionPrinter::operator()(const binary_op& node) {
    infix(node.lhs, node.label, node.rhs);
}

void ExpressionPrinter::operator()(const timed_unary_op& node) {
    prefix(ExpressionLabelTreeVisitor::printTimed(node.label, node.offset), node.child);
}

void ExpressionPrinter::operator()(const timedwindow_unary_op& node) {
    prefix(ExpressionLabelTreeVisitor::printInterval(node.label, node.a, node.b), node.child);
}

void ExpressionPrinter::operator()(const timedwindow_binary_op& node) {
    infix(node.lhs, ExpressionLabelTreeVisitor::printInterval(node.label, node.a, node.b),
          node.rhs);
}

void ExpressionPrinter::operator()(const alias& node) {
    for (auto argument = node.arguments.rbegin(); argument != node.arguments.rend(); ++argument) {
        if (const auto* tree = boost::get<Expression>(&*argument)) {
            printLater({tree});
        } else {
            ExpressionLabelTreeVisitor text;
            printLater({boost::apply_visitor(text, *argument)});
        }
    }
}

void ExpressionPrinter::prefix(const std::string& label, const Expression& child) {
    text_ += label + "(";
    printLater({&child, ")"});
}

void ExpressionPrinter::infix(const Expression& left, const std::string& label,
                              const Expression& right) {
    text_ += "(";
    printLater({&left, " " + label + " ", &right, ")"});
}

void ExpressionPrinter::printLater(std::initializer_list<Part> parts) {
    parts_.insert(parts_.end(), std::rbegin(parts), std::rend(parts));
}

void ExpressionPrinter::print(const Expression* tree) {
    if (labels_ != nullptr) {
        printLater({Finished{tree, text_.size()}});
    }
    boost::apply_visitor(*this, *tree);
}

void ExpressionPrinter::print(const Finished& formula) {
    labels_->insert_or_assign(*formula.tree, text_.substr(formula.begin));
}

}  // namespace vorm::assessments::detail
