#pragma once

// Which columns of a table say when its rows were recorded.

#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_notation.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

using CellTexts = std::vector<std::vector<std::string>>;  ///< of some rows

/// The columns whose cells are one time.
struct TimeCells {
    std::vector<std::size_t> columns;
    bool endInMilliseconds = false;  ///< the last of several has those of the time in the others
};

/// The columns that the layout names; else those that are called like a time, of several the ones
/// that increase throughout the rows, and a date together with the time of day beside it; else the
/// one column that increases, unless its name says that it counts rows. A last column that is
/// called like milliseconds has them. Several of one name are the times of the columns to their
/// right. Throws InputError, at the place of the header, where there is none, or any of several may
/// be meant.
std::vector<TimeCells> findTimes(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                                 const CellTexts& rows, const SourceLocation& place);

/// Puts milliseconds behind the seconds of a time: `.007` for `7`, in front of the half of the day;
/// what makes no time of it where the cell has other texts.
void addMilliseconds(std::string& time, std::string_view cell);

/// The cells of a row as one text: behind each other with a blank between them, and milliseconds as
/// the fraction of a second. textIn(column) is the text of a cell.
template <class TextIn>
void join(const TimeCells& cells, const TextIn& textIn, std::string& text) {
    text.clear();
    for (const std::size_t column : cells.columns) {
        const std::string_view cell = textIn(column);
        if (cells.endInMilliseconds && column == cells.columns.back() && !text.empty()) {
            addMilliseconds(text, cell);
        } else {
            text.append(text.empty() ? "" : " ").append(cell);
        }
    }
}
std::string joined(const std::vector<std::string>& row, const TimeCells& cells);

/// The notations in which all the rows have times that the cells say, but for those that have none
/// behind the first; none where the first one is a number or no time.
std::vector<TimeNotation> commonNotations(const CellTexts& rows, const TimeCells& cells);

}  // namespace vorm::evaluation
