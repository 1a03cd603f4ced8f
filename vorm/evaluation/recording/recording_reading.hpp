#pragma once

// Reads or surveys a recording from its files, wherever these come from.

#include <vorm/evaluation/recording/recording_survey.hpp>
#include <vorm/evaluation/source/byte_window.hpp>
#include <vorm/evaluation/source/recording_file.hpp>

namespace vorm::evaluation {

/// As readRecording; the result does not depend on the block size.
Recording readRecordingFiles(const std::string& name, const std::vector<RecordingFile>& files,
                             const RecordingLayout& layout, const ReadingOptions& options = {},
                             std::size_t blockSize = ByteWindow::defaultBlockSize);

/// As surveyRecording.
RecordingSurvey surveyFiles(const std::vector<RecordingFile>& files, const RecordingLayout& layout);

}  // namespace vorm::evaluation
