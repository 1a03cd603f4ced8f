#pragma once

// Recordings in memory, for the tests of this folder.

#include <vorm/evaluation/recording/recording.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vorm::evaluation::test {

using Samples = std::vector<std::pair<double, double>>;

/// A held quantity of double; each piece is known from its first to its last sample.
inline Signal heldSignal(const std::string& name, const std::vector<Samples>& pieces,
                         const Timeline& timeline) {
    TracePieces traces;
    for (const Samples& samples : pieces) {
        assessments::TimedTrace_T<double> trace(assessments::INTERPOLATION_METHOD::ZOH, 0);
        for (const auto& [seconds, value] : samples) {
            trace.push_back({timeline.at(ExactTime::ofSeconds(seconds).value()), value});
        }
        traces.emplace_back(trace);
    }
    return {name, SignalType::of<double>(), "",
            std::make_shared<const TracePieces>(std::move(traces))};
}

/// A recording of held quantities with times from 0 s to 1,000 s.
inline Recording recordingOf(
    const std::vector<std::pair<std::string, std::vector<Samples>>>& signals) {
    Recording recording;
    recording.name = "in memory";
    recording.timeline = Timeline().over(0, 1e12);
    for (const auto& [name, pieces] : signals) {
        recording.signals.push_back(heldSignal(name, pieces, recording.timeline));
        recording.availableNames.push_back(name);
    }
    return recording;
}

}  // namespace vorm::evaluation::test
