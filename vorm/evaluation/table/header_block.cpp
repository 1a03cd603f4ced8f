#include "header_block.hpp"

#include <vorm/evaluation/table/unit_row.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>

namespace vorm::evaluation {
namespace {

// What tells how the values of columns are stored or were made.
bool isKind(std::string_view cell) {
    constexpr auto kinds = std::to_array<std::string_view>(
        {"float", "float32", "float64", "double",  "single",   "real",    "int",     "int8",
         "int16", "int32",   "int64",   "uint8",   "uint16",   "uint32",  "uint64",  "integer",
         "long",  "short",   "byte",    "word",    "dword",    "bool",    "boolean", "string",
         "text",  "char",    "enum",    "date",    "datetime", "smp",     "sample",  "avg",
         "mean",  "average", "min",     "minimum", "max",      "maximum", "std",     "tot",
         "total", "sum",     "raw",     "value",   "number",   "numeric"});
    return std::find(kinds.begin(), kinds.end(), lowerCase(cell)) != kinds.end();
}

bool areKinds(const SampleLine& line) {
    return !isEmpty(line) &&
           std::all_of(line.cells.begin(), line.cells.end(), [](const std::string& cell) {
               return kindOf(cell) == CellKind::Empty || isKind(cell);
           });
}

}  // namespace

HeaderBlock headerBlock(const std::vector<SampleLine>& lines, std::size_t header,
                        const TableLayout& layout) {
    HeaderBlock block;
    block.rows = header + 1;
    const auto isLine = [&] { return block.rows < lines.size(); };
    // `Seconds` is a unit only where the line above has names of its own.
    const auto areUnits = [&] {
        return isUnitRow(lines[block.rows].cells) &&
               (namesTime(lines[header]) || !namesTime(lines[block.rows]));
    };
    if (layout.firstRow) {
        for (; isLine() && lines[block.rows].number < *layout.firstRow; ++block.rows) {
            if (!block.units && areUnits()) {
                block.units = block.rows;
            }
        }
    } else if (isLine() && areUnits()) {
        block.units = block.rows++;
        if (isLine() && areKinds(lines[block.rows])) {
            ++block.rows;
        }
    }
    return block;
}

}  // namespace vorm::evaluation
