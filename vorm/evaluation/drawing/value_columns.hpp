#pragma once

#include <vorm/evaluation/drawing/signal_drawing.hpp>

#include <cstddef>
#include <optional>
#include <vector>

namespace vorm::evaluation {

/// Between what the values of a signal lie.
struct ValueRange {
    double least;
    double greatest;

    friend bool operator==(const ValueRange&, const ValueRange&) = default;
};

/// The values of a signal in columns of equal length, over the times of a span that has one: what
/// it is at the samples of a column, and what is held or lies on lines there. Nothing for columns
/// in which it is not known or a NaN throughout. Linear in the samples and the columns.
std::vector<std::optional<ValueRange>> valueColumns(const SignalDrawing& drawing,
                                                    const CountedSpan& span, std::size_t columns);

}  // namespace vorm::evaluation
