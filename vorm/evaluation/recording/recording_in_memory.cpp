#include "recording_in_memory.hpp"

#include <vorm/evaluation/text/characters.hpp>

namespace vorm::evaluation {

Recording recordingOf(std::string name, const std::vector<SignalColumn>& columns,
                      const RecordingOptions& options) {
    Recording recording;
    recording.name = std::move(name);
    recording.timeline = timelineOf(columns, options.resolution, options.reach);
    std::set<std::string> names;
    for (const SignalColumn& column : columns) {
        if (!names.insert(column.name).second) {
            failAt({}, "there are two signals " + shown(column.name));
        }
        recording.signals.push_back(signalOf(column, recording.timeline));
        recording.availableNames.push_back(column.name);
    }
    return recording;
}

}  // namespace vorm::evaluation
