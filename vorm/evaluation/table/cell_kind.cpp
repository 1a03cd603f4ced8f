#include "cell_kind.hpp"

#include <vorm/evaluation/text/number_text.hpp>
#include <vorm/evaluation/time/time_notation.hpp>

#include <algorithm>
#include <array>

namespace vorm::evaluation {

CellKind kindOf(std::string_view text) {
    if (text.empty() || isMissingText(text)) {
        return CellKind::Empty;
    }
    if (numberOf<double>(text)) {
        return CellKind::Number;
    }
    if (withDecimalPoint(text)) {
        return CellKind::CommaNumber;
    }
    return notationsOf(text).empty() ? CellKind::Text : CellKind::Time;
}

bool isLikeNumber(std::string_view text) {
    if (numberOf<double>(text)) {
        return true;
    }
    for (const std::string_view prefix : {"+-", "."}) {
        if (!text.empty() && prefix.find(text.front()) != std::string_view::npos) {
            text.remove_prefix(1);
        }
    }
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

bool mayHaveThousands(std::string_view text, char mark) {
    text.remove_prefix(!text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0);
    const std::size_t first = text.find(mark);
    if (first == std::string_view::npos || first == 0 || first > 3 || text[0] == '0') {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isMark = i >= first && (i - first) % 4 == 0;
        if (isMark ? text[i] != mark : text[i] < '0' || text[i] > '9') {
            return false;
        }
    }
    return (text.size() - first) % 4 == 0;
}

bool isMissingText(std::string_view text) {
    constexpr auto texts =
        std::to_array<std::string_view>({"NA", "N/A", "n/a", "null", "NULL", "-"});
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

bool hasDecimalPoint(std::string_view text) {
    return text.find('.') != std::string_view::npos && numberOf<double>(text);
}

std::optional<std::string> withDecimalPoint(std::string_view text) {
    const std::size_t comma = text.find(',');
    // A comma at the end is rather a delimiter, with nothing behind it.
    if (comma == std::string_view::npos || comma + 1 == text.size() ||
        text.find('.') != std::string_view::npos) {
        return std::nullopt;
    }
    std::string number(text);
    number[comma] = '.';
    return numberOf<double>(number) ? std::optional(std::move(number)) : std::nullopt;
}

}  // namespace vorm::evaluation
