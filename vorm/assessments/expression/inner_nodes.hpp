#pragma once

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/assessments/expression/vorm_op.hpp>

#include <boost/variant/variant.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vorm::assessments {

namespace detail {

/// Asks a constructor for a copy of a node whose children are nilClass. For the library's own use.
struct WithoutChildren {};

/// What every node with children knows.
class VORM_ASSESSMENTS_EXPORT InnerNode {
public:
    /// The levels of the tree under and including this node.
    std::size_t levels() const noexcept { return levels_; }

protected:
    /// A node over children of at most that many levels. Throws AssessmentInternalException when
    /// that makes more levels than a tree can have.
    explicit InnerNode(std::size_t levelsOfChildren);

private:
    friend class SlotList;

    std::size_t levels_;
    // The list that a tree is taken apart with runs through its nodes, since a destructor must not
    // need memory.
    Expression* next_ = nullptr;
};

}  // namespace detail

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

/// An operator over a closed window: [t + a, t + b] of Eventually and Globally, [t - b, t - a] of
/// Once and Historically.
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

/// An operator over a closed window: [t + a, t + b] of Until, [t - b, t - a] of Since.
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

/// The conversion of a formula's values to another value type; the only conversion there is.
struct VORM_ASSESSMENTS_EXPORT cast_op : unary_op {
    /// Stands for the value type T.
    template <class T>
    struct castFlag {};

    /// One alternative per value type, in the order of ValueTypes.
    using Target =
        boost::mp11::mp_transform<castFlag, boost::mp11::mp_rename<ValueTypes, boost::variant>>;

    Target target;

    cast_op(const Expression& operand, Target type, std::string symbol = "cast")
        : unary_op(VORM_OP::Cast, operand, std::move(symbol)), target(std::move(type)) {}
    cast_op(Expression&& operand, Target type, std::string symbol = "cast")
        : unary_op(VORM_OP::Cast, std::move(operand), std::move(symbol)), target(std::move(type)) {}

    cast_op(const cast_op& other, detail::WithoutChildren mark)
        : unary_op(other, mark), target(other.target) {}
};

/// One piece of an alias's text. A const char* is not copied and has to outlive the formula; a
/// null one counts as empty text.
using AliasArgument = boost::variant<bool, int, double, const char*, std::string, Expression>;

/// A composite that has the value of its body and is printed as the sequence of its arguments.
struct VORM_ASSESSMENTS_EXPORT alias : detail::InnerNode {
    Expression body;
    std::vector<AliasArgument> arguments;

    /// Each further parameter becomes one argument, in the order given. Throws
    /// AssessmentInternalException where the tree becomes too deep.
    template <class... Arguments>
    explicit alias(const Expression& value, Arguments&&... texts)
        : alias(Expression(value), listOf(std::forward<Arguments>(texts)...), Listed()) {}
    template <class... Arguments>
    explicit alias(Expression&& value, Arguments&&... texts)
        : alias(std::move(value), listOf(std::forward<Arguments>(texts)...), Listed()) {}

    alias(const alias& other);
    alias(alias&& other);
    alias& operator=(const alias& other);
    alias& operator=(alias&& other) = default;
    ~alias();

    alias(const alias& other, detail::WithoutChildren);

private:
    struct Listed {};

    alias(Expression&& value, std::vector<AliasArgument>&& list, Listed);

    template <class... Arguments>
    static std::vector<AliasArgument> listOf(Arguments&&... texts) {
        std::vector<AliasArgument> list;
        list.reserve(sizeof...(texts));
        (list.emplace_back(std::forward<Arguments>(texts)), ...);
        return list;
    }
};

}  // namespace vorm::assessments
