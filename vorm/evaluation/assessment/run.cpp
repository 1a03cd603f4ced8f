#include "run.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/parallel/for_each_index.hpp>
#include <vorm/evaluation/recording/recording_parts.hpp>

#include <algorithm>
#include <condition_variable>
#include <map>
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

// Hands outcomes over in the order of their recordings, and calls what the options ask for, one
// call at a time, for recordings that are assessed at the same time by threads of their own.
class RunReporter {
public:
    using Take = std::function<void(RecordingOutcome&&, std::size_t)>;

    RunReporter(const RunOptions& options, unsigned atATime, std::size_t count, const Take& take)
        : options_(options),
          jobs_(std::max(1U, options.jobs / atATime)),
          count_(count),
          take_(take) {}

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

    /// Waits while too many outcomes wait for one before them. Whether the recording is still to be
    /// assessed: not when the run has failed.
    bool awaitTurn(std::size_t number) {
        std::unique_lock lock(mutex_);
        moved_.wait(lock, [&] { return hasFailed_ || number < next_ + mostWaiting; });
        return !hasFailed_;
    }

    void done(std::size_t number, RecordingOutcome outcome) {
        const std::lock_guard lock(mutex_);
        waiting_.emplace(number, std::move(outcome));
        ++doneCount_;
        // One whose call throws stays the next one, and nothing follows it.
        while (!hasFailed_ && !waiting_.empty() && waiting_.begin()->first == next_) {
            take_(std::move(waiting_.extract(waiting_.begin()).mapped()), count_);
            ++next_;
        }
        moved_.notify_all();
    }

    /// Nothing is handed over any more, and nobody waits.
    void fail() {
        const std::lock_guard lock(mutex_);
        hasFailed_ = true;
        moved_.notify_all();
    }

private:
    static constexpr std::size_t mostWaiting = 1000;

    std::string share() const {
        return count_ < 2
                   ? ""
                   : std::to_string(doneCount_) + " of " + std::to_string(count_) + " done, ";
    }

    const RunOptions& options_;
    const unsigned jobs_;
    const std::size_t count_;
    const Take& take_;
    std::mutex mutex_;
    std::condition_variable moved_;
    std::map<std::size_t, RecordingOutcome> waiting_;  // by the numbers of their recordings
    std::size_t doneCount_ = 0;
    std::size_t next_ = 0;  // to be handed over
    bool hasFailed_ = false;
};

// What is to be assessed of a queue: recordings, or parts of them where the layout splits.
class QueuedParts {
public:
    QueuedParts(const RecordingLayout& layout, const RecordingQueue& queue) : queue_(queue) {
        if (layout.time.timesBack != TimesBack::Split && !queue.isLeftOut) {
            return;
        }
        places_.emplace();
        for (std::size_t i = 0; i < queue.count; ++i) {
            addPartsOf(i, layout);
        }
    }

    std::size_t size() const { return places_ ? places_->size() : queue_.count; }

    RecordingSource at(std::size_t number) const {
        if (!places_) {
            return queue_.at(number);
        }
        RecordingSource source = queue_.at((*places_)[number].recording);
        source.part = (*places_)[number].part;
        source.parts = (*places_)[number].parts;
        return source;
    }

    /// Why it cannot be split, which is told where it would be read.
    std::optional<InputError> errorOf(std::size_t number) const {
        const auto found = errors_.find(number);
        return found == errors_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    struct Place {
        std::size_t recording;
        std::size_t part;
        std::size_t parts;
    };

    void addPartsOf(std::size_t recording, const RecordingLayout& layout) {
        const RecordingSource source = queue_.at(recording);
        try {
            for (const RecordingSource& part : partsOf(source, layout)) {
                add({recording, part.part, part.parts}, part);
            }
        } catch (const InputError& error) {
            if (add({recording, 0, 0}, source)) {
                errors_.emplace(places_->size() - 1, error);
            }
        }
    }

    bool add(Place place, const RecordingSource& source) {
        const bool isLeftOut = queue_.isLeftOut && queue_.isLeftOut(source);
        if (!isLeftOut) {
            places_->push_back(place);
        }
        return !isLeftOut;
    }

    const RecordingQueue& queue_;
    std::optional<std::vector<Place>> places_;  // none: all recordings as they are
    std::map<std::size_t, InputError> errors_;
};

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
    RunOutcome outcome{file.name, file.title, {}, options.strict, file.parameters};
    runEach(file, {recordings.size(), [&](std::size_t i) { return recordings[i]; }, {}}, options,
            [&](RecordingOutcome&& recording, std::size_t) {
                outcome.recordings.push_back(std::move(recording));
            });
    return outcome;
}

void runEach(const AssessmentFile& file, const RecordingQueue& recordings,
             const RunOptions& options,
             const std::function<void(RecordingOutcome&&, std::size_t)>& take) {
    chosenAssessments(file, options);
    const QueuedParts parts(file.layout, recordings);
    const auto atATime =
        static_cast<unsigned>(std::clamp<std::size_t>(parts.size(), 1, std::max(1U, options.jobs)));
    RunReporter reporter(options, atATime, parts.size(), take);
    forEachIndex(parts.size(), atATime, [&](std::size_t i) {
        try {
            if (reporter.awaitTurn(i)) {
                const RecordingSource source = parts.at(i);
                const auto error = parts.errorOf(i);
                reporter.done(i, error ? RecordingOutcome{source.name(), error, {}, {}, {}}
                                       : runOne(file, source, reporter.forRecording(i)));
            }
        } catch (...) {
            reporter.fail();
            throw;
        }
    });
}

}  // namespace vorm::evaluation
