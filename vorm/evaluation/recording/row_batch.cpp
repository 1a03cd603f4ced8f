#include "row_batch.hpp"

#include <vorm/evaluation/table/csv_splitter.hpp>

#include <algorithm>
#include <functional>

namespace vorm::evaluation {

RowBatch::RowBatch(std::size_t bytes, std::size_t columns)
    : mostBytes_(std::max<std::size_t>(bytes, 1)),
      bufferSize_(2 * mostBytes_),
      buffer_(std::make_unique_for_overwrite<char[]>(bufferSize_)),
      texts_(buffer_.get(), bufferSize_),
      cells_(columns) {}

void RowBatch::addRow(const Table& table) {
    const std::string_view text = table.rowText();
    rows_.push_back({copy(text), text.data(), table.line()});
}

std::string_view RowBatch::copy(std::string_view text) {
    auto* const target = static_cast<char*>(texts_.allocate(text.size() + 1, 1));
    text.copy(target, text.size());
    copiedBytes_ += text.size() + 1;
    return {target, text.size()};
}

void RowBatch::add(std::size_t column, double time, const Cell& cell) {
    const Row& row = rows_.back();
    // A text that had quotes or a decimal comma taken out of it does not stand in the row.
    const auto isInRow = [&row](const char* position) {
        return !std::less<>()(position, row.original) &&
               std::less<>()(position, row.original + row.text.size());
    };
    const auto moved = [&row](const char* position) {
        return row.text.data() + (position - row.original);
    };
    Cell kept = cell;
    kept.begin = moved(cell.begin);
    kept.text = isInRow(cell.text.data())
                    ? std::string_view(moved(cell.text.data()), cell.text.size())
                    : copy(cell.text);
    cells_[column].push_back({time, kept, static_cast<std::uint32_t>(rows_.size() - 1)});
}

SourceLocation RowBatch::where(const WaitingCell& waiting, const std::string& path) const {
    const Row& row = rows_[waiting.row];
    return placeIn(row.text, waiting.cell.begin, {path, row.line});
}

void RowBatch::clear() {
    for (auto& cells : cells_) {
        cells.clear();
    }
    rows_.clear();
    texts_.release();
    copiedBytes_ = 0;
}

}  // namespace vorm::evaluation
