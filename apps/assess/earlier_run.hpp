#pragma once

#include "options.hpp"

#include <vorm/evaluation/assessment/run.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace assess {

/// The file of JSON lines after whose lines a run is to go on. Throws WrongUsage where the options
/// ask for that and there is none, for results that need what the lines do not tell, or for
/// standard input.
std::string fileToResume(const Options& options);

/// What a run has done before it was interrupted: the lines that are in its file.
class EarlierRun {
public:
    /// None.
    EarlierRun() = default;

    /// Hands over what each line tells. Throws InputError for lines that a run with that
    /// fingerprint cannot go on after.
    EarlierRun(const std::string& path, const std::string& fingerprint,
               const std::function<void(const vorm::evaluation::RecordingOutcome&)>& take);

    /// How many recordings are done.
    std::size_t count() const { return count_; }
    /// What whole lines take.
    std::uintmax_t bytes() const { return bytes_; }

    /// Whether a line tells of a recording; each line is used up by one. Throws InputError for a
    /// name that is no UTF-8, which a line cannot keep.
    bool hasDone(const vorm::evaluation::RecordingSource& recording);

    /// Throws InputError where a line tells of a recording that is none of the run.
    void requireAllAsked() const;

private:
    std::string path_;
    std::uintmax_t bytes_ = 0;
    std::size_t count_ = 0;
    std::map<std::string, std::size_t> lines_;  // that are not used up, by recording
};

}  // namespace assess
