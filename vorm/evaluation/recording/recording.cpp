#include "recording.hpp"

#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/recording/signal_naming.hpp>
#include <vorm/evaluation/recording/table_origin.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>

namespace vorm::evaluation {
namespace {

// Calls task(0) to task(count - 1) on that many threads, and throws what the first of the failed
// ones threw.
template <class Task>
void runTasks(std::size_t count, std::size_t threads, const Task& task) {
    std::vector<std::exception_ptr> failures(count);
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < count; i = next++) {
            try {
                task(i);
            } catch (...) {
                failures[i] = std::current_exception();
            }
        }
    };
    {
        std::vector<std::jthread> others;
        for (std::size_t i = 1; i < std::min(threads, count); ++i) {
            others.emplace_back(work);
        }
        work();
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

}  // namespace

std::string RecordingSource::name() const {
    std::string text;
    for (const std::string& path : paths) {
        text += (text.empty() ? "" : "+") + path;
    }
    return text;
}

const Signal* Recording::find(std::string_view wanted) const {
    const auto found = std::find_if(signals.begin(), signals.end(),
                                    [&](const Signal& signal) { return signal.name == wanted; });
    return found == signals.end() ? nullptr : &*found;
}

Recording readRecordingFiles(const std::string& name, const std::vector<RecordingFile>& files,
                             const RecordingLayout& layout, const ReadingOptions& options,
                             std::size_t blockSize) {
    const SignalSelection selection(layout, options.wanted, files.size() > 1);
    std::vector<Table> tables = openTables(files, layout, selection.wantsAll(), blockSize);
    const auto origins = originsOf(tables, layout.time.origin);
    std::vector<TableSignals> signals(tables.size());
    runTasks(tables.size(), options.jobs, [&](std::size_t i) {
        if (!mayBeWanted(tables[i], selection)) {
            signals[i] = unreadTable(tables[i]);
            return;
        }
        tables[i].time();
        tables[i].reportTo(options.progress);
        signals[i] = readTable(tables[i], *origins[i], selection, layout, options.maximumRows);
        tables[i].close();
    });
    const bool hasLongForm = std::any_of(tables.begin(), tables.end(), [](const Table& table) {
        return table.longColumns().has_value();
    });
    const bool isWhole = options.maximumRows == ReadingOptions().maximumRows || !hasLongForm;
    return namedSignals(name, std::move(signals), selection, layout, isWhole);
}

Recording readRecording(const RecordingSource& source, const RecordingLayout& layout,
                        const ReadingOptions& options) {
    return readRecordingFiles(source.name(), recordingFiles(source), layout, options);
}

}  // namespace vorm::evaluation
