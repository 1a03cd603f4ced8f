#pragma once

// What is told of a run as a whole, gathered while its recordings come and go.

#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// What summaries show of a recording.
struct RecordingMarks {
    std::string recording;
    bool isUsable = true;
    std::vector<Mark> assessments;  ///< in the order of the file; none where it is not usable
};

/// Something of a recording, as the first of its kind in a run.
struct FirstOfRun {
    std::string recording;
    std::string text;
};

/// What became of one assessment on all recordings that could be used.
struct AssessmentSummary {
    std::string name;
    MarkCounts marks{};
    std::size_t neverTriggered = 0;
    std::optional<FirstOfRun> failure;  ///< its begin, `4.25 s`
    std::optional<FirstOfRun> error;    ///< its message
};

/// Of a run whose recordings are added one by one; the assessments of those that can be used are
/// the same. Of a recording nothing is kept but for the worst ones.
class RunSummary {
public:
    static constexpr std::size_t allRecordings = std::numeric_limits<std::size_t>::max();

    /// Keeps that many recordings of those on which not everything passed, or really all.
    RunSummary(bool strict, std::size_t mostRecordings);

    void add(const RecordingOutcome& recording);

    std::size_t recordings() const { return recordings_; }
    /// How many of them could be used.
    std::size_t usable() const { return usable_; }
    /// On how many not everything passed.
    std::size_t imperfect() const { return imperfect_; }
    /// The worst first, those that are equally bad in natural order.
    std::vector<RecordingMarks> worst() const;
    const std::vector<AssessmentSummary>& assessments() const { return assessments_; }
    const VerdictCounts& counts() const { return counts_; }

    /// The first ones that make the run fail, as many as a message names, and how many there are.
    const std::vector<std::string>& failing() const { return failing_; }
    std::size_t failingCount() const { return failingCount_; }

    /// Whether some input could not be used.
    bool hasErrors() const { return counts_.errors > 0; }
    /// Whether some assessment makes the run fail.
    bool hasFailures() const { return failingCount_ > 0; }

private:
    void addAssessments(const RecordingOutcome& recording);
    void keep(RecordingMarks recording);

    bool strict_;
    std::size_t mostRecordings_;
    std::size_t recordings_ = 0;
    std::size_t usable_ = 0;
    std::size_t imperfect_ = 0;
    std::size_t failingCount_ = 0;
    VerdictCounts counts_;
    std::vector<std::string> failing_;
    std::vector<RecordingMarks> kept_;
    std::vector<AssessmentSummary> assessments_;
};

}  // namespace vorm::evaluation
