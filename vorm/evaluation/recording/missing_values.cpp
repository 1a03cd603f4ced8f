#include "missing_values.hpp"

#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/table/cell_value.hpp>

#include <algorithm>

namespace vorm::evaluation {

bool MissingValues::isDeclared(const Cell& cell) const {
    return std::find(declared_.begin(), declared_.end(), cell.text) != declared_.end();
}

bool MissingValues::isMissingNumber(const Cell& cell) {
    return !cell.isText && isMissingText(cell.text);
}

bool MissingValues::isOfTexts(const Cell& first) {
    return first.isText || !(isTruthText(first.text) || isLikeNumber(first.text));
}

}  // namespace vorm::evaluation
