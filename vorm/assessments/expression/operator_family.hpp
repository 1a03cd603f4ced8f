#pragma once

// Operators that are typed and evaluated alike. For the evaluation layer, which names them when a
// new one is forgotten.

#include <vorm/assessments/expression/vorm_op.hpp>

#include <algorithm>
#include <cstdint>
#include <initializer_list>

namespace vorm::assessments::support {

enum class OperatorFamily : std::uint8_t {
    None,        ///< reserved numbers
    Cast,        ///< to a type that the node names
    Numeric,     ///< of one number
    Function,    ///< of one number, which makes no line of a line
    Change,      ///< of any value
    Arithmetic,  ///< of two numbers
    Power,
    Extremum,  ///< of two numbers
    Comparison,
    Negation,
    Connective,  ///< of two truths
    Implication,
    Edge,          ///< of one truth, from one representable time to the next
    Window,        ///< of time
    NumberWindow,  ///< the extremum of a number over a window
    Sum,           ///< over a window
    Until,         ///< and its mirror image
    Shift,
    EpsilonShift,
};

/// Greater than the number of any operator.
inline constexpr int beyondOperators = 100;

/// The one place that lists all operators.
constexpr OperatorFamily familyOf(VORM_OP op) {
    switch (op) {
        case VORM_OP::None:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
            break;
        case VORM_OP::Cast:
            return OperatorFamily::Cast;
        case VORM_OP::UnaryMinus:
        case VORM_OP::Abs:
        case VORM_OP::Slope:
            return OperatorFamily::Numeric;
        case VORM_OP::SquareRoot:
        case VORM_OP::Exponential:
        case VORM_OP::Logarithm:
        case VORM_OP::Sine:
        case VORM_OP::Cosine:
        case VORM_OP::Round:
        case VORM_OP::Floor:
        case VORM_OP::Ceiling:
        case VORM_OP::Sign:
            return OperatorFamily::Function;
        case VORM_OP::Changed:
            return OperatorFamily::Change;
        case VORM_OP::Plus:
        case VORM_OP::Minus:
        case VORM_OP::Multiply:
        case VORM_OP::Divide:
            return OperatorFamily::Arithmetic;
        case VORM_OP::Power:
            return OperatorFamily::Power;
        case VORM_OP::Minimum:
        case VORM_OP::Maximum:
            return OperatorFamily::Extremum;
        case VORM_OP::Least:
        case VORM_OP::Greatest:
            return OperatorFamily::NumberWindow;
        case VORM_OP::Integral:
        case VORM_OP::Mean:
        case VORM_OP::Duration:
        case VORM_OP::Count:
            return OperatorFamily::Sum;
        case VORM_OP::Eq:
        case VORM_OP::Neq:
        case VORM_OP::Lt:
        case VORM_OP::Leq:
        case VORM_OP::Gt:
        case VORM_OP::Geq:
            return OperatorFamily::Comparison;
        case VORM_OP::Not:
            return OperatorFamily::Negation;
        case VORM_OP::And:
        case VORM_OP::Or:
            return OperatorFamily::Connective;
        case VORM_OP::Implies:
            return OperatorFamily::Implication;
        case VORM_OP::Rises:
        case VORM_OP::Falls:
            return OperatorFamily::Edge;
        case VORM_OP::Eventually:
        case VORM_OP::Globally:
        case VORM_OP::Once:
        case VORM_OP::Historically:
            return OperatorFamily::Window;
        case VORM_OP::Until:
        case VORM_OP::Since:
            return OperatorFamily::Until;
        case VORM_OP::Shift:
            return OperatorFamily::Shift;
        case VORM_OP::EpsilonShift:
            return OperatorFamily::EpsilonShift;
    }
    return OperatorFamily::None;
}

/// Whether an operator's window lies in the past: [a, b] is then [t - b, t - a].
constexpr bool looksBack(VORM_OP op) {
    return op == VORM_OP::Once || op == VORM_OP::Historically || op == VORM_OP::Since;
}

/// Whether a window asks for some time in it, or the greatest number; else it asks for all times.
constexpr bool isForSomeTime(VORM_OP window) {
    return window == VORM_OP::Eventually || window == VORM_OP::Once || window == VORM_OP::Greatest;
}

/// Distances in time from the one that is looked from.
struct Distances {
    double first;
    double last;
};

/// Where the window [a, b] of an operator lies.
constexpr Distances windowOf(VORM_OP op, double a, double b) {
    return looksBack(op) ? Distances{-b, -a} : Distances{a, b};
}

/// Whether a family has these operators and no other, for choices among them that end in an else.
constexpr bool consistsOf(OperatorFamily family, std::initializer_list<VORM_OP> operators) {
    for (int number = 0; number < beyondOperators; ++number) {
        const auto op = static_cast<VORM_OP>(number);
        const bool isNamed = std::find(operators.begin(), operators.end(), op) != operators.end();
        if (isNamed != (familyOf(op) == family)) {
            return false;
        }
    }
    return true;
}

/// Whether a table, of rows with an `op`, has every operator of these families.
template <class Table>
constexpr bool coversAll(const Table& table, std::initializer_list<OperatorFamily> families) {
    for (int number = 0; number < beyondOperators; ++number) {
        const auto op = static_cast<VORM_OP>(number);
        const auto isFamily = [&](OperatorFamily family) { return family == familyOf(op); };
        const auto isRow = [&](const auto& row) { return row.op == op; };
        if (std::any_of(families.begin(), families.end(), isFamily) &&
            std::none_of(table.begin(), table.end(), isRow)) {
            return false;
        }
    }
    return true;
}

}  // namespace vorm::assessments::support
