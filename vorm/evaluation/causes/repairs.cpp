#include "repairs.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/causes/until_waits.hpp>

#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

using namespace assessments;
using assessments::support::nextTime;
using assessments::support::previousTime;

using Ways = std::vector<Repair>;

constexpr std::size_t mostWays = 16;

std::int8_t truthValue(bool value) {
    return value ? certainlyTrue : certainlyFalse;
}

bool hasAllConditionsOf(const Repair& more, const Repair& less) {
    return std::all_of(less.opposite.begin(), less.opposite.end(), [&](const auto& condition) {
        return more.opposite.contains(condition.first);
    });
}

// Of two ways that are the same the first one stays.
Ways withoutLarger(const Ways& ways) {
    Ways minimal;
    for (const Repair& way : ways) {
        const auto isBetter = [&](const Repair& other) {
            const bool isSmaller = other.opposite.size() < way.opposite.size();
            return isSmaller ? hasAllConditionsOf(way, other)
                             : &other < &way && other.opposite == way.opposite;
        };
        if (std::none_of(ways.begin(), ways.end(), isBetter)) {
            minimal.push_back(way);
        }
    }
    return minimal;
}

Repair both(const Repair& left, const Repair& right) {
    Repair joined = left;
    joined.mayHaveSpare = left.mayHaveSpare || right.mayHaveSpare;
    for (const auto& [condition, times] : right.opposite) {
        const auto [known, isNew] = joined.opposite.try_emplace(condition, times);
        if (!isNew) {
            known->second = known->second.joined(times);
            joined.mayHaveSpare = true;
        }
    }
    return joined;
}

// A node, and when it has a value that it is not to have.
struct Question {
    const JudgedNode& node;
    const TimeSet& times;  // it has the value at all of them
    bool value;
};

class Search {
public:
    explicit Search(const JudgedFormula& formula) : formula_(formula) {
        for (const JudgedNode& node : formula.nodes()) {
            extends_.push_back({extends(node, false), extends(node, true)});
        }
    }

    Ways ways(std::size_t number, const TimeSet& times, bool value);
    bool foundAll() const { return foundAll_; }

private:
    struct OfNode;

    // Whether a node that has the value throughout a span is to be asked about the whole of it,
    // where one time would do: what changes all of it does not take more conditions.
    bool extends(const JudgedNode& node, bool value) const;

    Ways either(Ways preferred, const Ways& other) {
        preferred.insert(preferred.end(), other.begin(), other.end());
        return limited(withoutLarger(preferred));
    }

    Ways all(const Ways& left, const Ways& right) {
        Ways joined;
        for (const Repair& l : left) {
            for (const Repair& r : right) {
                joined.push_back(both(l, r));
            }
        }
        return limited(withoutLarger(joined));
    }

    Ways limited(Ways ways) {
        if (ways.size() > mostWays) {
            ways.resize(mostWays);
            foundAll_ = false;
        }
        return ways;
    }

    const JudgedFormula& formula_;
    std::vector<std::array<bool, 2>> extends_;  // of the nodes, for false and true
    bool foundAll_ = true;
};

struct Search::OfNode : boost::static_visitor<Ways> {
    Search& search;
    const Question& question;

    OfNode(Search& owner, const Question& asked) : search(owner), question(asked) {}

    Ways operator()(const unary_op&) const { return operand(0, question.times, !question.value); }

    Ways operator()(const binary_op& node) const {
        const bool isDisjunction = node.op == VORM_OP::Or;
        const Ways left = operand(0, question.times, question.value);
        const Ways right = operand(1, question.times, question.value);
        if (isDisjunction == question.value) {
            return search.all(left, right);
        }
        return isDisjunction ? search.either(right, left) : search.either(left, right);
    }

    Ways operator()(const timed_unary_op& node) const {
        if (node.op == VORM_OP::Shift) {
            return operand(0, question.times.plus(node.offset, node.offset), question.value);
        }
        return operand(0, node.offset >= 0 ? justBefore() : justAfter(), question.value);
    }

    Ways operator()(const timedwindow_unary_op& node) const {
        const bool isDisjunction = node.op == VORM_OP::Eventually;
        return isDisjunction == question.value
                   ? operand(0, question.times.plus(node.a, node.b), question.value)
                   : atSomeTime(0, question.times, node.a, node.b);
    }

    Ways operator()(const timedwindow_binary_op& node) const {
        return question.value ? untilIsNotTrue(node.a, node.b) : untilIsNotFalse(node.a, node.b);
    }

    template <class Node>
    Ways operator()(const Node&) const {
        return {};  // no logic
    }

private:
    const Truth& truth(std::size_t index) const {
        return *search.formula_.nodes()[question.node.operands[index]].truth;
    }

    Ways operand(std::size_t index, const TimeSet& times, bool value) const {
        return search.ways(question.node.operands[index], times, value);
    }

    // Of an operand that has the value throughout the windows of all these times.
    Ways atSomeTime(std::size_t index, const TimeSet& times, double a, double b) const {
        if (search.extends_[question.node.operands[index]][question.value ? 1 : 0]) {
            return operand(index, times.plus(a, b), question.value);
        }
        const Ways ways = operand(index, times.plus(b, b), question.value);
        return a < b ? withSpare(ways) : ways;
    }

    TimeSet justBefore() const {
        const auto& points = truth(0).points;
        const auto known = std::find_if(points.begin(), points.end(),
                                        [](const auto& point) { return point.value != isOpen; });
        std::vector<CountedSpan> before;
        for (const CountedSpan& span : question.times.spans()) {
            // Nothing lies before what is known first.
            const double first = span.first == known->time ? span.first : previousTime(span.first);
            before.push_back({first, std::max(first, previousTime(span.last))});
        }
        return TimeSet(std::move(before));
    }

    TimeSet justAfter() const {
        std::vector<CountedSpan> after;
        for (const CountedSpan& span : question.times.spans()) {
            after.push_back({nextTime(span.first), nextTime(span.last)});
        }
        return TimeSet(std::move(after));
    }

    // Where the goal is reached, or may be, what breaks before it; elsewhere that it is not.
    Ways untilIsNotFalse(double a, double b) const {
        const TimeSet seen = question.times.plus(a, b);
        const TimeSet goal =
            seen.where(truth(1), isOpen).joined(seen.where(truth(1), certainlyTrue));
        const UntilWaits found(question.times, goal, a, b);
        const Ways ways =
            search.all(operand(0, found.waitedThrough(a), false), atGoal(found.missed, a, b));
        if (goal.isEmpty()) {
            return ways;
        }
        const Ways sooner =
            search.all(operand(0, question.times.plus(0, a), false), atGoal(question.times, a, a));
        return search.either(found.missed.isEmpty() ? ways : withSpare(ways), sooner);
    }

    // The goal comes as soon as it may.
    Ways atGoal(const TimeSet& times, double a, double b) const {
        const bool extends = search.extends_[question.node.operands[1]][0];
        const Ways ways = operand(1, extends ? times.plus(a, b) : times.plus(a, a), false);
        return extends && a < b ? ways : withSpare(ways);
    }

    // Each time at which the goal is reached, or that the condition holds at all.
    Ways untilIsNotTrue(double a, double b) const {
        const TimeSet kept = question.times.plus(0, b).where(truth(0), certainlyTrue);
        std::vector<CountedSpan> reached;
        for (const CountedSpan& span : kept.spans()) {
            const TimeSet goals = question.times.within(span).plus(a, b);
            for (const CountedSpan& goal :
                 goals.within({-assessments::support::infinity, nextTime(span.last)}).spans()) {
                reached.push_back(goal);
            }
        }
        return search.either(operand(1, TimeSet(std::move(reached)), true),
                             withSpare(operand(0, question.times, true)));
    }

    static Ways withSpare(Ways ways) {
        for (Repair& way : ways) {
            way.mayHaveSpare = true;
        }
        return ways;
    }
};

bool Search::extends(const JudgedNode& node, bool value) const {
    const auto operand = [&](std::size_t index, bool wanted) -> bool {
        return extends_[node.operands[index]][wanted ? 1 : 0];
    };
    if (node.operandCount == 0) {
        return true;
    }
    const Expression& operation = assessments::support::withoutAliases(*node.formula);
    if (const auto* either = boost::get<binary_op>(&operation)) {
        return (either->op == VORM_OP::Or) != value && operand(0, value) && operand(1, value);
    }
    if (const auto* window = boost::get<timedwindow_unary_op>(&operation)) {
        return (window->op == VORM_OP::Eventually) != value && operand(0, value);
    }
    if (node.operandCount == 1) {
        const bool isNegation = boost::get<unary_op>(&operation) != nullptr;
        return operand(0, value != isNegation);
    }
    return false;
}

Ways Search::ways(std::size_t number, const TimeSet& times, bool value) {
    const JudgedNode& node = formula_.nodes()[number];
    const TimeSet concerned = times.where(*node.truth, truthValue(value));
    if (concerned.isEmpty()) {
        return {Repair()};
    }
    if (node.operandCount == 0) {
        return node.isFixed ? Ways() : Ways{{{{number, concerned}}, false}};
    }
    const Question question{node, concerned, value};
    return boost::apply_visitor(OfNode(*this, question),
                                assessments::support::withoutAliases(*node.formula));
}

}  // namespace

Repairs repairsOf(const JudgedFormula& formula, const TimeSet& times, bool value) {
    Search search(formula);
    Ways ways = search.ways(formula.root(), times, value);
    return {std::move(ways), search.foundAll()};
}

}  // namespace vorm::evaluation::detail
