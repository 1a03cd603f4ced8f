#pragma once

// Reads the wanted signals of one table.

#include <vorm/evaluation/recording/missing_values.hpp>
#include <vorm/evaluation/recording/signal_builder.hpp>
#include <vorm/evaluation/recording/signal_selection.hpp>
#include <vorm/evaluation/recording/time_order.hpp>
#include <vorm/evaluation/table/table.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <memory>
#include <vector>

namespace vorm::evaluation {

/// The column of one signal while it is read.
struct ColumnReading {
    ColumnHeader header;
    const SignalLayout* declaration;  ///< or null
    SignalRules rules;
    std::size_t cell;  ///< of each row
    MissingValues missing;
    TimeOrder order;                         ///< of its own rows, where each row is of one signal
    std::unique_ptr<SignalBuilder> builder;  ///< null before the first value

    /// Takes a cell that is not empty.
    void append(double time, const Cell& value) {
        if (builder && missing.isSample(value)) [[likely]] {
            builder->append(time, value);
        } else {
            appendUnsure(time, value);
        }
    }
    void appendUnsure(double time, const Cell& value);
    /// The type and the pieces with the bias of the timeline; `name` is that of a nameless
    /// enumeration. Throws InputError where the timeline cannot tell two samples apart.
    SignalBuilder::Result finish(const std::string& name, const Timeline& timeline);
};

/// What one table has, and what was read of it.
struct TableSignals {
    RecordingFile file;
    std::vector<ColumnHeader> available;
    std::vector<ColumnReading> columns;
    std::optional<CountedSpan> span;    ///< of its rows' times, without a bias
    std::vector<std::string> remarks;   ///< on how it is written
    std::vector<std::string> warnings;  ///< what was left out or changed
};

/// Reads up to the given number of rows, none where no signal of the table is wanted. Time 0 is at
/// the origin; the timeline has no bias. Throws InputError.
TableSignals readTable(Table& table, ExactTime origin, const Timeline& timeline,
                       const SignalSelection& selection, const RecordingLayout& layout,
                       std::size_t maximumRows);

/// What a table has, where its rows are not read.
TableSignals unreadTable(const Table& table);

}  // namespace vorm::evaluation
