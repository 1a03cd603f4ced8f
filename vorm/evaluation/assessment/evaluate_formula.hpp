#pragma once

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/assessment/judgement.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// What a formula is on a recording.
struct FormulaOutcome {
    /// From the first to the last time at which any signal of the formula is known; empty where
    /// none is.
    std::vector<TruthSpan> truth;

    // Where it was asked for: between what the robustness lies, each one trace of double over all
    // of time, which counts as the recording's timeline; else null. See Meaning.
    SharedPieces leastRobustness;
    SharedPieces greatestRobustness;
};

/// Evaluates a formula on a recording; of the options jobs, robustness and progress count. Throws
/// FormulaError, with the place in the text, where the text is no formula, does not fit the
/// recording, is neither true nor false, reads no signal, or cannot be evaluated.
FormulaOutcome evaluate(const std::string& text, const Recording& recording,
                        const RunOptions& options = {});

}  // namespace vorm::evaluation
