#pragma once

// A random recording with random requirements, the texts that they are written as, and what the
// oracle and the engine make of them, both in ticks.

#include "random_recording.hpp"
#include "said.hpp"

#include <string>
#include <vector>

namespace vorm::evaluation::test {

/// A formula and the range in which it has to hold, in ticks.
struct RandomRequirement {
    SaidTruth formula;
    Span known;  ///< from the first to the last sample of its signals
    std::optional<Rational> from;
    std::optional<Rational> to;
};

/// The time in seconds over all rows.
Quantity timeQuantity(const RandomRecording& recording);

World worldOf(const RandomRecording& recording);

RandomRequirement anyRequirement(const RandomRecording& recording);

Judgement judged(const RandomRequirement& requirement, const World& world);

struct RandomCase {
    RandomRecording recording;
    TimeWriting writing;
    Form form;
    std::vector<RandomRequirement> requirements;

    Texts texts() const;

    /// What it takes to see one of the requirements judged.
    std::string shown(const RandomRequirement& requirement) const;

    /// The engine's judgements, which count in seconds, in ticks.
    Judgement inTicks(const Judgement& inSeconds) const;

private:
    std::string boundText(const std::string& key, const std::optional<Rational>& tick) const;
};

inline constexpr int formulasPerRecording = 8;

RandomCase anyCase();

std::string shown(const Judgement& judgement);

}  // namespace vorm::evaluation::test
