#include "explanation.hpp"

#include <vorm/assessments/expression/expression_containers.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/assessment/assessed_recording.hpp>
#include <vorm/evaluation/assessment/culprits.hpp>
#include <vorm/evaluation/assessment/evaluation_error.hpp>

#include <algorithm>
#include <unordered_map>
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
    assessments::detail::forEachChild<ModuloAliases>(
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

// The results of all nodes of a formula, found by the address of the node.
class NodeResults {
public:
    NodeResults(const Expression& root, const std::vector<ShownNode>& shown,
                const detail::AssessedRecording& recording) {
        std::vector<EvaluationRequest> requests;
        const auto request = [&](const Expression& tree) {
            if (index_.emplace(&tree, requests.size()).second) {
                requests.push_back({&tree, Meaning::Boolean});
            }
        };
        assessments::detail::forEachNode(root, request);
        for (const ShownNode& node : shown) {
            request(*node.tree);
        }
        results_ = evaluate(requests, recording.lookup(), recording.evaluationOptions());
    }

    const EvaluationResult& of(const Expression& tree) const { return results_[index_.at(&tree)]; }

private:
    std::unordered_map<const Expression*, std::size_t> index_;
    std::vector<EvaluationResult> results_;
};

ExplainedFormula explained(const ShownNode& node, const NodeResults& results,
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

std::vector<Culprit> culpritsAt(double time, const Expression& root, const NodeResults& results,
                                const TimeTexts& times) {
    std::vector<Culprit> culprits;
    const auto truthOf = [&](const Expression& tree) { return results.of(tree).truth; };
    for (const auto& part : detail::decidingParts(root, time, truthOf)) {
        culprits.push_back({formulaText(*part.formula, times), part.value, part.from, part.to});
    }
    return culprits;
}

}  // namespace

Explanation explain(const AssessmentFile& file, const Assessment& assessment,
                    const RecordingSource& source, const RunOptions& options) {
    const detail::AssessedRecording recording(file, {&assessment}, source, options);
    const Formula formula = recording.formulaOf(assessment);
    const std::vector<ShownNode> shown = shownNodes(formula.tree);
    const NodeResults results(formula.tree, shown, recording);

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
    const auto range = recording.rangeOf(assessment, formula);
    for (const Span& span : evaluation::judge(*truth.truth, *range).failures) {
        explanation.culprits.push_back(
            culpritsAt(span.start, formula.tree, results, formula.times));
    }
    return explanation;
}

}  // namespace vorm::evaluation
