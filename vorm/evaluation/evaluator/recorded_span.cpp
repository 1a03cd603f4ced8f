#include "recorded_span.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/truth_writer.hpp>

#include <algorithm>

namespace vorm::evaluation {

using namespace assessments;
using support::infinity;

CountedSpan recordedSpan(const Expression& formula, const SignalLookup& signals) {
    CountedSpan span{infinity, -infinity};
    support::forEachNode(formula, [&](const Expression& tree) {
        const auto* signal = boost::get<variable>(&tree);
        const SharedPieces pieces = signal == nullptr ? nullptr : signals(*signal);
        if (pieces != nullptr && !pieces->empty()) {
            span.first = std::min(span.first, pieces->front().getStartTime());
            span.last = std::max(span.last, pieces->back().getLastKnownTime());
        }
    });
    return span.first <= span.last ? span : CountedSpan{-infinity, infinity};
}

CountedSpan lookedAtUpToTheEnd(const Expression& formula, VORM_OP op, const SignalLookup& signals) {
    const CountedSpan recorded = recordedSpan(formula, signals);
    return support::looksBack(op) ? CountedSpan{recorded.first, infinity}
                                  : CountedSpan{-infinity, recorded.last};
}

Truth truthWithin(const CountedSpan& span) {
    TruthWriter truth;
    truth.change(-infinity, span.first == -infinity ? certainlyTrue : certainlyFalse);
    if (span.first > -infinity) {
        truth.change(span.first, certainlyTrue);
    }
    if (span.last < infinity) {
        truth.change(support::nextTime(span.last), certainlyFalse);
    }
    return truth.finish();
}

}  // namespace vorm::evaluation
