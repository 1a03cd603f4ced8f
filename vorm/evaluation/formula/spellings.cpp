#include "spellings.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::VORM_OP;
using assessments::support::coversAll;
using assessments::support::OperatorFamily;

namespace spelled {

using enum SyntaxKind;

// Of several spellings of an operator texts are written with the first one; of those over windows
// the last one is what people write most.
constexpr std::array infixes = std::to_array<Spelling>({
    {"->", Binary, VORM_OP::Implies, Precedence::Implication},
    {"implies", Binary, VORM_OP::Implies, Precedence::Implication},
    {"|", Binary, VORM_OP::Or, Precedence::Or},
    {"||", Binary, VORM_OP::Or, Precedence::Or},
    {"or", Binary, VORM_OP::Or, Precedence::Or},
    {"&", Binary, VORM_OP::And, Precedence::And},
    {"&&", Binary, VORM_OP::And, Precedence::And},
    {"and", Binary, VORM_OP::And, Precedence::And},
    {"Until", Until, VORM_OP::Until, Precedence::Until},
    {"U", Until, VORM_OP::Until, Precedence::Until},
    {"until", Until, VORM_OP::Until, Precedence::Until},
    {"Since", Until, VORM_OP::Since, Precedence::Until},
    {"S", Until, VORM_OP::Since, Precedence::Until},
    {"since", Until, VORM_OP::Since, Precedence::Until},
    {"==", Binary, VORM_OP::Eq, Precedence::Comparison},
    {"~=", Binary, VORM_OP::Neq, Precedence::Comparison},
    {"!=", Binary, VORM_OP::Neq, Precedence::Comparison},
    {"<", Binary, VORM_OP::Lt, Precedence::Comparison},
    {"<=", Binary, VORM_OP::Leq, Precedence::Comparison},
    {">", Binary, VORM_OP::Gt, Precedence::Comparison},
    {">=", Binary, VORM_OP::Geq, Precedence::Comparison},
    {"Rise", Crossing, VORM_OP::None, Precedence::Comparison, Opening::Square, true},
    {"Fall", Crossing, VORM_OP::None, Precedence::Comparison, Opening::Square, false},
    {"+", Binary, VORM_OP::Plus, Precedence::Sum},
    {"-", Binary, VORM_OP::Minus, Precedence::Sum},
    {"*", Binary, VORM_OP::Multiply, Precedence::Product},
    {"/", Binary, VORM_OP::Divide, Precedence::Product},
    {"in", Binary, VORM_OP::Eq, Precedence::Comparison},
});

constexpr std::array prefixes = std::to_array<Spelling>({
    {"~", Unary, VORM_OP::Not, Precedence::Operand},
    {"!", Unary, VORM_OP::Not, Precedence::Operand},
    {"not", Unary, VORM_OP::Not, Precedence::Operand},
    {"-", Unary, VORM_OP::UnaryMinus, Precedence::Operand},
    {"abs", Unary, VORM_OP::Abs, Precedence::Operand, Opening::Round},
    {"slope", Unary, VORM_OP::Slope, Precedence::Operand, Opening::Round},
    {"changed", Unary, VORM_OP::Changed, Precedence::Operand, Opening::Round},
    {"sqrt", Unary, VORM_OP::SquareRoot, Precedence::Operand, Opening::Round},
    {"exp", Unary, VORM_OP::Exponential, Precedence::Operand, Opening::Round},
    {"log", Unary, VORM_OP::Logarithm, Precedence::Operand, Opening::Round},
    {"sin", Unary, VORM_OP::Sine, Precedence::Operand, Opening::Round},
    {"cos", Unary, VORM_OP::Cosine, Precedence::Operand, Opening::Round},
    {"round", Unary, VORM_OP::Round, Precedence::Operand, Opening::Round},
    {"floor", Unary, VORM_OP::Floor, Precedence::Operand, Opening::Round},
    {"ceil", Unary, VORM_OP::Ceiling, Precedence::Operand, Opening::Round},
    {"sign", Unary, VORM_OP::Sign, Precedence::Operand, Opening::Round},
    {"held", Name, VORM_OP::None, Precedence::Operand, Opening::Round},
    {"min", Binary, VORM_OP::Minimum, Precedence::Operand, Opening::Round},
    {"max", Binary, VORM_OP::Maximum, Precedence::Operand, Opening::Round},
    {"pow", Binary, VORM_OP::Power, Precedence::Operand, Opening::Round},
    {"min", Window, VORM_OP::Least, Precedence::Operand, Opening::Square},
    {"max", Window, VORM_OP::Greatest, Precedence::Operand, Opening::Square},
    {"integral", Window, VORM_OP::Integral, Precedence::Operand, Opening::Square},
    {"mean", Window, VORM_OP::Mean, Precedence::Operand, Opening::Square},
    {"duration", Window, VORM_OP::Duration, Precedence::Operand, Opening::Square},
    {"count", Window, VORM_OP::Count, Precedence::Operand, Opening::Square},
    {"rise", Unary, VORM_OP::Rises, Precedence::Operand, Opening::Round},
    {"fall", Unary, VORM_OP::Falls, Precedence::Operand, Opening::Round},
    {"Globally", Window, VORM_OP::Globally, Precedence::Operand, Opening::Any},
    {"G", Window, VORM_OP::Globally, Precedence::Operand, Opening::Any},
    {"always", Window, VORM_OP::Globally, Precedence::Operand, Opening::Any},
    {"Eventually", Window, VORM_OP::Eventually, Precedence::Operand, Opening::Any},
    {"F", Window, VORM_OP::Eventually, Precedence::Operand, Opening::Any},
    {"eventually", Window, VORM_OP::Eventually, Precedence::Operand, Opening::Any},
    {"Historically", Window, VORM_OP::Historically, Precedence::Operand, Opening::Any},
    {"H", Window, VORM_OP::Historically, Precedence::Operand, Opening::Any},
    {"historically", Window, VORM_OP::Historically, Precedence::Operand, Opening::Any},
    {"Once", Window, VORM_OP::Once, Precedence::Operand, Opening::Any},
    {"O", Window, VORM_OP::Once, Precedence::Operand, Opening::Any},
    {"once", Window, VORM_OP::Once, Precedence::Operand, Opening::Any},
    {"Shift", Shifted, VORM_OP::Shift, Precedence::Operand, Opening::Square},
    {"EpsilonShift", Shifted, VORM_OP::EpsilonShift, Precedence::Operand, Opening::Square},
    {"Rise", Crossing, VORM_OP::None, Precedence::Operand, Opening::Square, true},
    {"Fall", Crossing, VORM_OP::None, Precedence::Operand, Opening::Square, false},
});

}  // namespace spelled

template <class Table>
constexpr const Spelling* find(const Table& table, VORM_OP op) {
    for (const Spelling& spelling : table) {
        if (spelling.op == op && op != VORM_OP::None) {
            return &spelling;
        }
    }
    return nullptr;
}

std::string_view wordOf(const Spelling* spelling) {
    if (spelling == nullptr) {
        throw std::invalid_argument("the formula has an unknown operator");
    }
    return spelling->word;
}

static_assert(coversAll(spelled::infixes, {OperatorFamily::Arithmetic, OperatorFamily::Comparison,
                                           OperatorFamily::Connective, OperatorFamily::Implication,
                                           OperatorFamily::Until}));
static_assert(coversAll(spelled::prefixes,
                        {OperatorFamily::Numeric, OperatorFamily::Function, OperatorFamily::Change,
                         OperatorFamily::Power, OperatorFamily::Extremum, OperatorFamily::Negation,
                         OperatorFamily::Edge, OperatorFamily::Window, OperatorFamily::NumberWindow,
                         OperatorFamily::Sum, OperatorFamily::Shift,
                         OperatorFamily::EpsilonShift}));

bool opens(Opening opening, std::string_view next) {
    const bool isRound = next == "(" && opening != Opening::Square;
    const bool isSquare = next == "[" && opening != Opening::Round;
    return opening == Opening::None || isRound || isSquare;
}

template <class Table>
std::optional<Spelling> find(const Table& table, std::string_view word, std::string_view next) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const Spelling& spelling) {
        return spelling.word == word && opens(spelling.opening, next);
    });
    return found == table.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::optional<Spelling> infixOf(std::string_view word, std::string_view next) {
    return find(spelled::infixes, word, next);
}

std::optional<Spelling> prefixOf(std::string_view word, std::string_view next) {
    if (std::optional<Spelling> known = find(spelled::prefixes, word, next)) {
        return known;
    }
    if (next == "(" && valueTypeOf(word)) {
        return Spelling{word, SyntaxKind::Cast, VORM_OP::Cast, Precedence::Operand, Opening::Round};
    }
    return std::nullopt;
}

bool isCall(VORM_OP op) {
    const Spelling* prefix = find(spelled::prefixes, op);
    return prefix != nullptr && prefix->kind == SyntaxKind::Binary;
}

std::string_view infixWord(VORM_OP op) {
    return wordOf(find(spelled::infixes, op));
}

std::string_view prefixWord(VORM_OP op) {
    return wordOf(find(spelled::prefixes, op));
}

bool mayHaveNoEnd(VORM_OP op) {
    const OperatorFamily family = assessments::support::familyOf(op);
    return family == OperatorFamily::Window || family == OperatorFamily::Until;
}

std::string_view usualWord(VORM_OP op) {
    const auto last = [op](const auto& table) -> const Spelling* {
        const auto found = std::find_if(table.rbegin(), table.rend(),
                                        [op](const Spelling& each) { return each.op == op; });
        return found == table.rend() ? nullptr : &*found;
    };
    const Spelling* infix = last(spelled::infixes);
    return wordOf(infix != nullptr ? infix : last(spelled::prefixes));
}

std::optional<Spelling> timedOf(std::string_view word) {
    const std::optional<Spelling> prefix = find(spelled::prefixes, word, "[");
    const std::optional<Spelling> spelling = prefix ? prefix : find(spelled::infixes, word, "[");
    const bool takesTime =
        spelling && (spelling->opening == Opening::Square || spelling->kind == SyntaxKind::Window ||
                     spelling->kind == SyntaxKind::Until);
    return takesTime ? spelling : std::nullopt;
}

bool isReserved(std::string_view word) {
    constexpr std::array<std::string_view, 11> reserved{"and",   "or",     "not",        "implies",
                                                        "until", "always", "eventually", "true",
                                                        "false", "nan",    "inf"};
    return std::find(reserved.begin(), reserved.end(), word) != reserved.end();
}

bool isOperatorWord(std::string_view word) {
    return isReserved(word) || timedOf(word).has_value() || prefixOf(word, "(").has_value();
}

std::vector<std::string> prefixWords() {
    std::vector<std::string> words = valueTypeNames();
    for (const Spelling& spelling : spelled::prefixes) {
        if (spelling.opening != Opening::None) {
            words.emplace_back(spelling.word);
        }
    }
    return words;
}

}  // namespace vorm::evaluation
