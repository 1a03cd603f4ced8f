#pragma once

#include <vorm/evaluation/drawing/signal_drawing.hpp>

#include <vector>

namespace vorm::evaluation {

/// From the lower to the upper edge of a plot: all levels of a signal that has some, else the least
/// to the greatest of the values that are finite, or a stretch around the only one.
class ValueScale {
public:
    ValueScale(const SignalDrawing& signal, const std::vector<double>& values);

    double least() const { return least_; }
    double greatest() const { return greatest_; }

    /// Where a value stands: 0 at the lower edge, 1 at the upper one, beyond which no value goes.
    double share(double value) const;

private:
    double least_ = 0;
    double greatest_ = 1;
};

}  // namespace vorm::evaluation
