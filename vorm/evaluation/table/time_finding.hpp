#pragma once

// Which columns of a table say when its rows were recorded.

#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_notation.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

using CellTexts = std::vector<std::vector<std::string>>;  ///< of some rows

/// The columns whose cells, joined by a blank, are one time.
using TimeCells = std::vector<std::size_t>;

/// The columns that the layout names; else those that are called like a time, of several the ones
/// that increase throughout the rows, and a date together with the time of day beside it; else the
/// one column that increases, unless its name says that it counts rows. Several of one name are the
/// times of the columns to their right. Throws InputError, at the place of the header, where there
/// is none, or any of several may be meant.
std::vector<TimeCells> findTimes(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                                 const CellTexts& rows, const SourceLocation& place);

/// The cells of a row as one text.
std::string joined(const std::vector<std::string>& row, const TimeCells& cells);

/// The notations in which all the rows have times that the cells say, those without any left out;
/// none where all are numbers, or some have no time.
std::vector<TimeNotation> commonNotations(const CellTexts& rows, const TimeCells& cells);

}  // namespace vorm::evaluation
