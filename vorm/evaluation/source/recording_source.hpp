#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// Where one recording is: a file, a folder with all its .csv, .tsv, .txt, .jsonl and .ndjson
/// files, whatever the case of these endings, several files that belong together, or standard
/// input. All may be compressed by gzip or Zstandard; those of a folder then end in .gz or .zst
/// besides.
struct RecordingSource {
    /// `-` is standard input, read as CSV, or as JSON lines where it begins with a brace.
    std::vector<std::string> paths;
    /// Which of the recordings that one file is split into, from 1; 0: all of it.
    std::size_t part = 0;
    /// How many there were when they were counted; 0: not known.
    std::size_t parts = 0;

    /// For messages and reports: the paths as given, joined by `+`; `drive.csv, part 2`.
    std::string name() const;
};

}  // namespace vorm::evaluation
