#include "run.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/parallel/for_each_index.hpp>
#include <vorm/evaluation/recording/recording_parts.hpp>

#include <algorithm>
#include <mutex>
#include <utility>

namespace vorm::evaluation {
namespace {

RecordingOutcome runOne(const AssessmentFile& file, const RecordingSource& source,
                        const RunOptions& options) {
    Recording recording;
    try {
        recording = readRecordingFor(file, source, options);
    } catch (const InputError& error) {
        return {source.name(), error, {}, {}, {}};
    }
    return assess(file, recording, options);
}

// Calls what the options ask for, one call at a time, for recordings that are assessed at the same
// time by threads of their own.
class RunReporter {
public:
    RunReporter(const RunOptions& options, unsigned atATime,
                const std::vector<RecordingOutcome>& outcomes)
        : options_(options),
          jobs_(std::max(1U, options.jobs / atATime)),
          outcomes_(outcomes),
          isDone_(outcomes.size()) {}

    /// Refers to this object.
    RunOptions forRecording(std::size_t number) {
        RunOptions options = options_;
        options.jobs = jobs_;
        if (options_.progress) {
            options.progress = [this](const std::string& text) {
                const std::lock_guard lock(mutex_);
                options_.progress(share() + text);
            };
        }
        if (options_.assessed) {
            options.assessed = [this, number](AssessedRecording assessed) {
                const std::lock_guard lock(mutex_);
                assessed.number = number;
                options_.assessed(assessed);
            };
        }
        return options;
    }

    // Recordings are done in any order, and told in their own.
    void done(std::size_t number) {
        const std::lock_guard lock(mutex_);
        isDone_[number] = true;
        ++doneCount_;
        for (; !hasFailed_ && next_ < isDone_.size() && isDone_[next_]; ++next_) {
            if (options_.done) {
                hasFailed_ = true;  // unless the call returns
                options_.done(outcomes_[next_], outcomes_.size());
                hasFailed_ = false;
            }
        }
    }

private:
    std::string share() const {
        return outcomes_.size() < 2 ? ""
                                    : std::to_string(doneCount_) + " of " +
                                          std::to_string(outcomes_.size()) + " done, ";
    }

    const RunOptions& options_;
    const unsigned jobs_;
    const std::vector<RecordingOutcome>& outcomes_;
    std::vector<bool> isDone_;
    std::size_t doneCount_ = 0;
    std::size_t next_ = 0;  // to be told
    bool hasFailed_ = false;
    std::mutex mutex_;
};

// What cannot be split is told where it is read.
std::vector<RecordingSource> allParts(const RecordingLayout& layout,
                                      const std::vector<RecordingSource>& recordings,
                                      std::vector<std::optional<InputError>>& errors) {
    std::vector<RecordingSource> all;
    for (const RecordingSource& recording : recordings) {
        try {
            for (RecordingSource& part : partsOf(recording, layout)) {
                all.push_back(std::move(part));
            }
            errors.resize(all.size());
        } catch (const InputError& error) {
            all.push_back(recording);
            errors.emplace_back(error);
        }
    }
    return all;
}

}  // namespace

Recording readRecordingFor(const AssessmentFile& file, const RecordingSource& source,
                           const RunOptions& options) {
    const auto assessments = chosenAssessments(file, options);
    ReadingOptions reading;
    reading.wanted = namesToRead(file, assessments);
    reading.jobs = options.jobs;
    reading.reach = reachOf(file, assessments);
    std::mutex mutex;  // files are read by several threads
    std::size_t bytes = 0;
    if (options.progress) {
        reading.progress = [&](std::size_t more) {
            const std::lock_guard lock(mutex);
            bytes += more;
            options.progress("reading " + source.name() + ": " + std::to_string(bytes / 1'000'000) +
                             " MB");
        };
    }
    return readRecording(source, file.layout, reading);
}

RunOutcome run(const AssessmentFile& file, const std::vector<RecordingSource>& recordings,
               const RunOptions& options) {
    chosenAssessments(file, options);
    std::vector<std::optional<InputError>> errors;
    const std::vector<RecordingSource> parts = allParts(file.layout, recordings, errors);
    RunOutcome outcome{file.name, file.title, {}, options.strict, file.parameters};
    outcome.recordings.resize(parts.size());
    const auto atATime =
        static_cast<unsigned>(std::clamp<std::size_t>(parts.size(), 1, std::max(1U, options.jobs)));
    RunReporter reporter(options, atATime, outcome.recordings);
    forEachIndex(parts.size(), atATime, [&](std::size_t i) {
        outcome.recordings[i] = errors[i] ? RecordingOutcome{parts[i].name(), errors[i], {}, {}, {}}
                                          : runOne(file, parts[i], reporter.forRecording(i));
        reporter.done(i);
    });
    return outcome;
}

}  // namespace vorm::evaluation
