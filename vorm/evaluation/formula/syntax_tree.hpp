#pragma once

// What the text of a formula says, before its names mean anything. For the sources of this folder.
// The nodes lie in one list, operands before their operators, so that every pass over a formula is
// a loop, however long its chains of operators are.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/formula/formula_error.hpp>
#include <vorm/evaluation/time/exact_time.hpp>
#include <vorm/evaluation/time/window_end.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vorm::evaluation {

enum class SyntaxKind : std::uint8_t {
    Number,        ///< a literal without a type: `text`
    TypedLiteral,  ///< `text` as a value of `target`, or the stored integer of one of `storedType`
    Name,
    QuotedName,
    Member,  ///< of an enumeration: `'text'`
    Unary,
    Window,   ///< Globally, Eventually, Historically, Once; extrema of numbers and sums
    Shifted,  ///< Shift, EpsilonShift
    Cast,     ///< to `target`
    Binary,
    Until,     ///< and Since
    Crossing,  ///< Rise, Fall: `left` by more than `right` within `a` seconds
};

/// A time in the text of a formula.
struct WrittenTime {
    std::string text{};                           ///< as it is written
    std::optional<ExactTime> time = ExactTime();  ///< nothing where it is infinite or beyond all
    double number = 0;                            ///< the number that is written, without its unit

    /// The end of a window that has none.
    static WrittenTime unbounded() {
        return {"inf", std::nullopt, std::numeric_limits<double>::infinity()};
    }
    /// That of a window that ends with what was recorded, or begins with it.
    static WrittenTime recorded(std::string word) {
        return {std::move(word), std::nullopt, toTheEnd};
    }

    /// Whether it can be the end of a window only.
    bool isBeyondAll() const { return !time && number >= toTheEnd; }
    bool isNegative() const { return time < ExactTime(); }
};

struct SyntaxNode {
    SyntaxKind kind = SyntaxKind::Number;
    assessments::VORM_OP op = assessments::VORM_OP::None;
    bool rising = false;                      ///< of crossings
    TextSpan where{};                         ///< the whole operand, with its brackets
    TextSpan sign{};                          ///< the operator, or its interval
    std::string text{};                       ///< of leaves, without quotes
    std::optional<std::string> storedType{};  ///< of stored integers
    std::size_t target = 0;                   ///< index of a value type
    WrittenTime a{};                          ///< start of a window, or a distance
    WrittenTime b{};                          ///< end of a window
    std::size_t left = 0;                     ///< index of the first or only operand
    std::size_t right = 0;                    ///< index of the second operand
    std::size_t height = 1;                   ///< levels, where a chain such as a + b - c is one
};

using SyntaxNodes = std::vector<SyntaxNode>;

constexpr int operandsOf(SyntaxKind kind) {
    return kind < SyntaxKind::Unary ? 0 : kind < SyntaxKind::Binary ? 1 : 2;
}

/// Sums, products with quotients, conjunctions and disjunctions of many operands are chains: `left
/// op right` needs no brackets around a left operand of the same chain.
constexpr bool continuesChain(assessments::VORM_OP left, assessments::VORM_OP op) {
    using assessments::VORM_OP;
    const auto isSum = [](VORM_OP sign) { return sign == VORM_OP::Plus || sign == VORM_OP::Minus; };
    const auto isProduct = [](VORM_OP sign) {
        return sign == VORM_OP::Multiply || sign == VORM_OP::Divide;
    };
    const bool isLogic = op == VORM_OP::And || op == VORM_OP::Or;
    return (isLogic && left == op) || (isSum(left) && isSum(op)) ||
           (isProduct(left) && isProduct(op));
}

/// The height of an operator over operands of the heights given; that of an absent one is 0.
inline std::size_t heightOf(const SyntaxNodes& nodes, const SyntaxNode& node, std::size_t left,
                            std::size_t right) {
    const bool isChain = node.kind == SyntaxKind::Binary &&
                         nodes[node.left].kind == SyntaxKind::Binary &&
                         continuesChain(nodes[node.left].op, node.op);
    return std::max(isChain ? left : left + 1, right + 1);
}

}  // namespace vorm::evaluation
