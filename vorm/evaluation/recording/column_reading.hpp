#pragma once

#include <vorm/evaluation/recording/missing_values.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/recording/signal_builder.hpp>
#include <vorm/evaluation/recording/time_order.hpp>
#include <vorm/evaluation/table/column_header.hpp>

#include <cstddef>
#include <memory>
#include <string>

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

}  // namespace vorm::evaluation
