#include "open_recording.hpp"

#include <vorm/evaluation/recording/table_origin.hpp>

#include <algorithm>

namespace vorm::evaluation {

bool OpenRecording::mayBeWanted(const Table& table) const {
    // The time reaches over all files, whatever else is asked for: no requirement may fail or pass
    // by what others read.
    return hasWantedSignal(table) || (selection.wantsTime() && table.hasTime());
}

bool OpenRecording::hasWantedSignal(const Table& table) const {
    if (selection.wantsAll() || table.longColumns()) {
        return true;
    }
    for (std::size_t i = 0; i < table.headers().size(); ++i) {
        const ColumnHeader& header = table.headers()[i];
        const bool isWanted =
            !selection.requestsFor(table.file(), header).empty() ||
            (header.isOneOfSeveral && selection.meansSeveral(table.file(), header));
        if (isWanted && !table.isTime(i)) {
            return true;
        }
    }
    return false;
}

std::optional<WallClock> OpenRecording::clock() const {
    std::optional<WallClock> clock;
    std::optional<ExactTime> zero;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const Table& table = tables[i];
        if (!table.hasTime() || !mayBeWanted(table)) {
            continue;
        }
        const auto& times = table.times();
        const bool areDates = std::all_of(times.begin(), times.end(), [](const TimeColumn& column) {
            return column.tellsDates();
        });
        if (!areDates || (zero && *zero != origins[i])) {
            return std::nullopt;
        }
        zero = origins[i];
        clock.emplace(*zero, times.front().zone());
    }
    return clock;
}

OpenRecording openRecording(const std::vector<RecordingFile>& files, const RecordingLayout& layout,
                            const std::optional<std::set<std::string>>& wanted,
                            std::size_t blockSize, MissingTimes missingTimes) {
    const SignalSelection selection(layout, wanted, files.size() > 1);
    const bool needsAll = selection.wantsAll() || files.size() == 1;
    auto [tables, leftOut] = openTables(toldApart(files), layout, needsAll, blockSize);
    if (needsAll && missingTimes == MissingTimes::Refused) {
        for (const Table& table : tables) {
            table.times();
        }
    }
    auto origins = originsOf(tables, layout.time.origin);
    return {selection, std::move(tables), std::move(origins), std::move(leftOut)};
}

}  // namespace vorm::evaluation
