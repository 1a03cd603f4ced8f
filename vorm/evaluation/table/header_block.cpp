#include "header_block.hpp"

#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/unit_row.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

// Such as the types of the columns, or how their values were made.
bool isUnreadBelow(const SampleLine& units, const SampleLine& line) {
    return line.cells.size() == units.cells.size() && isOfTexts(line) && !isEmpty(line) &&
           std::none_of(line.cells.begin(), line.cells.end(), [](const std::string& cell) {
               return timeNameOf({cell, cell, {}}) != TimeName::None;
           });
}

}  // namespace

HeaderBlock headerBlock(const std::vector<SampleLine>& lines, std::size_t header,
                        const TableLayout& layout) {
    HeaderBlock block;
    block.rows = header + 1;
    const auto isLine = [&] { return block.rows < lines.size(); };
    if (layout.firstRow) {
        for (; isLine() && lines[block.rows].number < *layout.firstRow; ++block.rows) {
            if (!block.units && isUnitRow(lines[block.rows].cells)) {
                block.units = block.rows;
            }
        }
    } else if (isLine() && isUnitRow(lines[block.rows].cells)) {
        block.units = block.rows++;
        const bool isUnread = isLine() && isUnreadBelow(lines[*block.units], lines[block.rows]) &&
                              lines[block.rows].cells.size() == lines[header].cells.size();
        block.rows += isUnread ? 1 : 0;
    }
    block.hasUnread = block.rows > header + 1 + (block.units ? 1 : 0);
    return block;
}

}  // namespace vorm::evaluation
