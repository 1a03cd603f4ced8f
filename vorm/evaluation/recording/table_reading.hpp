#pragma once

// Reads the wanted signals of one table.

#include <vorm/evaluation/recording/column_reading.hpp>
#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/recording/signal_selection.hpp>
#include <vorm/evaluation/table/table.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <vector>

namespace vorm::evaluation {

/// What one table has, and what was read of it.
struct TableSignals {
    RecordingFile file;
    std::vector<ColumnHeader> available;
    std::vector<ColumnReading> columns;
    std::optional<CountedSpan> span;    ///< of its rows' times, without a bias
    std::vector<std::string> remarks;   ///< on how it is written
    std::vector<std::string> warnings;  ///< what was left out or changed
};

/// Reads up to the greatest number of rows in up to so many threads as the options say. Time 0 is
/// at the origin; the timeline has no bias. Throws InputError.
TableSignals readTable(Table& table, ExactTime origin, const Timeline& timeline,
                       const SignalSelection& selection, const RecordingLayout& layout,
                       const ReadingOptions& options);

/// What a table has, where its rows are not read.
TableSignals unreadTable(const Table& table);

}  // namespace vorm::evaluation
