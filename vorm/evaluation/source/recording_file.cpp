#include "recording_file.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

namespace vorm::evaluation {
namespace {

namespace fs = std::filesystem;

RecordingFile fileAt(const std::string& path) {
    RecordingFile file;
    file.path = path;
    file.open = [path] { return fileSource(path); };
    std::error_code error;
    file.canReopen = fs::is_regular_file(path, error);
    file.isStandardInput = path == "-";
    return file;
}

bool isTable(const fs::directory_entry& entry) {
    constexpr std::array<std::string_view, 5> endings{".csv", ".tsv", ".txt", ".jsonl", ".ndjson"};
    const std::string ending = entry.path().extension().string();
    std::error_code error;
    return std::find(endings.begin(), endings.end(), ending) != endings.end() &&
           !entry.is_directory(error);
}

std::vector<RecordingFile> filesIn(const std::string& folder) {
    std::vector<RecordingFile> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (isTable(*entry)) {
            files.push_back(fileAt(entry->path().string()));
            files.back().isFromFolder = true;
        }
    }
    if (error) {
        failAt({folder}, "cannot read the folder: " + error.message());
    }
    if (files.empty()) {
        failAt({folder}, "the folder has no recordings",
               "they end in .csv, .tsv, .txt, .jsonl or .ndjson");
    }
    const auto byPath = [](const RecordingFile& a, const RecordingFile& b) {
        return a.path < b.path;
    };
    std::sort(files.begin(), files.end(), byPath);
    return files;
}

void checkTwice(const std::vector<RecordingFile>& files) {
    std::set<fs::path> known;
    for (const RecordingFile& file : files) {
        std::error_code error;
        if (!known.insert(fs::weakly_canonical(file.path, error)).second && !error) {
            failAt({}, "the file '" + file.path + "' is given twice");
        }
    }
}

}  // namespace

std::string RecordingFile::name() const {
    return fs::path(path).filename().string();
}

std::string RecordingFile::stem() const {
    return fs::path(path).stem().string();
}

std::vector<RecordingFile> recordingFiles(const RecordingSource& source) {
    std::vector<RecordingFile> files;
    for (const std::string& path : source.paths) {
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            files.push_back(fileAt(path));
            continue;
        }
        for (RecordingFile& file : filesIn(path)) {
            files.push_back(std::move(file));
        }
    }
    checkTwice(files);
    return files;
}

std::vector<RecordingFile> toldApart(std::vector<RecordingFile> files) {
    std::map<std::string, int> uses;
    for (const RecordingFile& file : files) {
        ++uses[file.stem()];
    }
    for (RecordingFile& file : files) {
        file.hasNamesake = uses[file.stem()] > 1;
    }
    return files;
}

RecordingFile textFile(const std::string& path, const std::string& content) {
    RecordingFile file;
    file.path = path;
    file.open = [content] { return textSource(content); };
    file.canReopen = true;
    return file;
}

}  // namespace vorm::evaluation
