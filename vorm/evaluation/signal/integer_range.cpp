#include "integer_range.hpp"

#include <vorm/assessments/value_types.hpp>
#include <vorm/evaluation/text/number_text.hpp>

#include <bit>
#include <limits>

namespace vorm::evaluation {
namespace {

// A double has 53 bits from the first to the last one that is set.
bool hasDouble(std::uint64_t magnitude) {
    if (magnitude == 0) {
        return true;
    }
    const int span = std::numeric_limits<std::uint64_t>::digits - std::countl_zero(magnitude) -
                     std::countr_zero(magnitude);
    return span <= std::numeric_limits<double>::digits;
}

}  // namespace

std::optional<std::uint64_t> IntegerRange::add(std::string_view text) {
    if (!areIntegers_) {
        return std::nullopt;
    }
    std::optional<std::uint64_t> bits = numberOf<std::uint64_t>(text);
    if (bits) {
        hasGreat_ |= *bits > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        hasInexact_ |= !hasDouble(*bits);
    } else if (const auto negative = numberOf<std::int64_t>(text)) {
        bits = static_cast<std::uint64_t>(*negative);
        hasNegative_ = true;
        hasInexact_ |= !hasDouble(~*bits + 1);
    }
    areIntegers_ = bits && !(hasNegative_ && hasGreat_);
    return areIntegers_ ? bits : std::nullopt;
}

std::optional<std::size_t> IntegerRange::valueType() const {
    if (!areIntegers_ || !hasInexact_) {
        return std::nullopt;
    }
    return hasGreat_ ? assessments::valueTypeIndex<std::uint64_t>
                     : assessments::valueTypeIndex<std::int64_t>;
}

}  // namespace vorm::evaluation
