#include "text_table.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/text_columns.hpp>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace vorm::evaluation {
namespace {

const char* ansiCode(Colour colour) {
    switch (colour) {
        case Colour::Green:
            return "\033[1;32m";
        case Colour::Red:
            return "\033[1;31m";
        case Colour::Yellow:
            return "\033[1;33m";
        case Colour::Magenta:
            return "\033[1;35m";
        case Colour::Cyan:
            return "\033[1;36m";
        case Colour::None:
            break;
    }
    return "";
}

constexpr std::size_t gap = 2;
constexpr std::size_t leastElided = 16;

}  // namespace

std::string coloured(std::string_view text, Colour colour) {
    if (colour == Colour::None) {
        return std::string(text);
    }
    return ansiCode(colour) + std::string(text) + "\033[0m";
}

TextTable::TextTable(std::vector<Cell> header) {
    addRow(std::move(header));
}

void TextTable::addRow(std::vector<Cell> row) {
    for (Cell& cell : row) {
        cell.text = withoutControls(cell.text);
    }
    lines_.push_back({std::move(row), {}});
}

void TextTable::addNote(std::string_view text) {
    lines_.push_back({{}, withoutControls(text)});
}

// Columns are narrowed until lines fit, the widest of those that may be first, but not to
// nothing.
std::vector<std::size_t> TextTable::widths(const Style& style) const {
    std::vector<std::size_t> widths;
    for (const Line& line : lines_) {
        widths.resize(std::max(widths.size(), line.cells.size()));
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            widths[i] = std::max(widths[i], displayWidth(line.cells[i].text));
        }
    }
    if (!style.width) {
        return widths;
    }
    std::size_t total =
        std::accumulate(widths.begin(), widths.end(), style.indent.size() + gap * widths.size());
    while (total > *style.width + gap) {
        const auto widest = std::max_element(
            elidable_.begin(), elidable_.end(),
            [&](std::size_t one, std::size_t other) { return widths[one] < widths[other]; });
        if (widest == elidable_.end() || widths[*widest] <= leastElided) {
            break;
        }
        --widths[*widest];
        --total;
    }
    return widths;
}

std::size_t TextTable::columns() const {
    const auto columns = widths({});
    return std::accumulate(columns.begin(), columns.end(), gap * columns.size()) - gap;
}

std::vector<TextTable::Block> TextTable::blocks(const std::vector<std::size_t>& widths,
                                                const Style& style) const {
    const std::size_t most = style.width.value_or(std::numeric_limits<std::size_t>::max());
    std::vector<Block> blocks(1);
    std::size_t taken = style.indent.size();
    for (std::size_t column = 0; column < widths.size(); ++column) {
        if (taken + widths[column] > most && blocks.back().size() > repeated_) {
            taken = style.indent.size();
            blocks.emplace_back();
            for (std::size_t key = 0; key < repeated_; ++key) {
                blocks.back().push_back(key);
                taken += widths[key] + gap;
            }
        }
        blocks.back().push_back(column);
        taken += widths[column] + gap;
    }
    return blocks;
}

std::string TextTable::text(const Style& style) const {
    const std::vector<std::size_t> columns = widths(style);
    std::string text;
    for (const Block& block : blocks(columns, style)) {
        const bool isFirst = text.empty();
        text += isFirst ? "" : "\n";
        addBlock(block, columns, isFirst, style, text);
    }
    return text;
}

void TextTable::addBlock(const Block& block, const std::vector<std::size_t>& widths, bool hasNotes,
                         const Style& style, std::string& text) const {
    for (const Line& line : lines_) {
        if (!line.cells.empty()) {
            text += rowText(line.cells, block, widths, style);
        } else if (hasNotes) {
            Style below = style;
            below.indent += std::string(widths.front() + gap, ' ');
            text += indentedLines(line.note, below);
        }
    }
}

std::string TextTable::rowText(const std::vector<Cell>& cells, const Block& block,
                               const std::vector<std::size_t>& widths, const Style& style) {
    std::string shown = style.indent;
    for (const std::size_t column : block) {
        if (column >= cells.size()) {
            break;
        }
        const Cell& cell = cells[column];
        const std::string fitting = elided(cell.text, std::max<std::size_t>(1, widths[column]));
        const std::string padding(widths[column] - displayWidth(fitting), ' ');
        const std::string content = style.colours ? coloured(fitting, cell.colour) : fitting;
        shown += cell.alignRight ? padding + content : content + padding;
        shown += column == block.back() ? "" : std::string(gap, ' ');
    }
    shown.erase(shown.find_last_not_of(' ') + 1);
    return shown + "\n";
}

std::optional<std::size_t> usableWidth(std::optional<std::size_t> width) {
    constexpr std::size_t least = 60;
    return width ? std::optional(std::max(*width, least)) : std::nullopt;
}

std::string indentedLines(std::string_view text, const TextTable::Style& style) {
    std::string shown;
    for (const std::string_view line : linesOf(text)) {
        if (!style.width) {
            shown += style.indent + std::string(line) + "\n";
            continue;
        }
        const std::size_t room = *style.width - std::min(style.indent.size(), *style.width / 2);
        for (const std::string& part : wrapped(line, room)) {
            shown += style.indent + part + "\n";
        }
    }
    return shown;
}

}  // namespace vorm::evaluation
