#pragma once

#include <vorm/assessments/value_types.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// A stretch of time on which a requirement fails, in seconds: `start` is the first failing time,
/// `end` the next one at which it holds, or the last one at which anything is known. Both are
/// exact.
struct FailingInterval {
    double start;
    double end;
};

/// Whether an interval is one instant: its end is at most the next representable time.
bool isInstant(const FailingInterval& interval);

/// What became of one assessment on one recording.
struct AssessmentOutcome {
    std::string name;
    std::string description;
    std::string formula;  ///< as it stands in the file

    /// FAIL where it fails at some time, PASS where it holds wherever it is known, NO_RESULT where
    /// it is known nowhere.
    assessments::resultEnum_t verdict = assessments::resultEnum_t::NO_RESULT;
    std::string error;   ///< why it could not be evaluated; empty where it could
    std::string reason;  ///< why there is no result; empty where there is one

    // The closed range of time that was looked at, in seconds, and how much of it holds, fails and
    // is not known.
    double from = 0;
    double to = 0;
    double passed = 0;
    double failed = 0;
    double unknown = 0;

    std::vector<FailingInterval> failures;  ///< in time order

    /// The least robustness in the range, where it was asked for and is known.
    std::optional<double> robustness;
    std::string robustnessError;  ///< why it was asked for and is not known
};

/// What became of the assessments on one recording.
struct RecordingOutcome {
    std::string recording;
    std::string error;  ///< why the recording could not be used; empty where it could
    std::vector<AssessmentOutcome> assessments;  ///< in the order of the file
};

/// The outcome of a run.
struct RunOutcome {
    std::string file;
    std::string title;
    std::vector<RecordingOutcome> recordings;  ///< in the order given

    /// Whether some input could not be used.
    bool hasErrors() const;
    /// Whether some assessment failed.
    bool hasFailures() const;
};

}  // namespace vorm::evaluation
