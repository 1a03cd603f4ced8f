#pragma once

// How a delimited table is written, told by its first rows.

#include <vorm/evaluation/table/table_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

struct Dialect {
    char delimiter = ',';
    char decimal = '.';                ///< in numbers
    bool hasComments = false;          ///< lines that begin with # are no rows
    std::size_t headerLine = 1;        ///< lines count from 1
    std::size_t rowsBegin = 0;         ///< the bytes before the line after the header and its units
    std::size_t rowsLine = 1;          ///< the number of that line
    std::size_t leastCells = 0;        ///< of a row
    std::size_t mostCells = 0;         ///< of a row; those without a column are not read
    std::vector<std::string> columns;  ///< the cells of the header, or the declared names
    bool areNamesDeclared = false;
    std::vector<std::string> units;  ///< one for each column, or none at all
    /// Where times are counted: the first one of each column, and their distance, as decimals of
    /// seconds; empty where the header says nothing of it.
    std::vector<std::string> starts;
    std::vector<std::string> steps;
    std::vector<std::vector<std::string>> firstRows;  ///< some, to tell times by
    /// How it differs from plain comma separated values under a header in the first line, and from
    /// what shows it: `the header is line 14`.
    std::vector<std::string> remarks;
};

/// The dialect of the table in a text that is the beginning of a file, or all of it.
///
/// Each line may be the header, with each delimiter: what counts is how many cells of the next 20
/// lines stand in columns that have a name and hold nothing but numbers and times, and how many of
/// their cells the header has names for; the first of equals is the header. A comment makes a poor
/// header, and so does a line of numbers, which is none where it is like a row: where a line beside
/// it has numbers in the same columns, or the one above as many texts. One that repeats a line
/// above is neither a header nor a row. Behind the header units may stand, see headerBlock. Where
/// nothing looks like a table the first line is the header. Numbers have a decimal comma where
/// delimiters are no commas and some do, and none has a point. What the layout declares is not
/// looked for; where it declares names, they head the first line that they fit.
///
/// Nothing where the text has no line. Throws InputError where the header's quotes are not as they
/// have to be, and where no line fits the declared names. Linear in the text; at most 250 lines of
/// it are looked at, or 10,000 where these hold no table.
std::optional<Dialect> detectDialect(std::string_view text, bool whole, const TableLayout& layout,
                                     const std::string& path);

}  // namespace vorm::evaluation
