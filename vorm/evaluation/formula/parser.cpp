#include "parser.hpp"

#include <vorm/evaluation/formula/formula.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

Precedence above(Precedence precedence) {
    return static_cast<Precedence>(static_cast<int>(precedence) + 1);
}

std::string tooDeep() {
    return "the formula is nested more than " + std::to_string(ParsedFormula::maximumNesting) +
           " levels deep";
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
    SyntaxNode node{.kind = spelling.kind, .op = spelling.op, .rising = spelling.rising};
    node.sign = spanOf(take());
    if (node.kind == SyntaxKind::Until) {
        window(node);
    } else if (node.kind == SyntaxKind::Crossing) {
        printedDistance(node);
    }
    node.left = left;
    node.right = expression(above(spelling.precedence));
    const auto following = infix();
    if (spelling.precedence == Precedence::Comparison && following &&
        following->precedence == Precedence::Comparison) {
        fail("comparisons do not chain", next(), "write two, such as a < b & b < c");
    }
    return append(std::move(node));
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
