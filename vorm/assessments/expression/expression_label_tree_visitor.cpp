#include "expression_label_tree_visitor.hpp"

#include <vorm/assessments/expression/expression_printer.hpp>
#include <vorm/assessments/expression/label_text.hpp>

#include <ostream>
#include <utility>

namespace vorm::assessments {

ExpressionLabelTreeVisitor::LabelTree ExpressionLabelTreeVisitor::getTree(
    const Expression& expression) {
    (*this)(expression);
    return std::exchange(labels_, {});
}

std::string ExpressionLabelTreeVisitor::operator()(const Expression& expression) {
    return detail::ExpressionPrinter(&labels_).print(expression);
}

std::string ExpressionLabelTreeVisitor::operator()(bool argument) const {
    return argument ? "true" : "false";
}

std::string ExpressionLabelTreeVisitor::operator()(int argument) const {
    return std::to_string(argument);
}

std::string ExpressionLabelTreeVisitor::operator()(double argument) const {
    return detail::numberText(argument);
}

std::string ExpressionLabelTreeVisitor::operator()(const char* argument) const {
    return std::string(detail::charactersOf(argument));
}

std::string ExpressionLabelTreeVisitor::operator()(const std::string& argument) const {
    return argument;
}

std::string ExpressionLabelTreeVisitor::printTimed(const std::string& label, double d) {
    return label + "[" + detail::numberText(d) + "]";
}

std::string ExpressionLabelTreeVisitor::printInterval(const std::string& label, double a,
                                                      double b) {
    return label + "[" + detail::numberText(a) + "," + detail::numberText(b) + "]";
}

std::string to_string(const Expression& expression) {
    return detail::ExpressionPrinter().print(expression);
}

std::ostream& operator<<(std::ostream& out, const Expression& expression) {
    return out << to_string(expression);
}

}  // namespace vorm::assessments
