#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// The colours of a terminal text.
enum class Colour { None, Green, Red, Yellow, Magenta };

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

    TextTable() = default;
    explicit TextTable(std::vector<Cell> header);

    void addRow(std::vector<Cell> row);
    /// A line across all columns below the last row, indented to the second column.
    void addNote(std::string_view text);

    /// The lines, each after `indent`; colours are left out unless `withColours`.
    std::string text(const std::string& indent, bool withColours) const;

private:
    struct Line {
        std::vector<Cell> cells;
        std::string note;
    };

    std::vector<std::size_t> widths() const;

    std::vector<Line> lines_;
};

}  // namespace vorm::evaluation
