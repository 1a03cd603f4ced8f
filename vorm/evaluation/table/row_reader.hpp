#pragma once

// What the forms of recordings have in common: named columns, and rows of cells under them.

#include <vorm/evaluation/source/byte_window.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorm::evaluation {

/// The text of one cell, in the reader's memory until the next row.
struct Cell {
    std::string_view text;  ///< without blanks around it; empty where there is no sample
    const char* begin = nullptr;
    bool isText = false;    ///< never a number, whatever it looks like
    bool hasPoint = false;  ///< a number with a decimal point where numbers have a comma
};

/// Reads the rows of a table one after the other. Throws InputError for what is no table.
class RowReader {
public:
    virtual ~RowReader() = default;

    /// Goes to the next row; false at the end. The cells of the row before are gone.
    virtual bool next() = 0;

    /// The header cells, or the keys.
    const std::vector<std::string>& columns() const { return columns_; }
    /// Those of the row, one for each column.
    const std::vector<Cell>& cells() const { return cells_; }
    /// The line that the row begins with, from 1.
    std::size_t line() const { return line_; }
    /// The row as it stands in the file, in the reader's memory until the next one.
    virtual std::string_view text() const = 0;
    /// Where a cell of the row stands.
    virtual SourceLocation where(std::size_t cell) const = 0;

    /// From now on rows with too few or too many cells are left out.
    void leaveOutBadRows() { leavesOutBadRows_ = true; }
    /// Counts the row among those that are left out. Throws InputError for one that looks like
    /// another header or other units, which rows below it would be read without.
    void leaveOut();
    /// What was left out.
    std::vector<std::string> warnings() const;

    void reportTo(std::function<void(std::size_t)> progress) {
        bytes_.reportTo(std::move(progress));
    }

protected:
    RowReader(std::string path, ByteWindow bytes)
        : path_(std::move(path)), bytes_(std::move(bytes)) {}

    std::string path_;
    ByteWindow bytes_;
    std::vector<std::string> columns_;
    std::vector<Cell> cells_;
    std::size_t line_ = 0;
    bool leavesOutBadRows_ = false;
    std::vector<std::string> units_;  ///< below the names
    std::string cutRow_;              ///< what is to be said of a last one that ends early

private:
    bool isOtherHeader() const;

    std::size_t leftOut_ = 0;
    std::size_t firstLeftOut_ = 0;  // its line
};

}  // namespace vorm::evaluation
