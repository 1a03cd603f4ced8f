#include "earlier_run.hpp"

#include "commands.hpp"
#include "json_lines.hpp"

#include <vorm/evaluation/report/earlier_lines.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
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
    if (needsAllOutcomes(options) || showsLines(options)) {
        throw WrongUsage(
            "--resume goes with --format jsonl=FILE and the table alone: other results need all "
            "of what was done before");
    }
    const auto& recordings = options.recordings;
    if (std::find(recordings.begin(), recordings.end(), "-") != recordings.end()) {
        throw WrongUsage(
            "--resume does not know whether standard input is what it was: give the recording as a "
            "file");
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
    const std::string name = recording.name();
    if (vorm::evaluation::nameInJson(name) != name) {
        vorm::evaluation::failAt(
            {},
            vorm::evaluation::shown(name) +
                " is not in UTF-8, so that a line does not tell it from others",
            "rename it, or run without --resume");
    }
    const auto line = lines_.find(name);
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
            "give all recordings of the run that was interrupted, as they were, or write to "
            "another "
            "file");
    }
}

}  // namespace assess
