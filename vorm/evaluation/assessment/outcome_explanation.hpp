#pragma once

// Why an assessment fails where it fails and is open where it is open; for the sources of this
// folder.

#include <vorm/evaluation/assessment/assessed_recording.hpp>

#include <unordered_map>
#include <vector>

namespace vorm::evaluation::detail {

/// The results of all nodes of a formula, found by the address of the node.
class NodeResults {
public:
    /// Also of the other formulas, which are given with the same types.
    NodeResults(const assessments::Expression& root,
                const std::vector<const assessments::Expression*>& others,
                const AssessedRecording& recording);

    const EvaluationResult& of(const assessments::Expression& tree) const {
        return results_[index_.at(&tree)];
    }

private:
    std::unordered_map<const assessments::Expression*, std::size_t> index_;
    std::vector<EvaluationResult> results_;
};

/// Fills in the explanations of an outcome that was judged, and its reasons for what is open.
void explain(const AssessedRecording& recording, const Assessment& assessment,
             const Formula& formula, const NodeResults& results, AssessmentOutcome& outcome);

}  // namespace vorm::evaluation::detail
