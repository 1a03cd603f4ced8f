#pragma once

// The least, the mean and the greatest of the numbers of a column; included by its survey.

#include <vorm/evaluation/recording/recording_survey.hpp>
#include <vorm/evaluation/signal/integer_range.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace vorm::evaluation {

class NumberSummary {
public:
    /// Takes the number of a cell with that text in. Of those that are not finite only their number
    /// is kept.
    void add(std::string_view text, double number);

    std::size_t count() const { return count_; }
    const IntegerRange& integers() const { return integers_; }

    /// Fills in what a survey tells about numbers.
    void describe(SignalSurvey& survey) const;

private:
    template <class Number>
    struct Range {
        Number least;
        Number greatest;
    };
    // Unsigned where no signed integer is as great, so that the order of variants is that of
    // numbers.
    using Integer = std::variant<std::int64_t, std::uint64_t>;

    template <class Number>
    static void widen(std::optional<Range<Number>>& range, Number number);
    static std::optional<Integer> integerOf(std::string_view text);
    void addToSum(double number);
    double mean(const Range<double>& range) const;

    std::size_t count_ = 0;
    std::size_t nans_ = 0;
    std::size_t infinities_ = 0;
    IntegerRange integers_;
    std::optional<Range<Integer>> integerRange_;
    std::optional<Range<double>> range_;
    double sum_ = 0;
    double lost_ = 0;  // what rounding took from the sum
};

}  // namespace vorm::evaluation
