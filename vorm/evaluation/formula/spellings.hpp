#pragma once

// How operators are spelled and which of them bind tighter. For the parser, for
// formulaText and for advice.

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// From the loosest to the tightest.
enum class Precedence : std::uint8_t {
    Implication,
    Or,
    And,
    Until,
    Comparison,
    Sum,
    Product,
    Operand
};

/// What opens after the word of an operator.
enum class Opening : std::uint8_t { None, Round, Square, Any };

struct Spelling {
    std::string_view word;
    SyntaxKind kind;
    assessments::VORM_OP op;
    Precedence precedence;
    Opening opening = Opening::None;  ///< without it the word is none of this operator
    bool rising = false;
};

/// The operator between two operands that a word is, given the word after it.
std::optional<Spelling> infixOf(std::string_view word, std::string_view next);

/// The operator before an operand that a word is, given the word after it.
std::optional<Spelling> prefixOf(std::string_view word, std::string_view next);

/// The word of an operator between two operands, as texts of formulas have it. Throws
/// std::invalid_argument where it is none.
std::string_view infixWord(assessments::VORM_OP op);

/// Whether an operator of two operands is written like a function.
bool isCall(assessments::VORM_OP op);

/// The word of an operator before an operand. Throws as infixWord does.
std::string_view prefixWord(assessments::VORM_OP op);

/// Whether an operator is over a window of time that may have no end: one of truth, not of numbers.
bool mayHaveNoEnd(assessments::VORM_OP op);

/// The word of an operator over a window of time that people write most.
std::string_view usualWord(assessments::VORM_OP op);

/// The operator of that word that takes a time in square brackets, whether it has one or not.
std::optional<Spelling> timedOf(std::string_view word);

/// Whether a word cannot be a name wherever it stands.
bool isReserved(std::string_view word);

/// Whether a name means something else than a signal somewhere.
bool isOperatorWord(std::string_view word);

/// The words that open a bracket, for suggestions.
std::vector<std::string> prefixWords();

}  // namespace vorm::evaluation
