#pragma once

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <memory>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// One sub-formula of an assessment with its values.
struct ExplainedFormula {
    std::size_t depth = 0;  ///< 0 for the whole formula
    std::string text;
    SharedPieces pieces;                             ///< null where it could not be evaluated
    std::string failure;                             ///< why it could not be
    std::shared_ptr<const Enumeration> enumeration;  ///< of its values, or null
};

/// Why an assessment fails where it fails.
struct Explanation {
    AssessmentOutcome outcome;  ///< with its explanations
    Timeline timeline;          ///< of the times of the values
    RecordedTimes times;        ///< of the recording
    /// The formula and below it, in order, its parts; each distinct one once. Of an implication, a
    /// rise or a fall the parts are those that one reads.
    std::vector<ExplainedFormula> subFormulas;
};

/// Evaluates one assessment on a recording with all its sub-formulas; of the options jobs and
/// progress count. Throws InputError for a formula that cannot be used.
Explanation explain(const AssessmentFile& file, const Assessment& assessment,
                    const Recording& recording, const RunOptions& options = {});

}  // namespace vorm::evaluation
