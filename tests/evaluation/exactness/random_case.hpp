#pragma once

// A random recording with random requirements, the texts that they are written as, and what the
// oracle and the engine make of them, both in ticks.

#include "random_formula.hpp"

#include <rapidcheck.h>

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

inline World worldOf(const RandomRecording& recording) {
    World world;
    for (const RandomSignal& signal : recording.signals) {
        world.signals[signal.name] = signal.said.quantity();
    }
    return world;
}

inline RandomRequirement anyRequirement(const RandomRecording& recording) {
    RandomRequirement result{FormulaGrower(recording).truth(1 + anyIndex(3)), {}, {}, {}};
    std::vector<RandomSignal> signals = recording.signals;
    std::erase_if(signals, [&](const RandomSignal& signal) {
        return !result.formula.signals.contains(signal.name);
    });
    const Times times = timesOf(signals);
    result.known = {times.front(), times.back()};
    const Rational from = anyBetween(-5, 8);
    if (onceIn(4) && from <= result.known.end) {
        result.from = from;
    }
    if (onceIn(4)) {
        result.to = std::max(from, result.known.start) + anyBetween(0, 40);
    }
    return result;
}

inline Judgement judged(const RandomRequirement& requirement, const World& world) {
    return judged(requirement.formula.in(world), requirement.from.value_or(requirement.known.start),
                  requirement.to.value_or(requirement.known.end));
}

struct RandomCase {
    RandomRecording recording;
    TimeWriting writing;
    Form form;
    std::vector<RandomRequirement> requirements;

    /// Seconds of tick 0, as they are reported.
    Rational reportedOffset() const {
        return writing.isFromFirst ? Rational(-recording.firstTick() * recording.grid.tick)
                                   : recording.grid.offset;
    }

    Texts texts() const {
        Texts texts;
        texts.recordingName = form == Form::JsonLines ? "r.jsonl" : "r.csv";
        texts.recording = recordingText(recording, writing, form);
        texts.assessments = layoutText(recording, writing, form);
        for (const RandomRequirement& requirement : requirements) {
            texts.assessments += "[[assessment]]\nname = \"" +
                                 std::to_string(&requirement - requirements.data()) +
                                 "\"\nformula = \"" + requirement.formula.text + "\"\n";
            texts.assessments += boundText("from", requirement.from);
            texts.assessments += boundText("to", requirement.to);
        }
        return texts;
    }

    /// What it takes to see one of the requirements judged.
    std::string shown(const RandomRequirement& requirement) const {
        RandomCase alone = *this;
        alone.requirements = {requirement};
        const Texts texts = alone.texts();
        return texts.recordingName + ":\n" + texts.recording + '\n' + texts.assessments +
               "\nin ticks of " + test::shown(recording.grid.tick) + " s from " +
               test::shown(reportedOffset()) + " s on it\n";
    }

    /// The engine's judgements, which count in seconds, in ticks.
    Judgement inTicks(const Judgement& inSeconds) const {
        const auto ticks = [&](const Rational& time) {
            return Rational((time - reportedOffset()) / recording.grid.tick);
        };
        const auto allTicks = [&](std::vector<Span> spans) {
            for (Span& span : spans) {
                span = {ticks(span.start), ticks(span.end)};
            }
            return spans;
        };
        return {.verdict = inSeconds.verdict,
                .from = ticks(inSeconds.from),
                .to = ticks(inSeconds.to),
                .failures = allTicks(inSeconds.failures),
                .openSpans = allTicks(inSeconds.openSpans),
                .passed = inSeconds.passed / recording.grid.tick,
                .failed = inSeconds.failed / recording.grid.tick,
                .open = inSeconds.open / recording.grid.tick};
    }

private:
    std::string boundText(const std::string& key, const std::optional<Rational>& tick) const {
        if (!tick) {
            return "";
        }
        return key + " = \"" + *decimal(reportedOffset() + *tick * recording.grid.tick) + " s\"\n";
    }
};

inline constexpr int formulasPerRecording = 8;

inline RandomCase anyCase() {
    RandomCase result;
    result.recording = anyRecording();
    result.writing = anyTimeWriting(result.recording.grid);
    // JSON has no NaN.
    const std::size_t forms = result.recording.hasNans() ? 2 : 3;
    result.form = static_cast<Form>(anyIndex(forms));
    for (int i = 0; i < formulasPerRecording; ++i) {
        result.requirements.push_back(anyRequirement(result.recording));
    }
    return result;
}

inline std::string shown(const std::vector<Span>& spans) {
    std::string text;
    for (const Span& span : spans) {
        text += " [" + shown(span.start) + ", " + shown(span.end) + ']';
    }
    return text;
}

inline std::string shown(const Judgement& judgement) {
    return judgement.verdict + " from " + shown(judgement.from) + " to " + shown(judgement.to) +
           ", failing" + shown(judgement.failures) + ", open" + shown(judgement.openSpans) +
           ", passed " + shown(judgement.passed) + ", failed " + shown(judgement.failed) +
           ", open " + shown(judgement.open);
}

}  // namespace vorm::evaluation::test
