#pragma once

#include <vorm/assessments/platform/utf.hpp>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Of English.
inline bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Of English.
inline bool isUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}

/// With the letters of English in lower case.
inline std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return isUpperCase(c) ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

/// How many characters a UTF-8 text has: continuation bytes belong to the character before them.
inline std::size_t charactersIn(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U;
    }));
}

/// The text without blanks and tabs at its ends.
inline std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The lines of a text without their ends; behind the last end there is none.
inline std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// The text on one line as UTF-8: control characters, which would move the cursor of a terminal or
/// worse, become question marks, tabs blanks, and bytes that are no UTF-8 replacement characters.
inline std::string withoutControls(std::string_view text) {
    std::u16string shown = platform::toUtf16(std::string(text));
    std::replace(shown.begin(), shown.end(), u'\t', u' ');
    std::replace_if(
        shown.begin(), shown.end(), [](char16_t c) { return c < 0x20 || (0x7f <= c && c < 0xa0); },
        u'?');
    return platform::toUtf8(shown);
}

/// A piece of input for a message: in quotes, shortened, on one line.
inline std::string shown(std::string_view text) {
    constexpr std::size_t most = 40;
    std::size_t end = std::min(most, text.size());
    while (end < text.size() && end > 0 && charactersIn(text.substr(end, 1)) == 0) {
        --end;
    }
    return "'" + withoutControls(text.substr(0, end)) + (text.size() > end ? "...'" : "'");
}

}  // namespace vorm::evaluation
