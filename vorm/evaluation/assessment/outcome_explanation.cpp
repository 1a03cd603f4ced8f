#include "outcome_explanation.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/causes/gaps.hpp>
#include <vorm/evaluation/causes/sufficient_causes.hpp>

#include <algorithm>

namespace vorm::evaluation::detail {
namespace {

using assessments::Expression;
using assessments::variable;
using assessments::support::infinity;
using assessments::support::nextTime;

std::vector<std::string> signalsIn(const Expression& formula) {
    std::vector<std::string> names;
    assessments::support::forEachNode(formula, [&](const Expression& tree) {
        const auto* signal = boost::get<variable>(&tree);
        if (signal != nullptr &&
            std::find(names.begin(), names.end(), signal->name) == names.end()) {
            names.push_back(signal->name);
        }
    });
    return names;
}

class Explainer {
public:
    /// Of an assessment that has a range and signals with samples.
    Explainer(const TypedAssessment& assessment, const NodeResults& results)
        : recording_(*assessment.recording),
          formula_(assessment.formula),
          known_(*assessment.known),
          range_(*assessment.range),
          judged_(
              formula_.tree, [&](const Expression& tree) { return results.of(tree).truth; },
              [this](const variable& signal) { return recording_.find(signal.name)->pieces; }) {}

    std::vector<FailureExplanation> failures() const {
        std::vector<FailureExplanation> explanations;
        for (const CountedSpan& span : spansThatAre(certainlyFalse)) {
            const SufficientCauses found = sufficientCauses(judged_, span);
            explanations.push_back(
                {found.extent, causesOf(found.conditions), found.others, found.areMore});
        }
        return explanations;
    }

    std::vector<std::vector<OpenReason>> openReasons() const {
        std::vector<std::vector<OpenReason>> reasons;
        for (const CountedSpan& span : spansThatAre(isOpen)) {
            reasons.push_back(reasonsFor(span));
        }
        return reasons;
    }

private:
    const Timeline& timeline() const { return recording_.timeline; }

    std::vector<CountedSpan> spansThatAre(std::int8_t value) const {
        return range_.where(*judged_.nodes().back().truth, value).spans();
    }

    std::vector<Cause> causesOf(const ConditionTimes& conditions) const {
        std::vector<Cause> causes;
        for (const auto& [number, times] : conditions) {
            const JudgedNode& condition = judged_.nodes()[number];
            const std::string text = formulaText(*condition.formula, formula_.times);
            const NamedFormula named =
                namedFormula(*condition.formula, formula_.times, formula_.names);
            const auto signals = signalsIn(*condition.formula);
            for (const CountedSpan& span : spansOf(*condition.truth, times)) {
                const bool value = *condition.truth->valueAt(span.first) == certainlyTrue;
                causes.push_back({text, named, signals, value, spanOf(span, *condition.truth),
                                  timeline().besideOf(span.first)});
            }
        }
        return causes;
    }

    // To where the truth changes, if it does so next.
    static double endOf(const CountedSpan& span, const Truth& truth) {
        const double next = nextTime(span.last);
        return *truth.valueAt(next) == *truth.valueAt(span.last) ? span.last : next;
    }

    TimeSpan spanOf(const CountedSpan& span, const Truth& truth) const {
        const ExactTime start = timeline().timeAt(span.first);
        const bool isInstant = span.first == span.last;
        return {start, isInstant ? start : timeline().timeAt(endOf(span, truth))};
    }

    std::vector<OpenReason> reasonsFor(const CountedSpan& span) const {
        const auto piecesOf = [&](const variable& signal) -> const TracePieces& {
            return *recording_.find(signal.name)->pieces;
        };
        std::vector<OpenReason> reasons;
        for (const Gap& gap : gapsBehind(judged_, TimeSet(span), piecesOf)) {
            OpenReason reason = reasonOf(gap, span);
            if (std::find(reasons.begin(), reasons.end(), reason) == reasons.end()) {
                reasons.push_back(std::move(reason));
            }
        }
        return reasons;
    }

    OpenReason reasonOf(const Gap& gap, const CountedSpan& span) const {
        using Kind = OpenReason::Kind;
        if (gap.from == -infinity && gap.to == infinity) {
            return {Kind::NoSamples, gap.signal, {}};
        }
        if (gap.from > -infinity && gap.to < infinity) {
            return {
                Kind::Hole, gap.signal, {timeline().timeAt(gap.from), timeline().timeAt(gap.to)}};
        }
        const bool isEnd = gap.to == infinity;
        const ExactTime time = timeline().timeAt(isEnd ? gap.from : gap.to);
        return {isEnd ? kindOfEnd(gap, span) : kindOfBegin(gap, span), gap.signal, {time, time}};
    }

    OpenReason::Kind kindOfEnd(const Gap& gap, const CountedSpan& span) const {
        using Kind = OpenReason::Kind;
        return gap.from < known_.last      ? Kind::SignalEnds
               : span.first <= known_.last ? Kind::WindowReachesOn
                                           : Kind::RecordingEnds;
    }

    OpenReason::Kind kindOfBegin(const Gap& gap, const CountedSpan& span) const {
        using Kind = OpenReason::Kind;
        return gap.to > known_.first       ? Kind::SignalBegins
               : span.last >= known_.first ? Kind::WindowReachesBack
                                           : Kind::RecordingBegins;
    }

    const Recording& recording_;
    const Formula& formula_;
    const CountedSpan known_;  // by any signal
    const TimeSet range_;
    const JudgedFormula judged_;
};

}  // namespace

NodeResults::NodeResults(const TypedAssessment& assessment,
                         const std::vector<const Expression*>& others, const RunOptions& options) {
    std::vector<EvaluationRequest> requests;
    const auto request = [&](const Expression& tree) {
        if (index_.emplace(&tree, requests.size()).second) {
            requests.push_back({&tree, Meaning::Boolean});
        }
    };
    assessments::support::forEachNode(assessment.formula.tree, request);
    for (const Expression* other : others) {
        request(*other);
    }
    results_ = evaluate(requests, lookupIn(*assessment.recording, {&assessment.formula.tree}),
                        evaluationOptions(*assessment.recording, options));
}

void explain(const TypedAssessment& assessment, const NodeResults& results,
             AssessmentOutcome& outcome) {
    if (assessment.range && assessment.known) {
        const Explainer explainer(assessment, results);
        outcome.explanations = explainer.failures();
        outcome.openReasons = explainer.openReasons();
    }
}

}  // namespace vorm::evaluation::detail
