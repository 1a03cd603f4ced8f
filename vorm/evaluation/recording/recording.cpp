#include "recording.hpp"

#include <vorm/evaluation/parallel/for_each_index.hpp>
#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/recording/signal_naming.hpp>
#include <vorm/evaluation/recording/table_origin.hpp>

#include <algorithm>

namespace vorm::evaluation {
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
    const bool isAlone = files.size() == 1;
    auto [tables, leftOut] =
        openTables(toldApart(files), layout, selection.wantsAll() || isAlone, blockSize);
    if (isAlone) {
        tables.front().time();
    }
    const auto origins = originsOf(tables, layout.time.origin);
    std::vector<TableSignals> signals(tables.size());
    forEachIndex(tables.size(), options.jobs, [&, &tables = tables](std::size_t i) {
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
    return namedSignals(name, std::move(signals), std::move(leftOut), selection, layout, isWhole);
}

Recording readRecording(const RecordingSource& source, const RecordingLayout& layout,
                        const ReadingOptions& options) {
    return readRecordingFiles(source.name(), recordingFiles(source), layout, options);
}

}  // namespace vorm::evaluation
