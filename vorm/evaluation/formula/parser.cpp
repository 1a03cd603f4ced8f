#include "parser.hpp"

#include <vorm/evaluation/formula/formula.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {

using assessments::VORM_OP;

namespace {

Precedence above(Precedence precedence) {
    return static_cast<Precedence>(static_cast<int>(precedence) + 1);
}

std::string tooDeep() {
    return "the formula is nested more than " + std::to_string(ParsedFormula::maximumNesting) +
           " levels deep";
}

bool goesOn(const SyntaxNode& comparison, const Spelling& following) {
    const auto isRising = [](VORM_OP op) { return op == VORM_OP::Lt || op == VORM_OP::Leq; };
    const auto isFalling = [](VORM_OP op) { return op == VORM_OP::Gt || op == VORM_OP::Geq; };
    return (isRising(comparison.op) && isRising(following.op)) ||
           (isFalling(comparison.op) && isFalling(following.op));
}

constexpr const char* deepAdvice = "name its parts in definitions of their own";

}  // namespace

Parser::Level::Level(Parser& parser) : parser_(parser) {
    if (++parser.level_ > ParsedFormula::maximumNesting) {
        parser.fail(tooDeep(), parser.next(), deepAdvice);
    }
}

Parser::Parser(std::string_view text, const FormulaParameters* parameters)
    : text_(text), parameters_(parameters), tokens_(tokensOf(text)) {}

SyntaxNodes Parser::nodes() && {
    implications();
    if (next().kind != TokenKind::End) {
        refuseMissingOperator();
        expected("an operator", next().is(")") || next().is("]") ? "nothing is open here" : "");
    }
    return std::move(nodes_);
}

// Of several the last comes first, which takes a list and no recursion.
std::size_t Parser::implications() {
    std::vector<SyntaxNode> waiting;
    std::size_t right = expression(Precedence::Or);
    for (auto operation = infix(); operation; operation = infix()) {
        SyntaxNode& node = waiting.emplace_back();
        node.kind = operation->kind;
        node.op = operation->op;
        node.sign = spanOf(take());
        node.left = right;
        right = expression(Precedence::Or);
    }
    for (; !waiting.empty(); waiting.pop_back()) {
        waiting.back().right = right;
        right = append(waiting.back());
    }
    return right;
}

std::size_t Parser::expression(Precedence loosest) {
    std::size_t left = operand();
    for (auto operation = infix(); operation && operation->precedence >= loosest;
         operation = infix()) {
        left = extended(left, *operation);
    }
    return left;
}

std::optional<Spelling> Parser::infix() const {
    const bool isWord = next().kind == TokenKind::Symbol || next().kind == TokenKind::Name;
    return isWord ? infixOf(next().text, next(1).text) : std::nullopt;
}

std::size_t Parser::extended(std::size_t left, const Spelling& spelling) {
    if (spelling.word == "in") {
        return membership(left);
    }
    SyntaxNode node{.kind = spelling.kind, .op = spelling.op, .rising = spelling.rising};
    node.sign = spanOf(take());
    if (node.kind == SyntaxKind::Until) {
        window(node);
    } else if (node.kind == SyntaxKind::Crossing) {
        printedDistance(node);
    }
    node.left = left;
    node.right = expression(above(spelling.precedence));
    const std::size_t index = append(std::move(node));
    return spelling.precedence == Precedence::Comparison ? chained(index) : index;
}

// a < b < c is a < b & b < c.
std::size_t Parser::chained(std::size_t comparison) {
    std::size_t all = comparison;
    for (auto following = infix(); following && following->precedence == Precedence::Comparison;
         following = infix()) {
        if (!goesOn(nodes_[comparison], *following)) {
            fail("these comparisons do not chain", next(), "write two, such as a < b & b == c");
        }
        SyntaxNode node{.kind = following->kind, .op = following->op};
        node.sign = spanOf(take());
        node.left = copied(nodes_[comparison].right);
        node.right = expression(Precedence::Sum);
        comparison = append(std::move(node));
        all = joined(VORM_OP::And, all, comparison);
    }
    return all;
}

// x in {1, 2} is x == 1 | x == 2.
std::size_t Parser::membership(std::size_t value) {
    constexpr const char* advice = "write x in {1, 2, 3}";
    const Token word = take();
    const Token opening = next();
    if (!takeIf("{")) {
        expected("'{'", advice);
    }
    std::optional<std::size_t> any;
    do {
        SyntaxNode node{.kind = SyntaxKind::Binary, .op = VORM_OP::Eq, .sign = spanOf(word)};
        node.left = any ? copied(value) : value;
        node.right = expression(Precedence::Sum);
        const std::size_t isEqual = append(std::move(node));
        any = any ? joined(VORM_OP::Or, *any, isEqual) : isEqual;
    } while (takeIf(","));
    expectClosing(opening, "}");
    return *any;
}

std::size_t Parser::joined(VORM_OP op, std::size_t left, std::size_t right) {
    SyntaxNode node{.kind = SyntaxKind::Binary, .op = op, .sign = nodes_[right].sign};
    node.left = left;
    node.right = right;
    return append(std::move(node));
}

// An operand once more; it lies in one stretch of the list, which ends with it.
std::size_t Parser::copied(std::size_t operand) {
    std::size_t first = operand;
    while (operandsOf(nodes_[first].kind) > 0) {
        first = nodes_[first].left;
    }
    const std::size_t shift = nodes_.size() - first;
    if (nodes_.size() + operand - first > maximumFormulaNodes) {
        throw FormulaError("the formula has too many operators and operands", nodes_[operand].where,
                           deepAdvice);
    }
    for (std::size_t i = first; i <= operand; ++i) {
        SyntaxNode node = nodes_[i];
        node.left += shift;
        node.right += shift;
        nodes_.push_back(std::move(node));
    }
    return operand + shift;
}

std::size_t Parser::append(SyntaxNode node) {
    const int operands = operandsOf(node.kind);
    if (operands > 0) {
        const std::size_t right = operands == 2 ? nodes_[node.right].height : 0;
        node.height = heightOf(nodes_, node, nodes_[node.left].height, right);
    }
    if (operands == 2) {
        const SyntaxNode& right = nodes_[node.right];
        const std::size_t begin = std::min(node.sign.begin, nodes_[node.left].where.begin);
        node.where = {begin, right.where.begin + right.where.length - begin};
    }
    if (node.height > ParsedFormula::maximumNesting) {
        throw FormulaError(tooDeep(), node.sign, deepAdvice);
    }
    nodes_.push_back(std::move(node));
    return nodes_.size() - 1;
}

}  // namespace vorm::evaluation
