#include "run_summary.hpp"

#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/text/natural_order.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

bool passedEverything(const RecordingMarks& recording) {
    return recording.isUsable &&
           std::all_of(recording.assessments.begin(), recording.assessments.end(),
                       [](Mark mark) { return mark == Mark::Passed; });
}

// What cannot be used is worse than anything.
bool isWorse(const RecordingMarks& one, const RecordingMarks& other) {
    if (one.isUsable != other.isUsable) {
        return !one.isUsable;
    }
    MarkCounts ofOne = countMarks(one.assessments);
    MarkCounts ofOther = countMarks(other.assessments);
    of(Mark::Passed, ofOne) = of(Mark::Passed, ofOther) = 0;
    return ofOne != ofOther ? ofOne > ofOther : isNaturallyBefore(one.recording, other.recording);
}

}  // namespace

RunSummary::RunSummary(bool strict, std::size_t mostRecordings)
    : strict_(strict), mostRecordings_(mostRecordings) {}

void RunSummary::add(const RecordingOutcome& recording) {
    ++recordings_;
    RecordingMarks marks{recording.recording, !recording.error, {}};
    if (recording.error) {
        ++counts_.errors;
    } else {
        ++usable_;
        addAssessments(recording);
    }
    for (const AssessmentOutcome& outcome : recording.assessments) {
        marks.assessments.push_back(markOf(outcome, strict_));
        count(marks.assessments.back(), counts_);
    }
    if (recording.hasFailures(strict_) && ++failingCount_ <= mostNamesInList) {
        failing_.push_back(recording.recording);
    }
    keep(std::move(marks));
}

void RunSummary::addAssessments(const RecordingOutcome& recording) {
    assessments_.resize(recording.assessments.size());
    for (std::size_t i = 0; i < assessments_.size(); ++i) {
        const AssessmentOutcome& outcome = recording.assessments[i];
        AssessmentSummary& summary = assessments_[i];
        summary.name = outcome.name;
        ++of(markOf(outcome, strict_), summary.marks);
        summary.neverTriggered += outcome.neverTriggered ? 1 : 0;
        if (!summary.failure && !outcome.failures.empty()) {
            const TimeWriter times(recording.times);
            summary.failure = {recording.recording,
                               times.number(outcome.failures.front().start) + " s"};
        }
        if (!summary.error && outcome.error) {
            summary.error = {recording.recording, outcome.error->what()};
        }
    }
}

void RunSummary::keep(RecordingMarks recording) {
    const bool isPerfect = passedEverything(recording);
    imperfect_ += isPerfect ? 0 : 1;
    if (isPerfect && mostRecordings_ != allRecordings) {
        return;
    }
    kept_.push_back(std::move(recording));
    // So rarely that each recording costs little.
    if (kept_.size() / 2 == mostRecordings_) {
        kept_ = worst();
    }
}

std::vector<RecordingMarks> RunSummary::worst() const {
    std::vector<RecordingMarks> recordings = kept_;
    std::stable_sort(recordings.begin(), recordings.end(), isWorse);
    recordings.resize(std::min(recordings.size(), mostRecordings_));
    return recordings;
}

}  // namespace vorm::evaluation
