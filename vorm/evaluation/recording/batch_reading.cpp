#include "batch_reading.hpp"

#include <vorm/evaluation/parallel/for_each_index.hpp>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace vorm::evaluation {
namespace {

// What is wrong with the first cell of a column that cannot be taken, and its row in the batch.
struct CellProblem {
    std::size_t row = std::numeric_limits<std::size_t>::max();
    std::optional<InputError> error;
};

CellProblem appendCells(ColumnReading& column, const RowBatch& batch,
                        const std::vector<RowBatch::WaitingCell>& cells, const std::string& path) {
    const RowBatch::WaitingCell* inWork = nullptr;
    try {
        for (const RowBatch::WaitingCell& waiting : cells) {
            inWork = &waiting;
            column.append(waiting.time, waiting.cell);
        }
        return {};
    } catch (const InputError& error) {
        return {inWork->row, error.placed(batch.where(*inWork, path))};
    }
}

// In a row, the first column counts.
void failForFirst(const std::vector<CellProblem>& problems) {
    const auto first =
        std::min_element(problems.begin(), problems.end(),
                         [](const CellProblem& a, const CellProblem& b) { return a.row < b.row; });
    if (first != problems.end() && first->error) {
        throw InputError(*first->error);
    }
}

}  // namespace

void readInBatches(std::vector<ColumnReading>& columns, const Table& table, unsigned jobs,
                   const std::function<bool(RowBatch&)>& fill) {
    // A batch of one thread stays in its cache; where there are several, starting them has to be
    // little beside their work.
    const std::size_t bytes = jobs > 1 ? 2 * table.blockSize() : table.blockSize() / 4;
    RowBatch batches[] = {{bytes, columns.size()}, {bytes, columns.size()}};
    RowBatch* taken = &batches[0];
    RowBatch* filling = &batches[1];
    std::vector<CellProblem> problems(columns.size());
    for (bool goesOn = true; goesOn || !taken->isEmpty(); std::swap(taken, filling)) {
        forEachIndex(columns.size() + 1, taken->isEmpty() ? 1 : jobs, [&](std::size_t i) {
            if (i > 0) {
                problems[i - 1] =
                    appendCells(columns[i - 1], *taken, taken->cells(i - 1), table.file().path);
            } else if (goesOn) {
                goesOn = fill(*filling);
            }
        });
        failForFirst(problems);
        taken->clear();
    }
}

}  // namespace vorm::evaluation
