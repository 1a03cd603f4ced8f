#include "judged_formula.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/evaluator/node_evaluation.hpp>
#include <vorm/evaluation/evaluator/node_meaning.hpp>
#include <vorm/evaluation/evaluator/recorded_span.hpp>
#include <vorm/evaluation/evaluator/sub_formulas.hpp>
#include <vorm/evaluation/evaluator/truth_writer.hpp>
#include <vorm/evaluation/time/window_end.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

using assessments::Expression;
using assessments::support::infinity;
using assessments::support::looksBack;
using assessments::support::nextTime;
using assessments::support::previousTime;
using assessments::support::windowOf;

// Causes are looked for by recursion.
constexpr std::size_t mostLevels = 1000;

bool isLogic(const Expression& formula) {
    const NodeRole role = roleOf(formula);
    return role != NodeRole::Term && role != NodeRole::Comparison;
}

bool hasSignal(const Expression& formula) {
    return assessments::support::anyNode(formula, [](const Expression& tree) {
        return boost::get<assessments::variable>(&tree) != nullptr;
    });
}

// What a window to the end of the recording looks at.
CountedSpan seenBy(const Expression& formula, const SignalLookup& signals) {
    const CountedSpan all{-infinity, infinity};
    return boost::apply_visitor(
        [&](const auto& node) {
            if constexpr (requires { node.b; }) {
                return node.b == toTheEnd ? lookedAtUpToTheEnd(formula, node.op, signals) : all;
            } else {
                return all;
            }
        },
        assessments::support::withoutAliases(formula));
}

std::vector<std::size_t> levelsOf(const std::vector<SubFormula>& subFormulas) {
    std::vector<std::size_t> levels;
    for (const SubFormula& sub : subFormulas) {
        std::size_t level = 0;
        for (std::size_t i = 0; i < sub.childCount; ++i) {
            level = std::max(level, levels[sub.children[i]] + 1);
        }
        levels.push_back(level);
    }
    return levels;
}

// The truth in the span, open elsewhere, and the opposite at those times.
Truth changed(const Truth& truth, const TimeSet& opposite, const CountedSpan& span) {
    TruthWriter writer;
    const auto copy = [&](const CountedSpan& part, int sign) {
        auto point = truth.TimedPointIteratorForValueAt(part.first, true);
        for (; point != truth.points.end() && point->time <= part.last; ++point) {
            writer.change(std::max(part.first, point->time),
                          static_cast<std::int8_t>(sign * point->value));
        }
        writer.openAfter(part.last);
    };
    double first = span.first;
    for (const CountedSpan& part : opposite.within(span).spans()) {
        if (first < part.first) {
            copy({first, previousTime(part.first)}, 1);
        }
        copy(part, -1);
        first = nextTime(part.last);
    }
    if (first <= span.last) {
        copy({first, span.last}, 1);
    }
    return writer.finish();
}

}  // namespace

JudgedFormula::JudgedFormula(const Expression& root, const TruthOf& truthOf, SignalLookup signals)
    : signals_(std::move(signals)) {
    SubFormulas numbered;
    const std::size_t rootNumber = numbered.numberOf(root);
    const auto& subFormulas = numbered.all();
    const auto levels = levelsOf(subFormulas);
    const auto isInner = [&](std::size_t number) {
        return isLogic(*subFormulas[number].formula) && levels[number] < mostLevels;
    };
    std::vector<bool> isNeeded(subFormulas.size());
    isNeeded[rootNumber] = true;
    for (std::size_t number = subFormulas.size(); number-- > 0;) {
        for (std::size_t i = 0;
             isNeeded[number] && isInner(number) && i < subFormulas[number].childCount; ++i) {
            isNeeded[subFormulas[number].children[i]] = true;
        }
    }
    std::vector<std::size_t> places(subFormulas.size());
    for (std::size_t number = 0; number < subFormulas.size(); ++number) {
        if (!isNeeded[number]) {
            continue;
        }
        const SubFormula& sub = subFormulas[number];
        places[number] = nodes_.size();
        JudgedNode node{sub.formula, truthOf(*sub.formula)};
        if (node.truth == nullptr) {
            node.truth = std::make_shared<const Truth>(TruthWriter().finish());
        }
        if (isInner(number)) {
            node.seen = seenBy(*sub.formula, signals_);
            node.operandCount = sub.childCount;
            std::transform(sub.children.begin(), sub.children.end(), node.operands.begin(),
                           [&](std::size_t child) { return places[child]; });
        } else {
            node.isFixed = !hasSignal(*sub.formula);
        }
        reaches_.push_back(reachOf(node));
        nodes_.push_back(std::move(node));
    }
    markWays();
}

void JudgedFormula::markWays() {
    std::vector<int> ways(nodes_.size());
    ways.back() = 1;
    for (std::size_t i = nodes_.size(); i-- > 0;) {
        JudgedNode& node = nodes_[i];
        node.isRepeated = ways[i] > 1;
        for (std::size_t j = 0; j < node.operandCount; ++j) {
            const std::size_t operand = node.operands[j];
            const NodeRole role = roleOf(*node.formula);
            const bool isEdge = role == NodeRole::Edge;
            ways[operand] = isEdge ? 2 : std::min(2, ways[operand] + ways[i]);
            nodes_[operand].isSeenBefore = nodes_[operand].isSeenBefore || node.isSeenBefore ||
                                           isEdge || role == NodeRole::Instant;
        }
    }
}

JudgedFormula::Reach JudgedFormula::reachOf(const JudgedNode& node) const {
    if (node.operandCount == 0) {
        return {};
    }
    Reach reach = reaches_[node.operands[0]];
    if (node.operandCount == 2) {
        const Reach& other = reaches_[node.operands[1]];
        reach = {std::min(reach.from, other.from), std::max(reach.to, other.to)};
    }
    const NodeRole role = roleOf(*node.formula);
    if (role == NodeRole::Instant || role == NodeRole::Edge) {
        // Nothing lies before what is known first: all that was ever known matters.
        return {-infinity, infinity};
    }
    const Expression& operation = assessments::support::withoutAliases(*node.formula);
    if (const auto* shift = boost::get<assessments::timed_unary_op>(&operation)) {
        reach.from += shift->offset;
        reach.to += shift->offset;
    } else if (const auto* window = boost::get<assessments::timedwindow_unary_op>(&operation)) {
        const auto distances = windowOf(window->op, window->a, window->b);
        reach.from += distances.first;
        reach.to += distances.last;
    } else if (const auto* until = boost::get<assessments::timedwindow_binary_op>(&operation)) {
        (looksBack(until->op) ? reach.from : reach.to) +=
            looksBack(until->op) ? -until->b : until->b;
    }
    return reach;
}

CountedSpan JudgedFormula::dependents(const CountedSpan& span) const {
    return {span.first - reaches_.back().to, span.last - reaches_.back().from};
}

bool JudgedFormula::passes(const ConditionTimes& opposite, const CountedSpan& span) const {
    const Reach& reach = reaches_.back();
    const CountedSpan seen{span.first + reach.from, span.last + reach.to};
    const Timeline timeline;
    std::vector<Value> truths;
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const JudgedNode& node = nodes_[i];
        if (node.isFixed) {
            // A window without an end looks further than any finite reach.
            truths.emplace_back(node.truth);
            continue;
        }
        if (node.operandCount == 0) {
            const auto times = opposite.find(i);
            truths.emplace_back(std::make_shared<const Truth>(
                changed(*node.truth, times == opposite.end() ? TimeSet() : times->second, seen)));
            continue;
        }
        std::vector<Value> operands;
        for (std::size_t j = 0; j < node.operandCount; ++j) {
            operands.push_back(truths[node.operands[j]]);
        }
        truths.push_back(
            evaluateNode(*node.formula, Meaning::Boolean, operands, signals_, timeline));
    }
    return TimeSet(span).where(*asTruth(truths.back()), certainlyFalse).isEmpty();
}

}  // namespace vorm::evaluation::detail
