#include "random_case.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

namespace vorm::evaluation::test {
namespace {

std::string allShown(const std::vector<Span>& spans) {
    std::string text;
    for (const Span& span : spans) {
        text += " [" + shown(span.start) + ", " + shown(span.end) + ']';
    }
    return text;
}

}  // namespace

Quantity timeQuantity(const RandomRecording& recording) {
    const Times rows = timesOf(recording.signals);
    const Times ends{rows.front(), rows.back()};
    return {ends, [ends, recording](const Rational& time) {
                const bool isKnown = ends.front() <= time && time <= ends.back();
                const bool isEnd = time == ends.front() || time == ends.back();
                return isKnown ? Reading{Reading::Number, recording.secondsAt(time), !isEnd}
                               : Reading{};
            }};
}

World worldOf(const RandomRecording& recording) {
    World world;
    for (const RandomSignal& signal : recording.signals) {
        world.signals[signal.name] = signal.said.quantity();
        Samples held = signal.said;
        held.isLinear = false;
        world.signals[heldName(signal.name)] = held.quantity();
    }
    world.signals[timeName] = timeQuantity(recording);
    return world;
}

Judgement judged(const RandomRequirement& requirement, const World& world) {
    return judged(requirement.formula.in(world), requirement.from.value_or(requirement.known.start),
                  requirement.to.value_or(requirement.known.end));
}

Texts RandomCase::texts() const {
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

std::string RandomCase::shown(const RandomRequirement& requirement) const {
    RandomCase alone = *this;
    alone.requirements = {requirement};
    const Texts texts = alone.texts();
    return texts.recordingName + ":\n" + texts.recording + '\n' + texts.assessments +
           "\nin ticks of " + test::shown(recording.grid.tick) + " s from " +
           test::shown(recording.reportedOffset()) + " s on it\n";
}

Judgement RandomCase::inTicks(const Judgement& inSeconds) const {
    const auto ticks = [&](const Rational& time) {
        return Rational((time - recording.reportedOffset()) / recording.grid.tick);
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

std::string RandomCase::boundText(const std::string& key,
                                  const std::optional<Rational>& tick) const {
    if (!tick) {
        return "";
    }
    return key + " = \"" + *decimal(recording.secondsAt(*tick)) + " s\"\n";
}

RandomCase anyCase() {
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

std::string shown(const Judgement& judgement) {
    return judgement.verdict + " from " + shown(judgement.from) + " to " + shown(judgement.to) +
           ", failing" + allShown(judgement.failures) + ", open" + allShown(judgement.openSpans) +
           ", passed " + shown(judgement.passed) + ", failed " + shown(judgement.failed) +
           ", open " + shown(judgement.open);
}

}  // namespace vorm::evaluation::test
