#pragma once

// The files that a recording consists of.

#include <vorm/evaluation/recording/byte_source.hpp>
#include <vorm/evaluation/recording/recording.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorm::evaluation {

struct RecordingFile {
    std::string path;  ///< for messages
    std::function<std::unique_ptr<ByteSource>()> open;
    bool canReopen = false;     ///< opening it again gives the same bytes again
    bool isFromFolder = false;  ///< found, not named by the user
    bool isStandardInput = false;

    std::string name() const;  ///< without folder
    std::string stem() const;  ///< without folder and ending
    bool isCalled(std::string_view other) const { return other == name() || other == stem(); }
};

/// The files that the paths name, those of a folder in the order of their names. Throws InputError
/// for a folder without any, and for a file that is not there.
std::vector<RecordingFile> recordingFiles(const RecordingSource& source);

/// A file that has this content.
RecordingFile textFile(const std::string& path, const std::string& content);

}  // namespace vorm::evaluation
