#include "recording_file.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
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

struct Ending {
    std::string_view text;
    TableForm form;
};

constexpr std::array endings = std::to_array<Ending>({
    {".csv", TableForm::Delimited},
    {".tsv", TableForm::Delimited},
    {".txt", TableForm::Delimited},
    {".jsonl", TableForm::JsonLines},
    {".ndjson", TableForm::JsonLines},
});

std::string uncompressedName(const fs::path& path) {
    const std::string ending = lowerCase(path.extension().string());
    return (ending == ".gz" || ending == ".zst" ? path.stem() : path.filename()).string();
}

const Ending* endingOf(const fs::path& path) {
    const std::string name = lowerCase(uncompressedName(path));
    const auto* const found =
        std::find_if(endings.begin(), endings.end(),
                     [&](const Ending& ending) { return name.ends_with(ending.text); });
    return found == endings.end() ? nullptr : found;
}

std::string listOfEndings() {
    std::string list;
    for (const Ending& ending : endings) {
        const bool isLast = &ending == &endings.back();
        list += (list.empty() ? "" : isLast ? " or " : ", ") + std::string(ending.text);
    }
    return list;
}

// Without hidden files, as the patterns of a shell, in the order of their names.
std::vector<fs::path> pathsIn(const std::string& folder) {
    std::vector<fs::path> paths;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (!entry->path().filename().string().starts_with('.') && !entry->is_directory(ignored)) {
            paths.push_back(entry->path());
        }
    }
    if (error) {
        failAt({folder}, "cannot read the folder: " + error.message());
    }
    std::sort(paths.begin(), paths.end(),
              [](const fs::path& a, const fs::path& b) { return a.native() < b.native(); });
    return paths;
}

std::vector<RecordingFile> filesIn(const std::string& folder) {
    std::vector<RecordingFile> files;
    for (const fs::path& path : pathsIn(folder)) {
        if (endingOf(path) != nullptr) {
            files.push_back(fileAt(path.string()));
            files.back().isFromFolder = true;
        }
    }
    if (files.empty()) {
        failAt({folder}, "the folder has no recordings",
               "they end in " + listOfEndings() + ", compressed ones in .gz or .zst after that");
    }
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
    return fs::path(uncompressedName(path)).stem().string();
}

bool RecordingFile::isCalled(std::string_view other) const {
    return other == path || other == name() || other == uncompressedName(path) || other == stem();
}

TableForm RecordingFile::form() const {
    const Ending* ending = isStandardInput ? nullptr : endingOf(path);
    return ending == nullptr ? TableForm::Delimited : ending->form;
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
    for (RecordingFile& file : files) {
        file.part = source.part;
        file.parts = source.parts;
    }
    return files;
}

std::vector<std::string> otherFiles(const RecordingSource& source) {
    std::vector<std::string> others;
    for (const std::string& path : source.paths) {
        std::error_code error;
        if (fs::is_directory(path, error)) {
            for (const fs::path& file : pathsIn(path)) {
                if (endingOf(file) == nullptr) {
                    others.push_back(file.string());
                }
            }
        }
    }
    return others;
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
