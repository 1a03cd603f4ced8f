#include "number_summary.hpp"

#include <vorm/evaluation/text/number_text.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {

void NumberSummary::add(std::string_view text, double number) {
    ++count_;
    if (integers_.add(text)) {
        widen(integerRange_, *integerOf(text));
    }
    if (std::isnan(number)) {
        ++nans_;
    } else if (std::isinf(number)) {
        ++infinities_;
    } else {
        widen(range_, number);
        addToSum(number);
    }
}

template <class Number>
void NumberSummary::widen(std::optional<Range<Number>>& range, Number number) {
    if (!range) {
        range = Range<Number>{number, number};
    } else if (number < range->least) {
        range->least = number;
    } else if (number > range->greatest) {
        range->greatest = number;
    }
}

std::optional<NumberSummary::Integer> NumberSummary::integerOf(std::string_view text) {
    if (const auto number = numberOf<std::int64_t>(text)) {
        return *number;
    }
    const auto number = numberOf<std::uint64_t>(text);
    return number ? std::optional<Integer>(*number) : std::nullopt;
}

// A. Neumaier, "Rundungsfehleranalyse einiger Verfahren zur Summation endlicher Summen", 1974.
void NumberSummary::addToSum(double number) {
    const double sum = sum_ + number;
    lost_ += std::abs(sum_) >= std::abs(number) ? (sum_ - sum) + number : (number - sum) + sum_;
    sum_ = sum;
}

// Rounding must not lead out of the numbers.
double NumberSummary::mean(const Range<double>& range) const {
    const auto finite = static_cast<double>(count_ - nans_ - infinities_);
    return std::clamp((sum_ + lost_) / finite, range.least, range.greatest);
}

void NumberSummary::describe(SignalSurvey& survey) const {
    survey.nans = nans_;
    survey.infinities = infinities_;
    if (!range_) {
        return;
    }
    survey.least = range_->least;
    survey.greatest = range_->greatest;
    if (std::isfinite(sum_ + lost_)) {
        survey.mean = mean(*range_);
    }
    const auto toNumber = [](auto number) { return SignalSurvey::Number(number); };
    if (integers_.areIntegers() && integerRange_) {
        survey.least = std::visit(toNumber, integerRange_->least);
        survey.greatest = std::visit(toNumber, integerRange_->greatest);
    }
}

}  // namespace vorm::evaluation
