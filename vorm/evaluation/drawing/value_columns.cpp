#include "value_columns.hpp"

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

// Between two samples, or from the last one to the end of its piece.
struct Stretch {
    double begin;
    double end;
    double first;
    double last;

    double at(double time) const {
        // The ends as they are: an infinite value times zero would be a NaN.
        if (time == begin || first == last) {
            return first;
        }
        if (time == end) {
            return last;
        }
        const double share = (time - begin) / (end - begin);
        return first * (1 - share) + last * share;
    }
};

class Columns {
public:
    Columns(const CountedSpan& span, std::size_t count)
        : span_(span), width_((span.last - span.first) / static_cast<double>(count)) {
        ranges_.resize(count);
    }

    // What is held belongs to the times before its end.
    void add(const Stretch& stretch, bool isHeld) {
        if (stretch.end < span_.first || stretch.begin > span_.last) {
            return;
        }
        const std::size_t last = columnOf(stretch.end);
        for (std::size_t column = columnOf(stretch.begin); column <= last; ++column) {
            const double begin = std::max(beginOf(column), stretch.begin);
            const double end = std::min(beginOf(column + 1), stretch.end);
            const bool isBehind = isHeld && begin >= stretch.end && stretch.begin < stretch.end;
            if (begin <= end && !isBehind) {
                include(column, stretch.at(begin));
                include(column, stretch.at(end));
            }
        }
    }

    std::vector<std::optional<ValueRange>> take() { return std::move(ranges_); }

private:
    double beginOf(std::size_t column) const {
        return column == ranges_.size() ? span_.last
                                        : span_.first + static_cast<double>(column) * width_;
    }

    std::size_t columnOf(double time) const {
        const double column = std::floor((time - span_.first) / width_);
        return static_cast<std::size_t>(
            std::clamp(column, 0.0, static_cast<double>(ranges_.size() - 1)));
    }

    void include(std::size_t column, double value) {
        if (std::isnan(value)) {
            return;
        }
        auto& range = ranges_[column];
        range = range ? ValueRange{std::min(range->least, value), std::max(range->greatest, value)}
                      : ValueRange{value, value};
    }

    const CountedSpan span_;
    const double width_;
    std::vector<std::optional<ValueRange>> ranges_;
};

}  // namespace

std::vector<std::optional<ValueRange>> valueColumns(const SignalDrawing& drawing,
                                                    const CountedSpan& span, std::size_t columns) {
    const bool isHeld = drawing.kind != DrawingKind::Lines;
    Columns filled(span, columns);
    for (const DrawnPiece& piece : drawing.pieces) {
        for (std::size_t i = 0; i < piece.times.size(); ++i) {
            const bool isLast = i + 1 == piece.times.size();
            const double value = piece.values[i];
            filled.add({piece.times[i], isLast ? piece.end : piece.times[i + 1], value,
                        isHeld || isLast ? value : piece.values[i + 1]},
                       isHeld && !isLast);
        }
    }
    return filled.take();
}

}  // namespace vorm::evaluation
