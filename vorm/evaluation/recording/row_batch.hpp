#pragma once

// Rows of a table that wait for their columns, so that threads can take the cells of one column
// each while another one reads on.

#include <vorm/evaluation/table/table.hpp>

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

class RowBatch {
public:
    struct WaitingCell {
        double time;
        Cell cell;  ///< in the memory of the batch
        std::uint32_t row;
    };

    /// For a row, and for more up to about so many bytes, whose cells go to that many columns.
    RowBatch(std::size_t bytes, std::size_t columns);

    /// Copies the row that the table is at. Its cells are added next.
    void addRow(const Table& table);
    void add(std::size_t column, double time, const Cell& cell);

    bool isEmpty() const { return rows_.empty(); }
    bool isFull() const { return copiedBytes_ >= mostBytes_; }
    const std::vector<WaitingCell>& cells(std::size_t column) const { return cells_[column]; }
    /// Where a cell of the batch stands in the file of that path.
    SourceLocation where(const WaitingCell& waiting, const std::string& path) const;

    /// Forgets the rows and keeps the memory.
    void clear();

private:
    struct Row {
        std::string_view text;
        const char* original;  // the text in the reader's memory
        std::size_t line;
    };

    std::string_view copy(std::string_view text);

    std::size_t mostBytes_;
    std::size_t copiedBytes_ = 0;
    std::size_t bufferSize_;
    std::unique_ptr<char[]> buffer_;  // enough for most batches
    std::pmr::monotonic_buffer_resource texts_;
    std::vector<Row> rows_;
    std::vector<std::vector<WaitingCell>> cells_;  // by column
};

}  // namespace vorm::evaluation
