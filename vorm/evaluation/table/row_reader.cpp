#include "row_reader.hpp"

#include <vorm/evaluation/table/sample_lines.hpp>
#include <vorm/evaluation/table/unit_row.hpp>

#include <algorithm>

namespace vorm::evaluation {

void RowReader::leaveOut() {
    if (isOtherHeader()) {
        failAt({path_, line_}, "looks like a header other than the one of the table",
               "rows below it would be read under the names and units above: split the file here");
    }
    firstLeftOut_ = leftOut_++ == 0 ? line_ : firstLeftOut_;
}

bool RowReader::isOtherHeader() const {
    SampleLine line;
    std::vector<std::string> withoutBrackets;
    for (const Cell& cell : cells_) {
        line.cells.emplace_back(cell.text);
        line.kinds.push_back(kindOf(cell.text));
        withoutBrackets.push_back(unitIn(cell.text));
    }
    const bool isOneText = std::count(line.kinds.begin(), line.kinds.end(), CellKind::Text) < 2;
    return !isOneText && isOfTexts(line) &&
           ((namesTime(line) && line.cells != columns_) ||
            (isUnitRow(line.cells) && withoutBrackets != units_));
}

std::vector<std::string> RowReader::warnings() const {
    std::vector<std::string> warnings;
    if (leftOut_ > 0) {
        warnings.push_back(
            path_ + ": " +
            (leftOut_ == 1
                 ? "a row that does not fit is left out, in"
                 : std::to_string(leftOut_) + " rows that do not fit are left out, the first in") +
            " line " + std::to_string(firstLeftOut_));
    }
    if (!cutRow_.empty()) {
        warnings.push_back(cutRow_);
    }
    return warnings;
}

}  // namespace vorm::evaluation
