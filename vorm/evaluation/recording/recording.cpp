#include "recording.hpp"

#include <vorm/evaluation/parallel/for_each_index.hpp>
#include <vorm/evaluation/recording/open_recording.hpp>
#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/recording/signal_naming.hpp>
#include <vorm/evaluation/signal/time_line.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

// Times are counted from the first one that is read, so that the numbers stay small.
Timeline countingFor(OpenRecording& recording, const RecordingLayout& layout) {
    auto& tables = recording.tables;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (!tables[i].hasTime() || !recording.mayBeWanted(tables[i])) {
            continue;
        }
        const auto first = tables[i].firstTime();
        if (tables.size() > mostOpenTables) {
            tables[i].close();
        }
        if (first) {
            return Timeline(layout.time.resolution.length, *first - recording.origins[i]);
        }
    }
    return Timeline(layout.time.resolution.length);
}

// Of all rows that were read, without a bias.
std::optional<CountedSpan> spanOf(const std::vector<TableSignals>& tables) {
    std::optional<CountedSpan> whole;
    for (const TableSignals& table : tables) {
        if (table.span) {
            const CountedSpan span = whole.value_or(*table.span);
            whole = {std::min(span.first, table.span->first),
                     std::max(span.last, table.span->last)};
        }
    }
    return whole;
}

Timeline placed(const Timeline& counting, const std::optional<CountedSpan>& span, ExactTime reach) {
    const double first = span ? std::min(0.0, span->first) : 0;
    const double last = span ? std::max(0.0, span->last) : 0;
    return counting.over(first, last, counting.ticksIn(reach));
}

std::string joinedBySemicolons(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : "; ") + text;
    }
    return joined;
}

}  // namespace

const Signal* Recording::find(std::string_view wanted) const {
    const auto found = std::find_if(signals.begin(), signals.end(),
                                    [&](const Signal& signal) { return signal.name == wanted; });
    const Signal* other = time && wanted == timeName ? &*time : nullptr;
    return found == signals.end() ? other : &*found;
}

Recording readRecordingFiles(const std::string& name, const std::vector<RecordingFile>& files,
                             const RecordingLayout& layout, const ReadingOptions& options,
                             std::size_t blockSize) {
    OpenRecording recording = openRecording(files, layout, options.wanted, blockSize);
    const Timeline counting = countingFor(recording, layout);
    std::vector<TableSignals> signals(recording.tables.size());
    ReadingOptions ofTable = options;
    ofTable.jobs = std::max(1U, options.jobs / std::max(1U, static_cast<unsigned>(signals.size())));
    forEachIndex(signals.size(), options.jobs, [&](std::size_t i) {
        Table& table = recording.tables[i];
        if (!recording.mayBeWanted(table)) {
            signals[i] = unreadTable(table);
            return;
        }
        table.times();
        table.reportTo(options.progress);
        signals[i] =
            readTable(table, recording.origins[i], counting, recording.selection, layout, ofTable);
        table.close();
    });
    const bool hasLongForm =
        std::any_of(recording.tables.begin(), recording.tables.end(),
                    [](const Table& table) { return table.longColumns().has_value(); });
    const bool isWhole = options.maximumRows == ReadingOptions().maximumRows || !hasLongForm;
    const auto span = spanOf(signals);
    const Timeline timeline = placed(counting, span, options.reach);
    std::vector<std::string> remarks;
    std::vector<std::string> warnings;
    for (const TableSignals& table : signals) {
        if (!table.remarks.empty()) {
            remarks.push_back(table.file.path + ": " + joinedBySemicolons(table.remarks));
        }
        warnings.insert(warnings.end(), table.warnings.begin(), table.warnings.end());
    }
    Recording named = namedSignals(name, timeline, std::move(signals), std::move(recording.leftOut),
                                   recording.selection, layout, isWhole);
    if (span && named.find(timeName) == nullptr) {
        named.time =
            timeSignal(timeline, {timeline.biased(span->first), timeline.biased(span->last)});
    }
    named.clock = recording.clock();
    named.remarks = std::move(remarks);
    named.warnings = std::move(warnings);
    return named;
}

Recording readRecording(const RecordingSource& source, const RecordingLayout& layout,
                        const ReadingOptions& options) {
    Recording recording =
        readRecordingFiles(source.name(), recordingFiles(source), layout, options);
    if (const auto others = otherFiles(source); !others.empty()) {
        recording.remarks.push_back("not read for " +
                                    std::string(others.size() == 1 ? "its" : "their") +
                                    " ending: " + quotedList(others));
    }
    return recording;
}

}  // namespace vorm::evaluation
