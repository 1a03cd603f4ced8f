#include "earlier_run.hpp"

#include "commands.hpp"
#include "json_lines.hpp"

#include <vorm/evaluation/report/earlier_lines.hpp>
#include <vorm/evaluation/report/json_report.hpp>

#include <vector>

namespace assess {

std::string fileToResume(const Options& options) {
    if (!options.resume) {
        return "";
    }
    std::vector<std::string> files = jsonLineFiles(options);
    if (files.size() != 1) {
        throw WrongUsage("--resume needs the one file to go on with: --format jsonl=FILE");
    }
    if (needsAllOutcomes(options)) {
        throw WrongUsage(
            "--resume goes with --format jsonl=FILE and the table alone: other results need all "
            "of what was done before");
    }
    return files.front();
}

EarlierRun::EarlierRun(const std::string& path, const std::string& fingerprint,
                       const std::function<void(const vorm::evaluation::RecordingOutcome&)>& take)
    : path_(path) {
    bytes_ = vorm::evaluation::readEarlierLines(
        path, fingerprint, [&](const vorm::evaluation::RecordingOutcome& recording) {
            ++count_;
            ++lines_[recording.recording];
            take(recording);
        });
}

bool EarlierRun::hasDone(const vorm::evaluation::RecordingSource& recording) {
    const auto line = lines_.find(vorm::evaluation::nameInJson(recording.name()));
    if (line == lines_.end()) {
        return false;
    }
    if (--line->second == 0) {
        lines_.erase(line);
    }
    return true;
}

void EarlierRun::requireAllAsked() const {
    if (!lines_.empty()) {
        vorm::evaluation::failAt(
            {path_},
            "tells of '" + lines_.begin()->first + "', which is none of the recordings of this run",
            "give all recordings of the run that was interrupted, or write to "
            "another file");
    }
}

}  // namespace assess
