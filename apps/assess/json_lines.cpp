#include "json_lines.hpp"

#include <vorm/evaluation/report/json_report.hpp>

#include <filesystem>
#include <system_error>

namespace assess {

bool showsLines(const Options& options) {
    return comesInLines(options.format) && (options.output.empty() || options.output == "-");
}

std::vector<std::string> jsonLineFiles(const Options& options) {
    std::vector<std::string> paths;
    if (comesInLines(options.format) && !showsLines(options)) {
        paths.push_back(options.output);
    }
    for (const auto& [format, path] : options.reports) {
        if (comesInLines(format)) {
            paths.push_back(path);
        }
    }
    return paths;
}

JsonLines::JsonLines(const vorm::evaluation::RunOutcome& about, const Options& options,
                     const EarlierRun& earlier, ProgressLine& progress)
    : about_(about),
      options_(options),
      earlier_(earlier),
      progress_(progress),
      isShown_(showsLines(options)),
      paths_(jsonLineFiles(options)) {}

void JsonLines::begin(const std::string& path) {
    using vorm::evaluation::OutputFile;
    if (earlier_.count() == 0) {
        files_.emplace_back(path, OutputFile::Start::Empty, path);
        return;
    }
    std::error_code error;
    std::filesystem::resize_file(path, earlier_.bytes(), error);
    if (error) {
        vorm::evaluation::failToWrite("'" + path + "'", error.value(),
                                      vorm::evaluation::anotherPath);
    }
    files_.emplace_back(path, OutputFile::Start::End, path);
}

void JsonLines::beginAll() {
    while (files_.size() < paths_.size()) {
        begin(paths_[files_.size()]);
    }
}

void JsonLines::end() {
    if (earlier_.count() > 0) {
        beginAll();
    }
}

void JsonLines::add(const vorm::evaluation::RecordingOutcome& recording) {
    if (!isShown_ && paths_.empty()) {
        return;
    }
    // Not before there is something to take the place of what the files hold.
    beginAll();
    const std::string line = vorm::evaluation::jsonLine(about_, recording);
    if (isShown_) {
        progress_.clear();
        writeResults(options_, line);
    }
    for (vorm::evaluation::OutputFile& file : files_) {
        file.write(line);
    }
}

}  // namespace assess
