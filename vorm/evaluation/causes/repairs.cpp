#include "repairs.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/causes/until_waits.hpp>
#include <vorm/evaluation/evaluator/mirrored.hpp>
#include <vorm/evaluation/time/window_end.hpp>

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
    class OfUntil;

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

Ways withSpare(Ways ways) {
    for (Repair& way : ways) {
        way.mayHaveSpare = true;
    }
    return ways;
}

// Whether there is a time whose window, which begins `a` from it, has no time that it may look at.
bool hasEmptyWindow(const TimeSet& times, double a, const CountedSpan& seen, bool looksBack) {
    const TimeSet begins = looksBack ? times.plus(-a, -a) : times.plus(a, a);
    return !(begins.within(seen) == begins);
}

// Until, and since as until in the mirror of time.
class Search::OfUntil {
public:
    OfUntil(Search& owner, const Question& asked, const timedwindow_binary_op& node)
        : search_(owner),
          question_(asked),
          isMirrored_(assessments::support::looksBack(node.op)),
          a_(node.a),
          b_(node.b),
          times_(inTime(asked.times)),
          condition_(truth(0)),
          goal_(truth(1)) {}

    Ways ways() const {
        if (question_.value) {
            return isNotTrue();
        }
        return hasEmptyWindow(question_.times, a_, question_.node.seen, isMirrored_) ? Ways()
                                                                                     : isNotFalse();
    }

private:
    TimeSet inTime(const TimeSet& times) const { return isMirrored_ ? times.mirrored() : times; }

    Truth truth(std::size_t index) const {
        const Truth& known = *search_.formula_.nodes()[question_.node.operands[index]].truth;
        return isMirrored_ ? mirrored(known) : known;
    }

    Ways operand(std::size_t index, const TimeSet& times, bool value) const {
        return search_.ways(question_.node.operands[index], inTime(times), value);
    }

    // The times that the windows from there look at.
    TimeSet seenFrom(const TimeSet& times) const {
        return inTime(inTime(times.plus(a_, b_)).within(question_.node.seen));
    }

    // Where the goal is reached, or may be, what breaks before it; elsewhere that it is not.
    Ways isNotFalse() const {
        const TimeSet seen = seenFrom(times_);
        const TimeSet goal = seen.where(goal_, isOpen).joined(seen.where(goal_, certainlyTrue));
        const UntilWaits found(times_, goal, a_, b_);
        const Ways ways =
            search_.all(operand(0, found.waitedThrough(a_), false), atGoal(found.missed));
        if (goal.isEmpty()) {
            return ways;
        }
        const Ways sooner =
            search_.all(operand(0, times_.plus(0, a_), false), atGoalAtOnce(times_));
        return search_.either(found.missed.isEmpty() ? ways : withSpare(ways), sooner);
    }

    // The goal comes as soon as it may.
    Ways atGoal(const TimeSet& times) const {
        const bool extends = search_.extends_[question_.node.operands[1]][0];
        if (!extends) {
            return atGoalAtOnce(times);
        }
        const Ways ways = operand(1, seenFrom(times), false);
        return a_ < b_ ? ways : withSpare(ways);
    }
    Ways atGoalAtOnce(const TimeSet& times) const {
        return withSpare(operand(1, times.plus(a_, a_), false));
    }

    // Each time at which the goal is reached, or that the condition holds at all.
    Ways isNotTrue() const {
        const TimeSet kept = times_.plus(0, b_).where(condition_, certainlyTrue);
        std::vector<CountedSpan> reached;
        for (const CountedSpan& span : kept.spans()) {
            const TimeSet goals = seenFrom(times_.within(span));
            for (const CountedSpan& goal :
                 goals.within({-assessments::support::infinity, nextTime(span.last)}).spans()) {
                reached.push_back(goal);
            }
        }
        return search_.either(operand(1, TimeSet(std::move(reached)), true),
                              withSpare(operand(0, times_, true)));
    }

    Search& search_;
    const Question& question_;
    bool isMirrored_;
    double a_;
    double b_;
    TimeSet times_;
    Truth condition_;
    Truth goal_;
};

struct Search::OfNode : boost::static_visitor<Ways> {
    Search& search;
    const Question& question;

    OfNode(Search& owner, const Question& asked) : search(owner), question(asked) {}

    Ways operator()(const unary_op& node) const {
        if (node.op == VORM_OP::Not) {
            return operand(0, question.times, !question.value);
        }
        // Each of two: what is now, and the opposite just before.
        const bool now = (node.op == VORM_OP::Rises) == question.value;
        const Ways nowWays = operand(0, question.times, now);
        const Ways beforeWays = operand(0, justBefore(), !now);
        return question.value ? search.either(nowWays, beforeWays)
                              : search.all(nowWays, beforeWays);
    }

    Ways operator()(const binary_op& node) const {
        const bool isImplication = node.op == VORM_OP::Implies;
        const bool isDisjunction = node.op == VORM_OP::Or || isImplication;
        const Ways left = operand(0, question.times, question.value != isImplication);
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
        const auto [first, last] = assessments::support::windowOf(node.op, node.a, node.b);
        if (assessments::support::isForSomeTime(node.op) == question.value) {
            return operand(0, inWindows(first, last), question.value);
        }
        const bool looksBack = assessments::support::looksBack(node.op);
        return hasEmptyWindow(question.times, node.a, question.node.seen, looksBack)
                   ? Ways()
                   : atSomeTime(first, last);
    }

    Ways operator()(const timedwindow_binary_op& node) const {
        return OfUntil(search, question, node).ways();
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

    TimeSet inWindows(double first, double last) const {
        return question.times.plus(first, last).within(question.node.seen);
    }

    // Of an operand that has the value throughout the windows of all the times.
    Ways atSomeTime(double first, double last) const {
        if (search.extends_[question.node.operands[0]][question.value ? 1 : 0]) {
            return operand(0, inWindows(first, last), question.value);
        }
        if (last - first >= toTheEnd) {
            return withSpare(operand(0, inWindows(first, last), question.value));
        }
        const Ways ways = operand(0, question.times.plus(last, last), question.value);
        return first < last ? withSpare(ways) : ways;
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
        const bool isImplication = either->op == VORM_OP::Implies;
        const bool isDisjunction = either->op == VORM_OP::Or || isImplication;
        return isDisjunction != value && operand(0, value != isImplication) && operand(1, value);
    }
    if (const auto* window = boost::get<timedwindow_unary_op>(&operation)) {
        return assessments::support::isForSomeTime(window->op) != value && operand(0, value);
    }
    if (node.operandCount == 1) {
        const auto* unary = boost::get<unary_op>(&operation);
        const bool isEdge = unary != nullptr && unary->op != VORM_OP::Not;
        return !isEdge && operand(0, value == (unary == nullptr));
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
