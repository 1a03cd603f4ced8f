#pragma once

#include <vorm/evaluation/recording/column_reading.hpp>
#include <vorm/evaluation/recording/row_batch.hpp>

#include <functional>
#include <vector>

namespace vorm::evaluation {

/// Calls fill(batch) for batches of the table's rows until it gives false, and appends their cells
/// to the columns: in up to so many threads, of which one fills a batch while others take that
/// before it, each the cells of one column. Throws the InputError of the first cell in the file
/// that cannot be taken.
void readInBatches(std::vector<ColumnReading>& columns, const Table& table, unsigned jobs,
                   const std::function<bool(RowBatch&)>& fill);

}  // namespace vorm::evaluation
