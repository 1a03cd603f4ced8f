#pragma once

#include <vorm/evaluation/evaluator/truth.hpp>

#include <cstdint>
#include <utility>
#include <vector>

namespace vorm::evaluation::detail {

/// From the first to the last time of it, as traces count. Spans of doubles have a last time, since
/// doubles are discrete: what ends just before 3 ends at the double before 3.
struct ClosedSpan {
    double first;
    double last;

    friend bool operator==(const ClosedSpan&, const ClosedSpan&) = default;
};

/// A set of times. Every operation is linear in the spans.
class TimeSet {
public:
    TimeSet() = default;
    explicit TimeSet(const ClosedSpan& span) : spans_{span} {}
    /// In any order; they may overlap. Sorts them.
    explicit TimeSet(std::vector<ClosedSpan> spans);

    /// In time order, with times that do not belong to the set between any two of them.
    const std::vector<ClosedSpan>& spans() const& { return spans_; }
    std::vector<ClosedSpan> spans() && { return std::move(spans_); }
    bool isEmpty() const { return spans_.empty(); }

    /// All sums of a time of the set and a number from `a` to `b`.
    TimeSet plus(double a, double b) const;

    TimeSet joined(const TimeSet& other) const;
    TimeSet without(const ClosedSpan& span) const;

    /// The times of the set that lie in the span.
    TimeSet within(const ClosedSpan& span) const;

    /// The times of the set at which the truth has that value. Logarithmic in the trace for each
    /// span, and linear in what lies in the set.
    TimeSet where(const Truth& truth, std::int8_t value) const;

    friend bool operator==(const TimeSet&, const TimeSet&) = default;

private:
    std::vector<ClosedSpan> spans_;
};

}  // namespace vorm::evaluation::detail
