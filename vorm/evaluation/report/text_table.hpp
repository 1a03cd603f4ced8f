#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// The colours of a terminal text.
enum class Colour { None, Green, Red, Yellow, Magenta, Cyan };

/// `text` in that colour and bold, by the ANSI sequences that terminals know.
std::string coloured(std::string_view text, Colour colour);

/// Rows in aligned columns, two blanks apart. Control characters in the texts become question
/// marks.
class TextTable {
public:
    struct Cell {
        std::string text;
        bool alignRight = false;
        Colour colour = Colour::None;
    };

    struct Style {
        std::string indent;  ///< in front of each line
        bool colours = false;
        /// The columns of the terminal that a line takes at most; nothing: no limit.
        std::optional<std::size_t> width;
    };

    TextTable() = default;
    explicit TextTable(std::vector<Cell> header);

    void addRow(std::vector<Cell> row);
    /// A line across all columns below the last row, indented to the second column.
    void addNote(std::string_view text);

    /// Texts of that column lose their middle where lines would be too long.
    void allowEliding(std::size_t column) { elidable_.push_back(column); }
    /// Where lines would be too long all the same, columns go on below, after these first ones.
    void repeatColumns(std::size_t count) { repeated_ = count; }

    std::string text(const Style& style) const;
    /// Whether no column has to go on below.
    bool fits(const Style& style) const { return blocks(widths(style), style).size() == 1; }
    /// How many columns of a terminal its widest row takes, without an indent.
    std::size_t columns() const;

private:
    struct Line {
        std::vector<Cell> cells;
        std::string note;
    };
    // The columns of one block, in the order of the table.
    using Block = std::vector<std::size_t>;

    std::vector<std::size_t> widths(const Style& style) const;
    std::vector<Block> blocks(const std::vector<std::size_t>& widths, const Style& style) const;
    void addBlock(const Block& block, const std::vector<std::size_t>& widths, bool hasNotes,
                  const Style& style, std::string& text) const;
    static std::string rowText(const std::vector<Cell>& cells, const Block& block,
                               const std::vector<std::size_t>& widths, const Style& style);

    std::vector<Line> lines_;
    std::vector<std::size_t> elidable_;
    std::size_t repeated_ = 1;
};

/// The columns that lines take on a terminal of that width: at least 60, since what is broken into
/// less cannot be read.
std::optional<std::size_t> usableWidth(std::optional<std::size_t> width);

/// The lines of a text, each after the indent and, where there is a width, broken at blanks to fit.
std::string indentedLines(std::string_view text, const TextTable::Style& style);

}  // namespace vorm::evaluation
