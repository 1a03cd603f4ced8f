#pragma once

// For comparisons: the order of two values, and which orders make a comparison true.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>

#include <array>
#include <cstddef>

namespace vorm::evaluation {

enum class Order { Less, Equal, Greater, Unordered };

template <class T>
Order orderOf(const T& left, const T& right) {
    // Without a branch, since which of two noisy values is greater is as good as random.
    const int order = int{right < left} - int{left < right};
    return order != 0 || left == right ? static_cast<Order>(order + 1) : Order::Unordered;
}

/// A comparison as the truth of each order.
class Relation {
public:
    /// The comparison of that code, Eq to Geq. None is the negation of another: of a NaN all are
    /// false but Neq.
    explicit Relation(assessments::VORM_OP op) {
        using assessments::VORM_OP;
        const bool isNeq = op == VORM_OP::Neq;
        set(Order::Less, op == VORM_OP::Lt || op == VORM_OP::Leq || isNeq);
        set(Order::Equal, op == VORM_OP::Eq || op == VORM_OP::Leq || op == VORM_OP::Geq);
        set(Order::Greater, op == VORM_OP::Gt || op == VORM_OP::Geq || isNeq);
        set(Order::Unordered, isNeq);
    }

    std::int8_t operator()(Order order) const { return truth_[static_cast<std::size_t>(order)]; }

private:
    void set(Order order, bool holds) {
        truth_[static_cast<std::size_t>(order)] = holds ? certainlyTrue : certainlyFalse;
    }

    std::array<std::int8_t, 4> truth_{};
};

}  // namespace vorm::evaluation
