#include "explanation.hpp"

#include <vorm/assessments/expression/expression_containers.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/assessment/outcome_explanation.hpp>
#include <vorm/evaluation/assessment/outcome_judgement.hpp>

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

// A definition by its name and, in front of what stands below it, its formula.
std::string shownText(const Expression& tree, const Formula& whole) {
    const NamedFormula named = namedFormula(tree, whole.times, whole.names);
    const std::string formula = namedFormula(tree, whole.times, whole.names, true).text;
    return named.text == formula ? formula : named.text + ": " + formula;
}

ExplainedFormula explained(const ShownNode& node, const evaluation::detail::NodeResults& results,
                           const Recording& recording, const Formula& whole) {
    ExplainedFormula formula;
    formula.depth = node.depth;
    formula.text = shownText(*node.tree, whole);
    const EvaluationResult& result = results.of(*node.tree);
    formula.pieces = result.truth ? std::make_shared<const TracePieces>(knownPieces(*result.truth))
                                  : result.pieces;
    if (result.failure) {
        formula.failure = evaluationError(result.failure, {}, whole.times).problem().message;
    }
    if (const auto* signal = boost::get<variable>(node.tree)) {
        formula.enumeration = recording.find(signal->name)->type.enumeration;
    }
    return formula;
}

}  // namespace

Explanation explain(const AssessmentFile& file, const Assessment& assessment,
                    const Recording& recording, const RunOptions& options) {
    const TypedAssessment typed =
        typedAssessment(file, assessment, namesIn(file, recording), recording);
    const Formula& formula = typed.formula;
    const std::vector<ShownNode> shown = shownNodes(formula.tree);
    std::vector<const Expression*> trees;
    for (const ShownNode& node : shown) {
        trees.push_back(node.tree);
    }
    const detail::NodeResults results(typed, trees, options);

    Explanation explanation;
    explanation.outcome = detail::describedOutcome(assessment);
    explanation.timeline = recording.timeline;
    explanation.times = recordedTimes(recording);
    for (const ShownNode& node : shown) {
        explanation.subFormulas.push_back(explained(node, results, recording, formula));
    }
    AssessmentOutcome& outcome = explanation.outcome;
    const EvaluationResult& truth = results.of(formula.tree);
    if (truth.failure) {
        outcome.error = detail::evaluationFailure(typed, truth.failure);
        return explanation;
    }
    detail::judge(typed, *truth.truth, outcome);
    if (const auto trigger = triggerOf(formula.tree)) {
        const EvaluationResult& condition = results.of(*trigger->formula);
        outcome.trigger = namedFormula(*trigger->formula, formula.times, formula.names).text;
        outcome.neverTriggered = outcome.verdict == resultEnum_t::PASS &&
                                 detail::isFalseThroughout(typed, *trigger, *condition.truth);
    }
    detail::explain(typed, results, outcome);
    return explanation;
}

}  // namespace vorm::evaluation
