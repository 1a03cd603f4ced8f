#include "sorted_rows.hpp"

#include <algorithm>
#include <utility>

namespace vorm::evaluation {

void SortedRows::keep(const Table& table, std::vector<std::optional<ExactTime>> times) {
    Row& row = rows_.emplace_back();
    row.line = table.line();
    row.times = std::move(times);
    for (const Cell& cell : table.cells()) {
        row.texts.emplace_back(cell.text);
        row.cells.push_back(cell);
    }
}

void SortedRows::forEach(
    std::size_t which, const std::string& path,
    const std::function<void(ExactTime, const std::vector<Cell>&)>& visit) const {
    std::vector<const Row*> order;
    for (const Row& row : rows_) {
        if (row.times[which]) {
            order.push_back(&row);
        }
    }
    std::stable_sort(order.begin(), order.end(), [which](const Row* a, const Row* b) {
        return *a->times[which] < *b->times[which];
    });
    std::vector<Cell> cells;
    for (const Row* row : order) {
        cells = row->cells;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            cells[i].text = row->texts[i];
        }
        try {
            visit(*row->times[which], cells);
        } catch (const InputError& error) {
            throw error.placed({path, row->line});
        }
    }
}

}  // namespace vorm::evaluation
