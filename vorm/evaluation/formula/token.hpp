#pragma once

// The words of formulas. For the parser.

#include <cstdint>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

enum class TokenKind : std::uint8_t {
    Number,     ///< without sign
    Name,       ///< with the operators that are words
    Quoted,     ///< with its double quotes
    Member,     ///< with its single quotes
    Parameter,  ///< a name with its $
    Symbol,     ///< an operator, a bracket or a comma
    Unclosed,   ///< from a quote that is not closed to the end of its line
    Foreign,    ///< a byte that no formula has
    End,
};

struct Token {
    TokenKind kind;
    std::string_view text;  ///< a part of the formula's text

    bool is(std::string_view wanted) const {
        return text == wanted && (kind == TokenKind::Symbol || kind == TokenKind::Name);
    }
};

/// The words of a text without blanks and comments, and End. Any text is a sequence of words.
std::vector<Token> tokensOf(std::string_view text);

/// Whether a text is one Name.
bool isName(std::string_view text);

}  // namespace vorm::evaluation
