#include "open_recording.hpp"

#include <vorm/evaluation/recording/table_origin.hpp>

namespace vorm::evaluation {

bool OpenRecording::mayBeWanted(const Table& table) const {
    if (selection.wantsAll() || table.longColumns()) {
        return true;
    }
    for (std::size_t i = 0; i < table.headers().size(); ++i) {
        const bool isTime = table.hasTime() && table.time().contains(i);
        if (!isTime && !selection.requestsFor(table.file(), table.headers()[i]).empty()) {
            return true;
        }
    }
    return false;
}

OpenRecording openRecording(const std::vector<RecordingFile>& files, const RecordingLayout& layout,
                            const std::optional<std::set<std::string>>& wanted,
                            std::size_t blockSize) {
    const SignalSelection selection(layout, wanted, files.size() > 1);
    const bool needsAll = selection.wantsAll() || files.size() == 1;
    auto [tables, leftOut] = openTables(toldApart(files), layout, needsAll, blockSize);
    if (needsAll) {
        for (const Table& table : tables) {
            table.time();
        }
    }
    auto origins = originsOf(tables, layout.time.origin);
    return {selection, std::move(tables), std::move(origins), std::move(leftOut)};
}

}  // namespace vorm::evaluation
