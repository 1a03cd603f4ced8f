#include "text_table.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
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
        case Colour::None:
            break;
    }
    return "";
}

constexpr std::size_t gap = 2;

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

std::vector<std::size_t> TextTable::widths() const {
    std::vector<std::size_t> widths;
    for (const Line& line : lines_) {
        widths.resize(std::max(widths.size(), line.cells.size()));
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            widths[i] = std::max(widths[i], charactersIn(line.cells[i].text));
        }
    }
    return widths;
}

std::string TextTable::text(const std::string& indent, bool withColours) const {
    const std::vector<std::size_t> columns = widths();
    std::string text;
    for (const Line& line : lines_) {
        std::string shown = indent;
        if (line.cells.empty()) {
            shown += std::string(columns.front() + gap, ' ') + line.note;
        }
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            const Cell& cell = line.cells[i];
            const std::string padding(columns[i] - charactersIn(cell.text), ' ');
            const std::string content = withColours ? coloured(cell.text, cell.colour) : cell.text;
            shown += cell.alignRight ? padding + content : content + padding;
            shown += i + 1 < line.cells.size() ? std::string(gap, ' ') : "";
        }
        shown.erase(shown.find_last_not_of(' ') + 1);
        text += shown + "\n";
    }
    return text;
}

}  // namespace vorm::evaluation
