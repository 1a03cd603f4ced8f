#include "until_waits.hpp"

#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation::detail {

using assessments::support::previousTime;

UntilWaits::UntilWaits(const TimeSet& times, const TimeSet& goal, double a, double b)
    : missed(times) {
    std::vector<CountedSpan> reached;
    for (const CountedSpan& come : goal.spans()) {
        const CountedSpan waiting{come.first - b, previousTime(come.first - a)};
        for (const CountedSpan& span : missed.within(waiting).spans()) {
            waits.push_back({span, come.first});
        }
        const CountedSpan there{come.first - a, come.last - a};
        for (const CountedSpan& span : missed.within(there).spans()) {
            reached.push_back(span);
        }
        missed = missed.without(waiting).without(there);
    }
    atOnce = TimeSet(std::move(reached));
}

TimeSet UntilWaits::waitedThrough(double a) const {
    std::vector<CountedSpan> through;
    for (const Wait& wait : waits) {
        through.push_back(
            {wait.times.first, std::max(wait.times.last + a, previousTime(wait.goal))});
    }
    return TimeSet(std::move(through)).joined(atOnce.plus(0, a)).joined(missed.plus(0, a));
}

}  // namespace vorm::evaluation::detail
