#pragma once

#include <vorm/evaluation/evaluator/truth.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <cstdint>
#include <utility>
#include <vector>

namespace vorm::evaluation::detail {

/// A set of times. Every operation is linear in the spans.
class TimeSet {
public:
    TimeSet() = default;
    explicit TimeSet(const CountedSpan& span) : spans_{span} {}
    /// In any order; they may overlap. Sorts them.
    explicit TimeSet(std::vector<CountedSpan> spans);

    /// In time order, with times that do not belong to the set between any two of them.
    const std::vector<CountedSpan>& spans() const& { return spans_; }
    std::vector<CountedSpan> spans() && { return std::move(spans_); }
    bool isEmpty() const { return spans_.empty(); }

    /// All sums of a time of the set and a number from `a` to `b`.
    TimeSet plus(double a, double b) const;

    /// The opposites of the times.
    TimeSet mirrored() const;

    TimeSet joined(const TimeSet& other) const;
    TimeSet without(const CountedSpan& span) const;

    /// The times of the set that lie in the span.
    TimeSet within(const CountedSpan& span) const;

    /// The times of the set at which the truth has that value. Logarithmic in the trace for each
    /// span, and linear in what lies in the set.
    TimeSet where(const Truth& truth, std::int8_t value) const;

    friend bool operator==(const TimeSet&, const TimeSet&) = default;

private:
    std::vector<CountedSpan> spans_;
};

}  // namespace vorm::evaluation::detail
