#pragma once

// The files of a recording, opened for reading or for a survey.

#include <vorm/evaluation/recording/signal_selection.hpp>
#include <vorm/evaluation/table/table.hpp>
#include <vorm/evaluation/time/wall_clock.hpp>

namespace vorm::evaluation {

struct OpenRecording {
    SignalSelection selection;
    std::vector<Table> tables;
    std::vector<ExactTime> origins;   ///< time 0, as each of the tables counts
    std::vector<InputError> leftOut;  ///< why signals of the other files are not even known

    /// Whether some signal of the table may be wanted, or its times are.
    bool mayBeWanted(const Table& table) const;
    bool hasWantedSignal(const Table& table) const;

    /// Of tables that may be wanted and whose times are all dates; nothing where time 0 of some
    /// table is another one.
    std::optional<WallClock> clock() const;
};

enum class MissingTimes { Refused, Allowed };

/// Opens the files and reads their headers. A file alone, and each file where all signals are
/// wanted, has to be a table, and one with times unless these may be missing. The layout and the
/// wanted names outlive the result. Throws InputError.
OpenRecording openRecording(const std::vector<RecordingFile>& files, const RecordingLayout& layout,
                            const std::optional<std::set<std::string>>& wanted,
                            std::size_t blockSize = ByteWindow::defaultBlockSize,
                            MissingTimes missingTimes = MissingTimes::Refused);

}  // namespace vorm::evaluation
