#include "json_lines.hpp"

#include <vorm/evaluation/report/json_report.hpp>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace assess {
namespace {

[[noreturn]] void failToWrite(const std::string& path, int error) {
    vorm::evaluation::InputProblem problem;
    problem.message = "cannot write '" + path + "': " + std::generic_category().message(error);
    problem.advice = "give another path, or make room on the disk";
    throw vorm::evaluation::InputError(std::move(problem));
}

bool showsLines(const Options& options) {
    return comesInLines(options.format) && (options.output.empty() || options.output == "-");
}

}  // namespace

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
    std::ios::openmode mode = std::ios::binary;
    if (earlier_.count() > 0) {
        std::error_code error;
        std::filesystem::resize_file(path, earlier_.bytes(), error);
        if (error) {
            failToWrite(path, error.value());
        }
        mode |= std::ios::app;
    }
    errno = 0;
    files_.push_back({path, std::ofstream(path, mode)});
    if (!files_.back().stream) {
        failToWrite(path, errno);
    }
}

void JsonLines::add(const vorm::evaluation::RecordingOutcome& recording) {
    if (!isShown_ && paths_.empty()) {
        return;
    }
    // Not before there is something to take the place of what the files hold.
    while (files_.size() < paths_.size()) {
        begin(paths_[files_.size()]);
    }
    const std::string line = vorm::evaluation::jsonLine(about_, recording);
    if (isShown_) {
        progress_.clear();
        writeResults(options_, line);
    }
    for (File& file : files_) {
        errno = 0;
        file.stream << line << std::flush;
        if (!file.stream) {
            failToWrite(file.path, errno);
        }
    }
}

}  // namespace assess
