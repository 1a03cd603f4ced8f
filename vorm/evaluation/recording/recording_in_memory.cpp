#include "recording_in_memory.hpp"

#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/signal/time_line.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <map>
#include <set>

namespace vorm::evaluation {
namespace {

// Enumerations of one name are one type.
class Enumerations {
public:
    void add(const SignalColumn& column) {
        if (!column.enumeration) {
            return;
        }
        const auto& name = column.enumeration->name;
        const auto& members = column.enumeration->members;
        if (name.empty()) {
            fail(column, "has no name");
        }
        if (std::set(members.begin(), members.end()).size() != members.size()) {
            fail(column, "has a member twice");
        }
        const auto [known, isNew] = byName_.emplace(name, members);
        if (!isNew && known->second != members) {
            fail(column, "has other members in another signal");
        }
    }

private:
    [[noreturn]] static void fail(const SignalColumn& column, const std::string& problem) {
        failAt({}, "signal " + shown(column.name) + ": the enumeration " +
                       shown(column.enumeration->name) + " " + problem);
    }

    std::map<std::string, std::vector<std::string>> byName_;
};

SignalColumn heldSamples(SignalColumn column) {
    column.name = heldName(column.name);
    column.interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    return column;
}

}  // namespace

Recording recordingOf(std::string name, const std::vector<SignalColumn>& columns,
                      const RecordingOptions& options) {
    Recording recording;
    recording.name = std::move(name);
    recording.timeline = timelineOf(columns, options.resolution, options.reach);
    std::set<std::string> names;
    Enumerations enumerations;
    for (const SignalColumn& column : columns) {
        if (!names.insert(column.name).second) {
            failAt({}, "there are two signals " + shown(column.name));
        }
        enumerations.add(column);
        recording.signals.push_back(signalOf(column, recording.timeline));
        recording.availableNames.push_back(column.name);
    }
    for (const SignalColumn& column : columns) {
        if (options.names.contains(heldName(column.name))) {
            recording.signals.push_back(signalOf(heldSamples(column), recording.timeline));
        }
    }
    const auto span = recordedSpan(columns);
    if (span && recording.find(timeName) == nullptr) {
        const Timeline& timeline = recording.timeline;
        recording.time = timeSignal(timeline, {timeline.at(span->start), timeline.at(span->end)});
    }
    return recording;
}

}  // namespace vorm::evaluation
