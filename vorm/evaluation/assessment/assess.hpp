#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// A recording that was assessed, while its signals are in memory.
struct AssessedRecording {
    std::size_t number;  ///< its place among the recordings of a run, from 0
    const Recording& recording;
    const RecordingOutcome& outcome;         ///< complete
    const std::vector<SharedTruth>& truths;  ///< of each assessment; null where there is an error
};

struct RunOptions {
    unsigned jobs = 1;        ///< threads, at least 1
    bool robustness = false;  ///< whether to compute it
    bool strict = false;      ///< whether what is open at some time has not passed
    bool explain = false;     ///< whether to tell why it fails, or is open
    /// Names, patterns and tags of the assessments to run, empty: all, and of those to leave out;
    /// see chosenAssessments.
    std::vector<std::string> only;
    std::vector<std::string> skip;
    // No two of these functions are called at the same time.

    /// Called with a short text on what is being done, from any thread.
    std::function<void(const std::string&)> progress;
    /// For who keeps more than the outcome, such as signals to draw: called once for each recording
    /// that could be read, when it is assessed, from any thread. The references end with the call;
    /// pieces of signals and truths are shared and live while somebody holds them, and without this
    /// function no truth outlives its assessment. What it throws ends the run.
    std::function<void(const AssessedRecording&)> assessed;
};

/// Assesses a recording. An assessment whose formula cannot be used is an error in the outcome and
/// does not keep the others from being judged. Throws as chosenAssessments does. The outcome does
/// not depend on the number of jobs. A recording that was read for other formulas may have times
/// less exact than these ask for; see ReadingOptions.
RecordingOutcome assess(const AssessmentFile& file, const Recording& recording,
                        const RunOptions& options = {});

}  // namespace vorm::evaluation
