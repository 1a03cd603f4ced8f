#pragma once

#include <vorm/evaluation/assessment/assess.hpp>

#include <vector>

namespace vorm::evaluation {

/// Reads from a recording the signals that the assessments of a file use, or those in `only`.
/// Throws InputError as readRecording and chosenAssessments do.
Recording readRecordingFor(const AssessmentFile& file, const RecordingSource& source,
                           const RunOptions& options = {});

/// Reads recordings and assesses them, several at a time. A recording that cannot be used is an
/// error in the outcome and does not keep the others from being assessed. Throws as assess does,
/// and its outcome neither depends on the number of jobs.
RunOutcome run(const AssessmentFile& file, const std::vector<RecordingSource>& recordings,
               const RunOptions& options = {});

}  // namespace vorm::evaluation
