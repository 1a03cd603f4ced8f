#include "parser.hpp"

#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>

#include <utility>

namespace vorm::evaluation {

std::size_t Parser::operand() {
    const Token first = next();
    if (first.is("(")) {
        const std::size_t content = group();
        nodes_[content].where = spanFrom(first);
        return content;
    }
    const bool isWord = next().kind == TokenKind::Symbol || next().kind == TokenKind::Name;
    if (const auto literal = number()) {
        return *literal;
    }
    if (const auto prefix = isWord ? prefixOf(next().text, next(1).text) : std::nullopt) {
        return prefixed(*prefix);
    }
    return leaf();
}

std::size_t Parser::group() {
    const Level level(*this);
    const Token opening = take();
    const std::size_t content = implications();
    expectClosing(opening, ")");
    return content;
}

std::size_t Parser::prefixed(const Spelling& spelling) {
    const Token word = take();
    SyntaxNode node{.kind = spelling.kind, .op = spelling.op, .rising = spelling.rising};
    node.sign = node.where = spanOf(word);
    switch (node.kind) {
        case SyntaxKind::Window:
            window(node);
            return appliedTo(std::move(node), false);
        case SyntaxKind::Shifted:
            distance(node);
            return appliedTo(std::move(node), true);
        case SyntaxKind::Crossing:
            distance(node);
            return crossing(std::move(node));
        case SyntaxKind::Cast:
            node.target = *valueTypeOf(word.text);
            return conversion(std::move(node));
        case SyntaxKind::Binary:
            return call(node);
        case SyntaxKind::Name:
            return heldSignal(std::move(node));
        case SyntaxKind::Unary:
        case SyntaxKind::Number:
        case SyntaxKind::TypedLiteral:
        case SyntaxKind::QuotedName:
        case SyntaxKind::Member:
        case SyntaxKind::Until:
            break;
    }
    return appliedTo(std::move(node), spelling.opening == Opening::Round);
}

std::size_t Parser::appliedTo(SyntaxNode node, bool inBrackets) {
    if (inBrackets && !next().is("(")) {
        expected("'('");
    }
    if (next().is("(")) {
        node.left = group();
    } else {
        const Level level(*this);
        node.left = operand();
    }
    node.where.length = endOfTaken() - node.where.begin;
    return append(std::move(node));
}

std::size_t Parser::crossing(SyntaxNode node) {
    const Level level(*this);
    const std::size_t begin = node.where.begin;
    const Token opening = next();
    if (!takeIf("(")) {
        expected("'('");
    }
    node.left = implications();
    if (!takeIf(",")) {
        expected("',' and by how much", "write Rise[2 s](x, 5)");
    }
    node.right = implications();
    expectClosing(opening, ")");
    const std::size_t index = append(std::move(node));
    nodes_[index].where = {begin, endOfTaken() - begin};
    return index;
}

// Of more than two operands the first two come first; a power has no more.
std::size_t Parser::call(const SyntaxNode& node) {
    const Level level(*this);
    const std::string word(tokens_[position_ - 1].text);
    const std::size_t begin = node.where.begin;
    const Token opening = take();
    std::size_t result = implications();
    do {
        if (!takeIf(",")) {
            expected("',' and another operand", "write " + word + "(x, y)");
        }
        SyntaxNode pair = node;
        pair.left = result;
        pair.right = implications();
        result = append(std::move(pair));
    } while (node.op != assessments::VORM_OP::Power && next().is(","));
    expectClosing(opening, ")");
    nodes_[result].where = {begin, endOfTaken() - begin};
    return result;
}

// The samples of a signal have a name, which is not that of any column.
std::size_t Parser::heldSignal(SyntaxNode node) {
    const Token opening = take();
    const bool isName = next().kind == TokenKind::Name && !isReserved(next().text);
    if (!isName && next().kind != TokenKind::Quoted) {
        expected("the name of a signal", "what is computed has no samples: hold its signals");
    }
    node.text = heldName(isName ? std::string(next().text) : textOf(next()));
    take();
    if (!next().is(")")) {
        expected("')'", "what is computed has no samples: hold its signals");
    }
    expectClosing(opening, ")");
    node.where.length = endOfTaken() - node.where.begin;
    return append(std::move(node));
}

std::size_t Parser::leaf() {
    const Token& token = next();
    SyntaxNode node{.where = spanOf(token)};
    switch (token.kind) {
        case TokenKind::Quoted:
            node.kind = SyntaxKind::QuotedName;
            node.text = textOf(token);
            if (signalOfHeldName(node.text)) {
                fail("'" + node.text + "' means the samples of a signal, without quotes", token,
                     "declare a column of this name as a signal with another one");
            }
            take();
            return append(std::move(node));
        case TokenKind::Member:
            node.kind = SyntaxKind::Member;
            node.text = textOf(take());
            return append(std::move(node));
        case TokenKind::Parameter:
            return parameter();
        case TokenKind::Name:
            return name();
        case TokenKind::Number:
        case TokenKind::Symbol:
        case TokenKind::Unclosed:
        case TokenKind::Foreign:
        case TokenKind::End:
            break;
    }
    refuseOperand();
}

std::size_t Parser::name() {
    SyntaxNode node{.kind = SyntaxKind::Name, .where = spanOf(next())};
    if (next().is("true") || next().is("false")) {
        node.kind = SyntaxKind::TypedLiteral;
        node.target = assessments::valueTypeIndex<bool>;
    } else if (isReserved(next().text) || next(1).is("(") || next(1).is("[")) {
        refuseName();
    }
    node.text = take().text;
    return append(std::move(node));
}

}  // namespace vorm::evaluation
