#include "parser.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

namespace vorm::evaluation {

void Parser::refuseMissingOperator() const {
    const Token& token = next();
    if (token.kind == TokenKind::Symbol) {
        return;
    }
    const bool isWord = token.kind == TokenKind::Name;
    if (const auto timed = isWord ? timedOf(token.text) : std::nullopt) {
        refuseWithoutTime(*timed);
    }
    const bool isMisspelt = isWord && !isReserved(token.text);
    expected("an operator",
             isMisspelt ? suggestion(token.text, {"and", "or", "implies", "until"}) : "");
}

void Parser::refuseOperand() const {
    const bool isEmpty = tokens_.size() == 1;
    expected("an operand", isEmpty ? "write a formula such as always[0, 5 s](speed < 20)" : "");
}

void Parser::refuseName() const {
    const std::string word(next().text);
    const auto timed = timedOf(word);
    if (timed && next(1).is("[")) {
        expected("an operand before '" + word + "'");
    }
    if (timed) {
        refuseWithoutTime(*timed);
    }
    if (isReserved(word)) {
        expected("an operand", "quote the name of a signal: \"" + word + "\"");
    }
    const std::string near = suggestion(word, prefixWords());
    fail("unknown operator '" + word + "'", next(),
         near.empty() ? "names with brackets are quoted, for example \"control[0]\"" : near);
}

void Parser::refuseWithoutTime(const Spelling& spelling) const {
    const std::string word(spelling.word);
    if (spelling.kind == SyntaxKind::Window && spelling.opening == Opening::Square) {
        fail("'" + word + "' needs an interval", next(), "write " + word + "[0, 5 s](...)");
    }
    if (spelling.kind == SyntaxKind::Window) {
        fail("'" + word + "' needs an operand in brackets", next(),
             "write " + word + "[0, 5 s](...), or " + word + "(...) for all of time");
    }
    const std::string operands = spelling.kind == SyntaxKind::Crossing ? "(x, 5)" : "(x)";
    fail("'" + word + "' needs a distance in time", next(), "write " + word + "[2 s]" + operands);
}

}  // namespace vorm::evaluation
