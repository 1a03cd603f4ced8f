#include "evaluate_formula.hpp"

#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/assessment/signal_evaluation.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>

namespace vorm::evaluation {

FormulaOutcome evaluate(const std::string& text, const Recording& recording,
                        const RunOptions& options) {
    const Formula formula = typedFormula(ParsedFormula(text), namesIn(recording));
    std::vector<EvaluationRequest> requests{{&formula.tree, Meaning::Boolean}};
    if (options.robustness) {
        requests.push_back({&formula.tree, Meaning::LeastRobustness});
        requests.push_back({&formula.tree, Meaning::GreatestRobustness});
    }
    const auto results = evaluate(requests, detail::lookupIn(recording, {&formula.tree}),
                                  detail::evaluationOptions(recording, options));
    for (const EvaluationResult& result : results) {
        if (result.failure) {
            throw evaluationError(result.failure, {0, text.size()}, formula.times).within(text);
        }
    }
    FormulaOutcome outcome;
    if (const auto range = knownRange(signalsOf(formula, recording))) {
        outcome.truth = truthSpans(*results[0].truth, *range, recording.timeline);
    }
    if (options.robustness) {
        outcome.leastRobustness = results[1].pieces;
        outcome.greatestRobustness = results[2].pieces;
    }
    return outcome;
}

}  // namespace vorm::evaluation
