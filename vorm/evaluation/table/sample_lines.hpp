#pragma once

// The first lines of a delimited text, cell by cell, to tell how it is written.

#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

struct SampleLine {
    std::size_t number = 0;      ///< from 1
    std::size_t nextNumber = 0;  ///< that of the line behind it: cells may go over several
    std::size_t end = 0;         ///< the bytes up to that one
    bool isComment = false;
    std::optional<InputError> problem;  ///< of its quotes
    std::vector<std::string> cells;     ///< at least one
    std::vector<CellKind> kinds;        ///< of the cells
};

/// At most so many lines of the text with anything in them, without those that end behind it unless
/// it is whole.
std::vector<SampleLine> sampleLines(std::string_view text, bool whole, char delimiter,
                                    const TableLayout& layout, const std::string& path,
                                    std::size_t most);

/// Whether no cell has anything in it.
bool isEmpty(const SampleLine& line);

/// Whether there is no number and no time in any cell: such a line can be no row.
bool isOfTexts(const SampleLine& line);

/// Whether some cell is one of the usual names of times.
bool namesTime(const SampleLine& line);

/// Whether both lines have such a name, whatever the units and the case.
bool nameOneTime(const SampleLine& a, const SampleLine& b);

/// The number of cells up to the last one that is not empty.
std::size_t widthOf(const SampleLine& line);

}  // namespace vorm::evaluation
