#pragma once

#include <vorm/assessments/expression/expression_label_tree_visitor.hpp>

#include <boost/variant/static_visitor.hpp>

#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

namespace vorm::assessments::detail {

/// Writes a formula in one pass. The text of a sub-formula is a part of the whole; it is cut out
/// of it when a label tree is wanted.
class ExpressionPrinter : public boost::static_visitor<> {
public:
    using LabelTree = ExpressionLabelTreeVisitor::LabelTree;

    /// Adds the texts of all sub-formulas to `labels` unless that is null.
    explicit ExpressionPrinter(LabelTree* labels = nullptr) : labels_(labels) {}

    std::string print(const Expression& root) &&;

    // The parts of a node, as a visitor.
    void operator()(const nilClass&) {}
    void operator()(const constantValue& node) { text_ += node.label; }
    void operator()(const variable& node) { text_ += node.name; }
    void operator()(const unary_op& node);
    void operator()(const binary_op& node);
    void operator()(const timed_unary_op& node);
    void operator()(const timedwindow_unary_op& node);
    void operator()(const timedwindow_binary_op& node);
    void operator()(const alias& node);

private:
    struct Finished {
        const Expression* tree;
        std::size_t begin;
    };
    using Part = std::variant<std::string, const Expression*, Finished>;

    void prefix(const std::string& label, const Expression& child);
    void infix(const Expression& left, const std::string& label, const Expression& right);
    void printLater(std::initializer_list<Part> parts);

    void print(const std::string& text) { text_ += text; }
    void print(const Expression* tree);
    void print(const Finished& formula);

    LabelTree* labels_;
    std::string text_;
    // What is still to be written, the next part last.
    std::vector<Part> parts_;
};

}  // namespace vorm::assessments::detail
