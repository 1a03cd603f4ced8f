#pragma once

#include <vorm/evaluation/causes/cause_extent.hpp>
#include <vorm/evaluation/causes/judged_formula.hpp>

#include <cstddef>
#include <vector>

namespace vorm::evaluation::detail {

/// Conditions, each with the spans of time in which it is to blame.
struct SufficientCauses {
    ConditionTimes conditions;
    CauseExtent extent = CauseExtent::Whole;
    std::size_t others = 0;  ///< how many other sets, of other conditions, there are
    bool areMore = false;    ///< whether there may be yet more
};

/// The spans in which the truth has one certain value, as far as they lie in the times; in time
/// order.
std::vector<CountedSpan> spansOf(const Truth& truth, const TimeSet& times);

/// Why a formula that is certainly false throughout the span fails there. If the conditions were
/// the opposite of what they are in the spans named, it would fail at none of its times, nor would
/// it pass with any one of the spans left out. Where several sets of conditions do so, it is the
/// first one of repairsOf. Linear in the samples that the formula looks at for the span, and times
/// the number of spans where a condition appears several times in the formula.
SufficientCauses sufficientCauses(const JudgedFormula& formula, const CountedSpan& span);

}  // namespace vorm::evaluation::detail
