#pragma once

#include <vorm/assessments/expression/inner_node.hpp>
#include <vorm/assessments/expression/vorm_op.hpp>

#include <string>
#include <utility>

namespace vorm::assessments {

/// An operator over one formula. Construction from an lvalue copies the operand, from an rvalue it
/// takes a constant time; both throw AssessmentInternalException where the tree becomes too deep.
struct VORM_ASSESSMENTS_EXPORT unary_op : detail::InnerNode {
    VORM_OP op;
    std::string label;  ///< the symbol in the text of the formula
    Expression child;

    unary_op(VORM_OP operation, const Expression& operand, std::string symbol);
    unary_op(VORM_OP operation, Expression&& operand, std::string symbol);

    unary_op(const unary_op& other);
    unary_op(unary_op&& other);
    unary_op& operator=(const unary_op& other);
    unary_op& operator=(unary_op&& other) = default;
    ~unary_op();

    unary_op(const unary_op& other, detail::WithoutChildren);
};

/// An operator with an offset in time: Shift and EpsilonShift.
struct VORM_ASSESSMENTS_EXPORT timed_unary_op : unary_op {
    double offset;

    template <class Operand>
    timed_unary_op(VORM_OP operation, Operand&& operand, std::string symbol, double distance)
        : unary_op(operation, std::forward<Operand>(operand), std::move(symbol)),
          offset(distance) {}

    timed_unary_op(const timed_unary_op& other, detail::WithoutChildren mark)
        : unary_op(other, mark), offset(other.offset) {}
};

/// An operator over the closed window [t + a, t + b]: Eventually and Globally.
struct VORM_ASSESSMENTS_EXPORT timedwindow_unary_op : unary_op {
    double a;
    double b;

    template <class Operand>
    timedwindow_unary_op(VORM_OP operation, Operand&& operand, std::string symbol, double start,
                         double end)
        : unary_op(operation, std::forward<Operand>(operand), std::move(symbol)),
          a(start),
          b(end) {}

    timedwindow_unary_op(const timedwindow_unary_op& other, detail::WithoutChildren mark)
        : unary_op(other, mark), a(other.a), b(other.b) {}
};

}  // namespace vorm::assessments
