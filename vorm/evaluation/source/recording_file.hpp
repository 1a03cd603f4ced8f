#pragma once

// The files that a recording consists of.

#include <vorm/evaluation/source/byte_source.hpp>
#include <vorm/evaluation/source/recording_source.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// How the rows of a file are written.
enum class TableForm : std::uint8_t { Delimited, JsonLines };

struct RecordingFile {
    std::string path;  ///< for messages
    std::function<std::unique_ptr<ByteSource>()> open;
    bool canReopen = false;     ///< opening it again gives the same bytes again
    bool isFromFolder = false;  ///< found, not named by the user
    bool isStandardInput = false;
    bool hasNamesake = false;  ///< another file of the recording has the same stem
    std::size_t part = 0;      ///< that of the RecordingSource
    std::size_t parts = 0;     ///< those of the RecordingSource

    std::string name() const;  ///< without folder
    std::string stem() const;  ///< without folder and ending, of `a.csv.gz` as of `a.csv`
    /// What stands before its columns' names: the stem, or the path where that is another's too.
    std::string prefix() const { return hasNamesake ? path : stem(); }
    /// The form that the ending tells; of others, and of standard input, Delimited.
    TableForm form() const;
    /// By its path, its name, or its stem, and where it is compressed by the name it had before.
    bool isCalled(std::string_view other) const;
};

/// The files that the paths name, those of a folder in the order of their names and without hidden
/// ones, which begin with a point. Throws InputError for a folder without any, for a file that is
/// not there, and for one that is there twice.
std::vector<RecordingFile> recordingFiles(const RecordingSource& source);

/// The paths of the other files in the folders that it names, which end otherwise; without hidden
/// ones and in the order of their names. Throws InputError as recordingFiles does for a folder.
std::vector<std::string> otherFiles(const RecordingSource& source);

/// The files, those marked that have namesakes.
std::vector<RecordingFile> toldApart(std::vector<RecordingFile> files);

/// A file that has this content.
RecordingFile textFile(const std::string& path, const std::string& content);

}  // namespace vorm::evaluation
