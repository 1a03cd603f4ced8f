#pragma once

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <functional>
#include <string>
#include <vector>

namespace vorm::evaluation {

struct RunOptions {
    unsigned jobs = 1;              ///< threads, at least 1
    bool robustness = false;        ///< whether to compute it
    bool strict = false;            ///< whether what is open at some time has not passed
    bool explain = false;           ///< whether to tell why it fails, or is open
    std::vector<std::string> only;  ///< names of the assessments to run; empty: all
    /// Called with a short text on what is being done, from any one thread at a time.
    std::function<void(const std::string&)> progress;
};

/// Runs the assessments of a file on recordings, several at a time. Only the signals that the
/// formulas use are read. A recording or formula that cannot be used is an error in the outcome and
/// does not keep the others from being judged. Throws InputError for names in `only` that no
/// assessment has. The outcome does not depend on the number of jobs.
RunOutcome run(const AssessmentFile& file, const std::vector<RecordingSource>& recordings,
               const RunOptions& options = {});

}  // namespace vorm::evaluation
