#pragma once

// Where the header of a table ends: units, and what else programs write between names and rows.

#include <vorm/evaluation/table/sample_lines.hpp>

namespace vorm::evaluation {

struct HeaderBlock {
    std::optional<std::size_t> units;  ///< the line that has them
    std::size_t rows = 0;              ///< the first line behind the header
};

/// The block that begins with the line of names. It ends before the declared first row. Else a line
/// that looks like units belongs to it, and behind that one of the kinds of the columns, such as
/// `float` or `Avg`.
HeaderBlock headerBlock(const std::vector<SampleLine>& lines, std::size_t header,
                        const TableLayout& layout);

}  // namespace vorm::evaluation
