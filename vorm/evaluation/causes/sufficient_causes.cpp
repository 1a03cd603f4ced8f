#include "sufficient_causes.hpp"

#include <vorm/evaluation/causes/repairs.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace vorm::evaluation::detail {
namespace {

// Whether changes may have effects that the way down to them does not show.
bool mayHaveOtherEffects(const JudgedFormula& formula, const Repair& repair) {
    return std::any_of(repair.opposite.begin(), repair.opposite.end(), [&](const auto& condition) {
        const JudgedNode& node = formula.nodes()[condition.first];
        return node.isRepeated || node.isSeenBefore;
    });
}

ConditionTimes without(const ConditionTimes& conditions, std::size_t condition,
                       const CountedSpan& span) {
    ConditionTimes rest = conditions;
    rest[condition] = rest[condition].without(span);
    if (rest[condition].isEmpty()) {
        rest.erase(condition);
    }
    return rest;
}

// Leaves out, one after the other, what is not needed.
ConditionTimes minimal(const JudgedFormula& formula, ConditionTimes conditions,
                       const CountedSpan& failure) {
    // Of what has effects of both kinds, some may be needed for others only.
    for (bool isMinimal = false; !isMinimal;) {
        isMinimal = true;
        const ConditionTimes given = conditions;
        for (const auto& [condition, times] : given) {
            for (const CountedSpan& span : spansOf(*formula.nodes()[condition].truth, times)) {
                ConditionTimes fewer = without(conditions, condition, span);
                const CountedSpan dependents = formula.dependents(span);
                const CountedSpan concerned{std::max(failure.first, dependents.first),
                                            std::min(failure.last, dependents.last)};
                if (concerned.first > concerned.last || formula.passes(fewer, concerned)) {
                    conditions = std::move(fewer);
                    isMinimal = false;
                }
            }
        }
    }
    return conditions;
}

std::vector<std::size_t> conditionsOf(const ConditionTimes& times) {
    std::vector<std::size_t> conditions;
    for (const auto& [condition, when] : times) {
        conditions.push_back(condition);
    }
    return conditions;
}

// How many sets of conditions there are that do not have all of the chosen ones.
std::size_t othersAmong(const Repairs& repairs, const ConditionTimes& chosen) {
    const auto known = conditionsOf(chosen);
    std::set<std::vector<std::size_t>> others;
    for (const Repair& repair : repairs.ways) {
        const auto conditions = conditionsOf(repair.opposite);
        if (!std::includes(conditions.begin(), conditions.end(), known.begin(), known.end())) {
            others.insert(conditions);
        }
    }
    return others.size();
}

// The first way whose changes have the effect that they are to have.
std::optional<ConditionTimes> sufficient(const JudgedFormula& formula, const Repairs& repairs,
                                         const CountedSpan& failure) {
    for (const Repair& repair : repairs.ways) {
        const bool isInDoubt = mayHaveOtherEffects(formula, repair);
        if (isInDoubt && !formula.passes(repair.opposite, failure)) {
            continue;
        }
        return isInDoubt || repair.mayHaveSpare ? minimal(formula, repair.opposite, failure)
                                                : repair.opposite;
    }
    return std::nullopt;
}

}  // namespace

std::vector<CountedSpan> spansOf(const Truth& truth, const TimeSet& times) {
    std::vector<CountedSpan> spans = times.where(truth, certainlyFalse).spans();
    const TimeSet whereTrue = times.where(truth, certainlyTrue);
    spans.insert(spans.end(), whereTrue.spans().begin(), whereTrue.spans().end());
    std::sort(spans.begin(), spans.end(),
              [](const CountedSpan& a, const CountedSpan& b) { return a.first < b.first; });
    return spans;
}

SufficientCauses sufficientCauses(const JudgedFormula& formula, const CountedSpan& span) {
    const CountedSpan beginning{span.first, span.first};
    for (const auto& [failure, extent] :
         {std::pair(span, CauseExtent::Whole), std::pair(beginning, CauseExtent::Beginning)}) {
        const Repairs repairs = repairsOf(formula, TimeSet(failure), false);
        if (auto conditions = sufficient(formula, repairs, failure)) {
            const std::size_t others = othersAmong(repairs, *conditions);
            return {std::move(*conditions), extent, others, !repairs.areAll};
        }
    }
    const Repairs repairs = repairsOf(formula, TimeSet(span), false);
    return {repairs.ways.empty() ? ConditionTimes() : repairs.ways.front().opposite,
            CauseExtent::Part, 0, false};
}

}  // namespace vorm::evaluation::detail
