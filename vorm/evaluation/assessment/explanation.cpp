#include "explanation.hpp"

#include <vorm/assessments/expression/expression_containers.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/assessment/assessed_recording.hpp>
#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/assessment/outcome_explanation.hpp>

#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

struct ShownNode {
    const Expression* tree;
    std::size_t depth;
};

// What stands below a formula in a display: of an alias the formulas of its text, since those are
// what one reads.
std::vector<const Expression*> shownChildren(const Expression& tree) {
    std::vector<const Expression*> children;
    if (const auto* composite = boost::get<alias>(&tree)) {
        for (const AliasArgument& argument : composite->arguments) {
            if (const auto* part = boost::get<Expression>(&argument)) {
                children.push_back(part);
            }
        }
        if (!children.empty()) {
            return children;
        }
    }
    assessments::support::forEachChild<ModuloAliases>(
        tree, [&](const Expression& child) { children.push_back(&child); });
    return children;
}

// Parents before children, each distinct formula once, literals left out.
std::vector<ShownNode> shownNodes(const Expression& root) {
    std::vector<ShownNode> shown;
    ExpressionSet<ModuloAliases> seen;
    std::vector<ShownNode> pending{{&root, 0}};
    while (!pending.empty()) {
        const ShownNode node = pending.back();
        pending.pop_back();
        if (boost::get<constantValue>(node.tree) != nullptr || !seen.insert(*node.tree).second) {
            continue;
        }
        shown.push_back(node);
        const auto children = shownChildren(*node.tree);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            pending.push_back({*child, node.depth + 1});
        }
    }
    return shown;
}

ExplainedFormula explained(const ShownNode& node, const evaluation::detail::NodeResults& results,
                           const Recording& recording, const TimeTexts& times) {
    ExplainedFormula formula;
    formula.depth = node.depth;
    formula.text = formulaText(*node.tree, times);
    const EvaluationResult& result = results.of(*node.tree);
    formula.pieces = result.truth ? std::make_shared<const TracePieces>(knownPieces(*result.truth))
                                  : result.pieces;
    if (result.failure) {
        formula.failure = evaluationError(result.failure, {}, times).what();
    }
    if (const auto* signal = boost::get<variable>(node.tree)) {
        formula.enumeration = recording.find(signal->name)->type.enumeration;
    }
    return formula;
}

}  // namespace

Explanation explain(const AssessmentFile& file, const Assessment& assessment,
                    const RecordingSource& source, const RunOptions& options) {
    const detail::AssessedRecording recording(file, {&assessment}, source, options);
    const Formula formula = recording.formulaOf(assessment);
    const std::vector<ShownNode> shown = shownNodes(formula.tree);
    std::vector<const Expression*> trees;
    for (const ShownNode& node : shown) {
        trees.push_back(node.tree);
    }
    const detail::NodeResults results(formula.tree, trees, recording);

    Explanation explanation;
    explanation.outcome = detail::describedOutcome(assessment);
    explanation.timeline = recording.recording().timeline;
    for (const ShownNode& node : shown) {
        explanation.subFormulas.push_back(
            explained(node, results, recording.recording(), formula.times));
    }
    const EvaluationResult& truth = results.of(formula.tree);
    if (truth.failure) {
        explanation.outcome.error = recording.failureMessage(assessment, formula, truth.failure);
        return explanation;
    }
    recording.judge(assessment, formula, *truth.truth, explanation.outcome);
    if (const auto trigger = triggerOf(formula.tree)) {
        const EvaluationResult& condition = results.of(*trigger->formula);
        explanation.outcome.trigger = formulaText(*trigger->formula, formula.times);
        explanation.outcome.neverTriggered =
            explanation.outcome.verdict == resultEnum_t::PASS &&
            recording.isFalseThroughout(assessment, formula, *trigger, *condition.truth);
    }
    detail::explain(recording, assessment, formula, results, explanation.outcome);
    return explanation;
}

}  // namespace vorm::evaluation
