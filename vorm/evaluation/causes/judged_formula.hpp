#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/causes/time_set.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <vector>

namespace vorm::evaluation::detail {

/// The truth of a sub-formula; null for one that has no samples.
using TruthOf = std::function<SharedTruth(const assessments::Expression&)>;

/// A sub-formula of truth, each distinct one (under ModuloAliases) once.
struct JudgedNode {
    const assessments::Expression* formula;  ///< with its aliases
    SharedTruth truth;
    std::array<std::size_t, 2> operands{};  ///< nodes before this one
    std::size_t operandCount = 0;           ///< 0 for a condition
    CountedSpan seen{-assessments::support::infinity,
                     assessments::support::infinity};  ///< what a window may look at
    bool isFixed = false;                              ///< a condition that no signal can change
    bool isRepeated = false;    ///< whether more than one way leads to it from the root
    bool isSeenBefore = false;  ///< whether what it was just before some time matters
};

/// Conditions by their number, and when.
using ConditionTimes = std::map<std::size_t, TimeSet>;

/// A formula as logic over conditions, with the truth of all its parts. Conditions are comparisons
/// and bool signals, whatever they are made of; so are parts that lie too deep to be looked into.
class JudgedFormula {
public:
    /// The signals are looked at as long as the formula is. Linear in the formula.
    JudgedFormula(const assessments::Expression& root, const TruthOf& truthOf,
                  SignalLookup signals);

    /// Operands before what is made of them; the root is the last one.
    const std::vector<JudgedNode>& nodes() const { return nodes_; }
    std::size_t root() const { return nodes_.size() - 1; }

    /// Whether the formula is nowhere certainly false in the span once the conditions are the
    /// opposite of what they are at the times named. Linear in the samples that the formula looks
    /// at for that span; these are all where it looks at what was just before.
    bool passes(const ConditionTimes& opposite, const CountedSpan& span) const;

    /// The times at which the formula may depend on what its conditions are in the span.
    CountedSpan dependents(const CountedSpan& span) const;

private:
    /// Where a node looks: from one distance to another.
    struct Reach {
        double from = 0;
        double to = 0;
    };

    void markWays();
    Reach reachOf(const JudgedNode& node) const;

    SignalLookup signals_;
    std::vector<JudgedNode> nodes_;
    std::vector<Reach> reaches_;  // of the nodes
};

}  // namespace vorm::evaluation::detail
