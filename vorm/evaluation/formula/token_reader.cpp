#include "parser.hpp"
#include "quoted_text.hpp"

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

std::string foreignAdvice(const std::string& character, std::string otherAdvice) {
    return character == "="   ? "write == to compare"
           : character == "$" ? "a parameter is written $name"
                              : std::move(otherAdvice);
}

}  // namespace

const Token& Parser::next(std::size_t ahead) const {
    return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

Token Parser::take() {
    const Token token = next();
    if (token.kind != TokenKind::End) {
        ++position_;
    }
    return token;
}

bool Parser::takeIf(std::string_view word) {
    const bool isThere = next().is(word);
    if (isThere) {
        take();
    }
    return isThere;
}

void Parser::expectClosing(const Token& opening, std::string_view closing) {
    if (takeIf(closing)) {
        return;
    }
    if (next().kind == TokenKind::End) {
        fail("this '" + std::string(opening.text) + "' is not closed", opening,
             "add '" + std::string(closing) + "'");
    }
    refuseMissingOperator();
    const TextSpan from = spanFrom(opening);
    constexpr std::size_t most = 30;
    const bool isLong = from.length > most;
    expected("'" + std::string(closing) + "'",
             "the '" + std::string(opening.text) + "' of `" +
                 std::string(text_.substr(from.begin, std::min(from.length, most))) +
                 (isLong ? "...`" : "`") + " is not closed");
}

std::string Parser::textOf(const Token& token) const {
    const std::optional<std::string> text = unquoted(token.text);
    if (!text) {
        fail("unknown escape after '\\' in quotes", token, "write \\\\ for a backslash");
    }
    return *text;
}

std::size_t Parser::beginOf(const Token& token) const {
    return static_cast<std::size_t>(token.text.data() - text_.data());
}

TextSpan Parser::spanOf(const Token& token) const {
    return {beginOf(token), token.text.size()};
}

std::size_t Parser::endOfTaken() const {
    const Token& last = tokens_[std::max<std::size_t>(position_, 1) - 1];
    return beginOf(last) + last.text.size();
}

TextSpan Parser::spanFrom(const Token& first) const {
    const std::size_t begin = beginOf(first);
    return {begin, std::max(begin + first.text.size(), endOfTaken()) - begin};
}

void Parser::fail(const std::string& message, const Token& where, std::string advice) const {
    throw FormulaError(message, spanOf(where), std::move(advice));
}

void Parser::expected(const std::string& what, std::string advice) const {
    const Token& token = next();
    const std::string text(token.text);
    switch (token.kind) {
        case TokenKind::End:
            fail("expected " + what + ", found the end of the formula", token, std::move(advice));
        case TokenKind::Unclosed:
            fail("this quote is not closed", token, "add " + text.substr(0, 1));
        case TokenKind::Foreign:
            fail("expected " + what + ", found the character " + inQuotes(text, '\''), token,
                 foreignAdvice(text, std::move(advice)));
        case TokenKind::Number:
        case TokenKind::Name:
        case TokenKind::Quoted:
        case TokenKind::Member:
        case TokenKind::Parameter:
        case TokenKind::Symbol:
            break;
    }
    fail("expected " + what + ", found '" + text + "'", token, std::move(advice));
}

}  // namespace vorm::evaluation
