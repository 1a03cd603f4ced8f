#pragma once

// Why an assessment fails where it fails and is open where it is open; for the sources of this
// folder.

#include <vorm/evaluation/assessment/signal_evaluation.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>

#include <unordered_map>
#include <vector>

namespace vorm::evaluation::detail {

/// The results of all nodes of an assessment's formula, found by the address of the node.
class NodeResults {
public:
    /// Also of the other formulas, which are given with the same types.
    NodeResults(const TypedAssessment& assessment,
                const std::vector<const assessments::Expression*>& others,
                const RunOptions& options);

    const EvaluationResult& of(const assessments::Expression& tree) const {
        return results_[index_.at(&tree)];
    }

private:
    std::unordered_map<const assessments::Expression*, std::size_t> index_;
    std::vector<EvaluationResult> results_;
};

/// Fills in the explanations of an outcome that was judged, and its reasons for what is open.
void explain(const TypedAssessment& assessment, const NodeResults& results,
             AssessmentOutcome& outcome);

}  // namespace vorm::evaluation::detail
