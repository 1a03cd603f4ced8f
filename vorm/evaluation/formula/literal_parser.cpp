#include "parser.hpp"

#include <vorm/assessments/trace/value_type.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>

#include <utility>

namespace vorm::evaluation {
namespace {

bool isNumberWord(const Token& token) {
    return token.kind == TokenKind::Number || token.is("nan") || token.is("inf");
}

}  // namespace

std::size_t Parser::conversion(SyntaxNode node) {
    const std::size_t begin = position_;
    take();
    if (!typedLiteral(node) || !next().is(")")) {
        position_ = begin;
        node.kind = SyntaxKind::Cast;
        return appliedTo(std::move(node), true);
    }
    take();
    node.where.length = endOfTaken() - node.where.begin;
    node.op = assessments::VORM_OP::None;
    return append(std::move(node));
}

// Whether a literal of the type stands here; what follows it tells whether it is all there is.
bool Parser::typedLiteral(SyntaxNode& node) {
    const auto text = next().kind == TokenKind::Parameter ? parameterOfType(node.target)
                                                          : literalOfType(node.target);
    if (!text) {
        return false;
    }
    node.kind = SyntaxKind::TypedLiteral;
    node.text = *text;
    if (valueTypeNames()[node.target] == "fixed" && takeIf(",")) {
        node.storedType = fixedPointType();
    }
    return true;
}

std::optional<std::string> Parser::literalOfType(std::size_t valueType) {
    const bool isOfVerdict = valueType == assessments::valueTypeIndex<assessments::Verdict>;
    const bool isOfBool = valueType == assessments::valueTypeIndex<bool>;
    const std::string sign = takeIf("-") ? "-" : "";
    const Token token = take();
    const bool isNumber = !isOfVerdict && !isOfBool && isNumberWord(token);
    const bool isTruth = isOfBool && sign.empty() && (token.is("true") || token.is("false"));
    const bool isVerdict = isOfVerdict && sign.empty() && token.kind == TokenKind::Quoted &&
                           verdictOf(token.text.substr(1, token.text.size() - 2)).has_value();
    if (!isNumber && !isTruth && !isVerdict) {
        return std::nullopt;
    }
    return isVerdict ? textOf(token) : sign + std::string(token.text);
}

std::string Parser::fixedPointType() {
    if (next().kind == TokenKind::Parameter) {
        return takeParameter().value;
    }
    if (next().kind != TokenKind::Quoted) {
        expected("a fixed-point type", "for example \"u16f4\"");
    }
    return textOf(take());
}

// A minus sign belongs to the number that it touches, so that -128 is an int8.
std::optional<std::size_t> Parser::number() {
    const Token first = next();
    const Token digits = first.is("-") ? next(1) : first;
    const bool touches = digits.text.data() == first.text.data() + (first.is("-") ? 1 : 0);
    if (!isNumberWord(digits) || !touches) {
        return std::nullopt;
    }
    if (first.is("-")) {
        take();
    }
    take();
    SyntaxNode node{.where = spanFrom(first)};
    node.text = text_.substr(node.where.begin, node.where.length);
    return append(std::move(node));
}

}  // namespace vorm::evaluation
