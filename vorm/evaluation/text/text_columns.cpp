#include "text_columns.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vorm::evaluation {
namespace {

constexpr std::string_view ellipsis = "…";
constexpr std::size_t widestCharacter = 2;

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// The blocks of characters that Unicode has as wide or full width, or shows as emoji.
constexpr std::array<Range, 14> wide{{{0x1100, 0x115f},
                                      {0x2e80, 0x303e},
                                      {0x3041, 0x33ff},
                                      {0x3400, 0x4dbf},
                                      {0x4e00, 0x9fff},
                                      {0xa000, 0xa4cf},
                                      {0xa960, 0xa97f},
                                      {0xac00, 0xd7a3},
                                      {0xf900, 0xfaff},
                                      {0xfe30, 0xfe6f},
                                      {0xff00, 0xff60},
                                      {0xffe0, 0xffe6},
                                      {0x1f300, 0x1faff},
                                      {0x20000, 0x3fffd}}};

// Combining marks, joiners and selectors of variants.
constexpr std::array<Range, 6> withoutWidth{{{0x0300, 0x036f},
                                             {0x1ab0, 0x1aff},
                                             {0x200b, 0x200f},
                                             {0x20d0, 0x20ff},
                                             {0xfe00, 0xfe0f},
                                             {0xfe20, 0xfe2f}}};

template <std::size_t size>
bool isIn(const std::array<Range, size>& ranges, std::uint32_t character) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

struct Character {
    std::size_t bytes;
    std::size_t columns;
};

// The first character of a text that is not empty.
Character firstOf(std::string_view text) {
    const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byteAt(0);
    const std::size_t length = first >= 0xf0U ? 4 : first >= 0xe0U ? 3 : first >= 0xc0U ? 2 : 1;
    if (length == 1 || length > text.size()) {
        return {1, 1};
    }
    std::uint32_t character = first & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xc0U) != 0x80U) {
            return {1, 1};
        }
        character = (character << 6U) | (byteAt(i) & 0x3fU);
    }
    return {length, isIn(wide, character) ? 2U : isIn(withoutWidth, character) ? 0U : 1U};
}

// How many bytes of the text's beginning fit.
std::size_t bytesThatFit(std::string_view text, std::size_t columns) {
    std::size_t bytes = 0;
    std::size_t taken = 0;
    while (bytes < text.size()) {
        const Character next = firstOf(text.substr(bytes));
        taken += next.columns;
        if (taken > columns) {
            break;
        }
        bytes += next.bytes;
    }
    return bytes;
}

// Where an end of the text begins that fits.
std::size_t endThatFits(std::string_view text, std::size_t columns) {
    std::size_t begin = 0;
    std::size_t left = displayWidth(text);
    while (left > columns) {
        const Character first = firstOf(text.substr(begin));
        begin += first.bytes;
        left -= first.columns;
    }
    return begin;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const Character next = firstOf(text.substr(i));
        columns += next.columns;
        i += next.bytes;
    }
    return columns;
}

std::string elided(std::string_view text, std::size_t columns) {
    if (displayWidth(text) <= columns) {
        return std::string(text);
    }
    const std::size_t end = (columns - 1) / 2;
    const std::string_view front = text.substr(0, bytesThatFit(text, columns - 1 - end));
    return std::string(front) + std::string(ellipsis) +
           std::string(text.substr(endThatFits(text, end)));
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
    const std::size_t indent = std::min(text.find_first_not_of(' '), text.size());
    std::vector<std::string> lines;
    std::string begin(std::min(indent, columns / 2), ' ');
    std::string_view rest = text.substr(indent);
    while (displayWidth(rest) > columns - begin.size()) {
        // However narrow it is, each line takes a character.
        const std::size_t fitting =
            std::max(bytesThatFit(rest, columns - begin.size()), firstOf(rest).bytes);
        const std::size_t blank = rest.rfind(' ', fitting);
        const bool breaksAtBlank = blank != std::string_view::npos && blank > 0;
        const std::size_t length = breaksAtBlank ? blank : fitting;
        lines.push_back(begin + std::string(rest.substr(0, length)));
        rest.remove_prefix(length);
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
        if (lines.size() == 1 && begin.size() + 2 + widestCharacter <= columns) {
            begin += "  ";
        }
    }
    if (lines.empty() || !rest.empty()) {
        lines.push_back(begin + std::string(rest));
    }
    return lines;
}

}  // namespace vorm::evaluation
