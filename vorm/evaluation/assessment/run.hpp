#pragma once

#include <vorm/evaluation/assessment/assess.hpp>

#include <cstddef>
#include <functional>
#include <vector>

namespace vorm::evaluation {

/// Reads from a recording the signals that the assessments of a file use, or those in `only`.
/// Throws InputError as readRecording and chosenAssessments do.
Recording readRecordingFor(const AssessmentFile& file, const RecordingSource& source,
                           const RunOptions& options = {});

/// The recordings of a run, each made when it is its turn, so that a long list takes no room.
struct RecordingQueue {
    std::size_t count = 0;
    std::function<RecordingSource(std::size_t)> at;  ///< from 0; called from any thread
    /// Of which recordings, or of their parts where the layout splits them, nothing is to be known
    /// again; null: of none. Called once for each in their order.
    std::function<bool(const RecordingSource&)> isLeftOut;
};

/// Reads recordings and assesses them, several at a time. A recording that cannot be used is an
/// error in the outcome and does not keep the others from being assessed. Throws as assess does,
/// and its outcome neither depends on the number of jobs.
RunOutcome run(const AssessmentFile& file, const std::vector<RecordingSource>& recordings,
               const RunOptions& options = {});

/// The same for who does not keep the outcomes: hands each over, in the order of the recordings,
/// when it and all before it are done, with the number of all; one call at a time, from any thread.
/// What waits for one that takes long are a thousand outcomes at the most, so that memory does not
/// grow with the number of recordings. What `take` throws ends the run.
void runEach(const AssessmentFile& file, const RecordingQueue& recordings,
             const RunOptions& options,
             const std::function<void(RecordingOutcome&&, std::size_t count)>& take);

}  // namespace vorm::evaluation
