#include "number_text.hpp"
#include "parser.hpp"

#include <vorm/assessments/expression/operator_family.hpp>

namespace vorm::evaluation {

using assessments::VORM_OP;
using assessments::support::looksBack;

namespace {

constexpr const char* intervalAdvice = "an interval is written [0, 5 s]";

}  // namespace

// All of time, from now on or up to now, where no interval is written.
void Parser::window(SyntaxNode& node) {
    if (next().is("[")) {
        interval(node);
    } else {
        node.b = WrittenTime::unbounded();
    }
}

void Parser::interval(SyntaxNode& node) {
    const Token opening = next();
    if (!takeIf("[")) {
        expected("an interval", intervalAdvice);
    }
    node.a = time();
    if (!takeIf(",")) {
        expected("',' and the end of the interval", intervalAdvice);
    }
    node.b = endOfWindow(node.op);
    expectClosing(opening, "]");
    node.sign = spanFrom(opening);
}

WrittenTime Parser::endOfWindow(VORM_OP op) {
    const std::string_view mine = looksBack(op) ? "begin" : "end";
    const std::string_view other = looksBack(op) ? "end" : "begin";
    if (next().is(other)) {
        expected("a time", "a window of the " + std::string(looksBack(op) ? "past" : "future") +
                               " goes to the " + std::string(mine) + " of the recording");
    }
    return takeIf(mine) ? WrittenTime::recorded(std::string(mine)) : time();
}

void Parser::distance(SyntaxNode& node) {
    const Token opening = next();
    if (!takeIf("[")) {
        expected("'[' and a distance in time");
    }
    node.a = time();
    expectClosing(opening, "]");
    node.sign = spanFrom(opening);
}

// The library prints the start of the window, 0, and directly behind it the distance.
void Parser::printedDistance(SyntaxNode& node) {
    const Token opening = take();
    const Token start = next();
    const bool isZero = start.kind == TokenKind::Number && start.text.front() == '0';
    const Token behind = isZero ? tokensOf(start.text.substr(1)).front() : start;
    if (!isZero || (start.text != "0" && behind.kind != TokenKind::Number)) {
        expected("the distance behind a 0", "write Rise[2 s](x, 5) or Fall[2 s](x, 5)");
    }
    take();
    node.a = start.text == "0" ? time() : timeOf(behind.text, false);
    expectClosing(opening, "]");
    node.sign = spanFrom(opening);
}

WrittenTime Parser::time() {
    const bool isNegative = takeIf("-");
    if (next().kind == TokenKind::Parameter) {
        return parameterTime(isNegative);
    }
    const Token digits = next();
    if (digits.kind != TokenKind::Number && !digits.is("inf") && !digits.is("nan")) {
        expected("a time", "for example 5 s or 200 ms");
    }
    take();
    return timeOf(digits.text, isNegative);
}

WrittenTime Parser::timeOf(std::string_view digits, bool isNegative) {
    std::optional<TimeUnit> unit;
    if (next().kind == TokenKind::Name) {
        unit = timeUnitOf(next().text);
        if (!unit) {
            expected("a unit of time", "the units are " + std::string(timeUnitNames));
        }
        take();
    }
    return writtenTime(digits, unit, isNegative);
}

WrittenTime Parser::writtenTime(std::string_view digits, const std::optional<TimeUnit>& unit,
                                bool isNegative) {
    WrittenTime written;
    written.text =
        (isNegative ? "-" : "") + std::string(digits) + (unit ? " " + std::string(unit->name) : "");
    written.time = ExactTime::of(digits, unit ? unit->length : second);
    written.number = nearestNumber<double>(digits);
    if (isNegative) {
        written.time = written.time ? std::optional(-*written.time) : std::nullopt;
        written.number = -written.number;
    }
    return written;
}

}  // namespace vorm::evaluation
