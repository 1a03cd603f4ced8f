#include "quoted_text.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace vorm::evaluation {
namespace {

struct Escape {
    char letter;
    char character;
};

constexpr std::array<Escape, 6> escapes{
    {{'\\', '\\'}, {'"', '"'}, {'\'', '\''}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}}};

// The character of `\xHH`, given what follows the backslash.
std::optional<char> fromDigits(std::string_view rest) {
    unsigned char byte = 0;
    if (rest.size() < 3 || rest[0] != 'x') {
        return std::nullopt;
    }
    const char* end = rest.data() + 3;
    if (std::from_chars(rest.data() + 1, end, byte, 16).ptr != end) {
        return std::nullopt;
    }
    return static_cast<char>(byte);
}

// Takes an escape without its backslash off the text.
std::optional<char> takeEscape(std::string_view& rest) {
    const auto known = std::find_if(escapes.begin(), escapes.end(), [&rest](const Escape& escape) {
        return rest.starts_with(escape.letter);
    });
    if (known != escapes.end()) {
        rest.remove_prefix(1);
        return known->character;
    }
    const std::optional<char> character = fromDigits(rest);
    if (character) {
        rest.remove_prefix(3);
    }
    return character;
}

std::string escaped(char character, char quote) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    const bool isOtherQuote = (character == '"' || character == '\'') && character != quote;
    for (const Escape& escape : escapes) {
        if (escape.character == character && !isOtherQuote) {
            return {'\\', escape.letter};
        }
    }
    if (byte < 0x20 || byte == 0x7f) {
        return {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    return {character};
}

}  // namespace

std::optional<std::string> unquoted(std::string_view word) {
    std::string text;
    for (std::string_view rest = word.substr(1, word.size() - 2); !rest.empty();) {
        const char next = rest.front();
        rest.remove_prefix(1);
        const std::optional<char> character = next == '\\' ? takeEscape(rest) : next;
        if (!character) {
            return std::nullopt;
        }
        text += *character;
    }
    return text;
}

std::string inQuotes(std::string_view text, char quote) {
    std::string word(1, quote);
    for (const char character : text) {
        word += escaped(character, quote);
    }
    return word + quote;
}

}  // namespace vorm::evaluation
