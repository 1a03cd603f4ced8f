#include "gaps.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/causes/until_waits.hpp>
#include <vorm/evaluation/evaluator/mirrored.hpp>

#include <boost/variant/static_visitor.hpp>

#include <algorithm>

namespace vorm::evaluation::detail {
namespace {

using namespace assessments;
using assessments::support::infinity;
using assessments::support::nextTime;
using assessments::support::previousTime;

// The times at which the operands of an operator are looked at, from those of the operator.
class Seen : public boost::static_visitor<TimeSet> {
public:
    explicit Seen(const TimeSet& times) : times_(times) {}

    TimeSet operator()(const unary_op& node) const {
        const bool isEdge =
            assessments::support::familyOf(node.op) == assessments::support::OperatorFamily::Edge;
        return isEdge ? times_.joined(beside(1)) : times_;
    }
    TimeSet operator()(const timed_unary_op& node) const {
        return node.op == VORM_OP::Shift ? times_.plus(node.offset, node.offset)
                                         : beside(node.offset);
    }
    TimeSet operator()(const timedwindow_unary_op& node) const {
        const auto window = assessments::support::windowOf(node.op, node.a, node.b);
        return times_.plus(window.first, window.last);
    }
    template <class Node>
    TimeSet operator()(const Node&) const {
        return times_;
    }

private:
    TimeSet beside(double direction) const {
        std::vector<CountedSpan> spans;
        for (const CountedSpan& span : times_.spans()) {
            spans.push_back(direction >= 0
                                ? CountedSpan{previousTime(span.first), previousTime(span.last)}
                                : CountedSpan{nextTime(span.first), nextTime(span.last)});
        }
        return TimeSet(std::move(spans));
    }

    const TimeSet& times_;
};

struct UntilSeen {
    TimeSet condition;
    TimeSet goal;
};

// Up to the goal that comes for certain, but not beyond where the condition breaks for certain.
UntilSeen seenByUntil(const TimeSet& times, const Truth& condition, const Truth& goal, double a,
                      double b) {
    UntilSeen seen;
    for (const CountedSpan& span : times.spans()) {
        const TimeSet from(span);
        const TimeSet broken = TimeSet({span.last, span.last + b}).where(condition, certainlyFalse);
        double breaks = infinity;
        if (!broken.isEmpty()) {
            breaks = broken.spans().front().first;
        }
        const CountedSpan intact{-infinity, breaks};
        const UntilWaits found(from, from.plus(a, b).where(goal, certainlyTrue), a, b);
        TimeSet toGoal = found.missed.plus(a, b);
        for (const UntilWaits::Wait& wait : found.waits) {
            toGoal =
                toGoal.joined(TimeSet(CountedSpan{wait.times.first + a, previousTime(wait.goal)}));
        }
        seen.goal = seen.goal.joined(toGoal.within(intact));
        seen.condition = seen.condition.joined(
            found.waitedThrough(a).joined(found.missed.plus(0, b)).within(intact));
    }
    return seen;
}

UntilSeen seenBy(const timedwindow_binary_op& until, const TimeSet& times,
                 const JudgedFormula& formula, const JudgedNode& node) {
    const Truth& condition = *formula.nodes()[node.operands[0]].truth;
    const Truth& goal = *formula.nodes()[node.operands[1]].truth;
    if (!assessments::support::looksBack(until.op)) {
        return seenByUntil(times, condition, goal, until.a, until.b);
    }
    const UntilSeen seen =
        seenByUntil(times.mirrored(), mirrored(condition), mirrored(goal), until.a, until.b);
    return {seen.condition.mirrored(), seen.goal.mirrored()};
}

// When the conditions are open where the formula is.
ConditionTimes openConditions(const JudgedFormula& formula, const TimeSet& times) {
    std::vector<TimeSet> asked(formula.nodes().size());
    asked.back() = times;
    ConditionTimes conditions;
    for (std::size_t i = asked.size(); i-- > 0;) {
        const JudgedNode& node = formula.nodes()[i];
        const TimeSet open = asked[i].where(*node.truth, isOpen);
        if (open.isEmpty()) {
            continue;
        }
        if (node.operandCount == 0) {
            conditions.emplace(i, open);
            continue;
        }
        const Expression& operation = assessments::support::withoutAliases(*node.formula);
        const auto ask = [&](std::size_t index, const TimeSet& when) {
            asked[node.operands[index]] = asked[node.operands[index]].joined(when);
        };
        if (const auto* until = boost::get<timedwindow_binary_op>(&operation)) {
            const UntilSeen seen = seenBy(*until, open, formula, node);
            ask(0, seen.condition.within(node.seen));
            ask(1, seen.goal.within(node.seen));
            continue;
        }
        for (std::size_t j = 0; j < node.operandCount; ++j) {
            ask(j, boost::apply_visitor(Seen(open), operation).within(node.seen));
        }
    }
    return conditions;
}

// Adds the gaps of a signal that have times in common with the span.
void addGapsIn(const CountedSpan& span, const std::string& signal, const TracePieces& pieces,
               std::vector<Gap>& gaps) {
    auto after = std::partition_point(pieces.begin(), pieces.end(), [&](const TimedTrace& piece) {
        return piece.getStartTime() <= span.first;
    });
    while (true) {
        const double from =
            after == pieces.begin() ? -infinity : std::prev(after)->getLastKnownTime();
        const bool isLast = after == pieces.end();
        const Gap gap{signal, from, isLast ? infinity : after->getStartTime()};
        const bool isNew = std::find(gaps.begin(), gaps.end(), gap) == gaps.end();
        if (isNew && nextTime(from) <= span.last && span.first <= previousTime(gap.to)) {
            gaps.push_back(gap);
        }
        if (isLast || gap.to > span.last) {
            return;
        }
        ++after;
    }
}

void addGaps(const Expression& condition, const TimeSet& times, const PiecesOf& piecesOf,
             std::vector<Gap>& gaps) {
    struct Asked {
        const Expression* formula;
        TimeSet times;
    };
    std::vector<Asked> pending{{&condition, times}};
    while (!pending.empty()) {
        const Asked asked = std::move(pending.back());
        pending.pop_back();
        const Expression& operation = assessments::support::withoutAliases(*asked.formula);
        if (const auto* signal = boost::get<variable>(&operation)) {
            for (const CountedSpan& span : asked.times.spans()) {
                addGapsIn(span, signal->name, piecesOf(*signal), gaps);
            }
            continue;
        }
        const TimeSet seen = boost::apply_visitor(Seen(asked.times), operation);
        const auto operands = static_cast<std::ptrdiff_t>(pending.size());
        assessments::support::forEachChild<ModuloAliases>(operation, [&](const Expression& child) {
            pending.push_back({&child, seen});
        });
        std::reverse(pending.begin() + operands, pending.end());
    }
}

}  // namespace

std::vector<Gap> gapsBehind(const JudgedFormula& formula, const TimeSet& times,
                            const PiecesOf& piecesOf) {
    std::vector<Gap> gaps;
    for (const auto& [condition, open] : openConditions(formula, times)) {
        addGaps(*formula.nodes()[condition].formula, open, piecesOf, gaps);
    }
    return gaps;
}

}  // namespace vorm::evaluation::detail
