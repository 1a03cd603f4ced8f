#pragma once

#include <vorm/assessments/expression/inner_node.hpp>
#include <vorm/assessments/expression/vorm_op.hpp>

#include <string>
#include <utility>

namespace vorm::assessments {

/// An operator over two formulas. Construction from lvalues copies the operands, from rvalues it
/// takes a constant time; both throw AssessmentInternalException where the tree becomes too deep.
struct VORM_ASSESSMENTS_EXPORT binary_op : detail::InnerNode {
    VORM_OP op;
    std::string label;  ///< the symbol in the text of the formula
    Expression lhs;
    Expression rhs;

    binary_op(VORM_OP operation, const Expression& left, const Expression& right,
              std::string symbol);
    binary_op(VORM_OP operation, Expression&& left, Expression&& right, std::string symbol);

    binary_op(const binary_op& other);
    binary_op(binary_op&& other);
    binary_op& operator=(const binary_op& other);
    binary_op& operator=(binary_op&& other) = default;
    ~binary_op();

    binary_op(const binary_op& other, detail::WithoutChildren);
};

/// An operator over the closed window [t + a, t + b]: Until.
struct VORM_ASSESSMENTS_EXPORT timedwindow_binary_op : binary_op {
    double a;
    double b;

    template <class Left, class Right>
    timedwindow_binary_op(VORM_OP operation, Left&& left, Right&& right, std::string symbol,
                          double start, double end)
        : binary_op(operation, std::forward<Left>(left), std::forward<Right>(right),
                    std::move(symbol)),
          a(start),
          b(end) {}

    timedwindow_binary_op(const timedwindow_binary_op& other, detail::WithoutChildren mark)
        : binary_op(other, mark), a(other.a), b(other.b) {}
};

}  // namespace vorm::assessments
