#include "recording.hpp"

#include <vorm/evaluation/parallel/for_each_index.hpp>
#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/recording/signal_naming.hpp>
#include <vorm/evaluation/recording/table_origin.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

// Times are counted from the first one that is read, so that the numbers stay small.
Timeline countingFor(std::vector<Table>& tables, const std::vector<ExactTime>& origins,
                     const SignalSelection& selection, const RecordingLayout& layout) {
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (!tables[i].hasTime() || !mayBeWanted(tables[i], selection)) {
            continue;
        }
        const auto first = tables[i].firstTime();
        if (tables.size() > mostOpenTables) {
            tables[i].close();
        }
        if (first) {
            return Timeline(layout.time.resolution.length, *first - origins[i]);
        }
    }
    return Timeline(layout.time.resolution.length);
}

Timeline placed(const Timeline& counting, const std::vector<TableSignals>& tables,
                ExactTime reach) {
    CountedSpan whole{0, 0};
    for (const TableSignals& table : tables) {
        if (table.span) {
            whole = {std::min(whole.first, table.span->first),
                     std::max(whole.last, table.span->last)};
        }
    }
    return counting.over(whole.first, whole.last, counting.ticksIn(reach));
}

}  // namespace

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
    const Timeline counting = countingFor(tables, origins, selection, layout);
    std::vector<TableSignals> signals(tables.size());
    forEachIndex(tables.size(), options.jobs, [&, &tables = tables](std::size_t i) {
        if (!mayBeWanted(tables[i], selection)) {
            signals[i] = unreadTable(tables[i]);
            return;
        }
        tables[i].time();
        tables[i].reportTo(options.progress);
        signals[i] =
            readTable(tables[i], origins[i], counting, selection, layout, options.maximumRows);
        tables[i].close();
    });
    const bool hasLongForm = std::any_of(tables.begin(), tables.end(), [](const Table& table) {
        return table.longColumns().has_value();
    });
    const bool isWhole = options.maximumRows == ReadingOptions().maximumRows || !hasLongForm;
    const Timeline timeline = placed(counting, signals, options.reach);
    return namedSignals(name, timeline, std::move(signals), std::move(leftOut), selection, layout,
                        isWhole);
}

Recording readRecording(const RecordingSource& source, const RecordingLayout& layout,
                        const ReadingOptions& options) {
    return readRecordingFiles(source.name(), recordingFiles(source), layout, options);
}

}  // namespace vorm::evaluation
