// What is certain stays so, whatever turns out to have been where nothing was recorded.
// VORM_COMPLETED_FORMULAS is the number of formulas, VORM_COMPLETIONS that of completions for each.

#include "agreement.hpp"
#include "random_case.hpp"
#include "support/tries.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

namespace vorm::evaluation::test {
namespace {

/// A signal that is known at all times: its ends go on for ever.
Quantity anyFilling(bool isTruth) {
    Samples filling;
    filling.isLinear = !isTruth && anyIndex(2) == 1;
    const bool hasNans = !isTruth && onceIn(5);
    int time = anyBetween(-20, 20);
    for (std::size_t count = 1 + anyIndex(8); count > 0; --count) {
        const int value = isTruth ? anyBetween(0, 1) : anyBetween(-3, 4);
        filling.samples.push_back(
            {time, hasNans && onceIn(4) ? std::nullopt : std::optional(value)});
        time += anyBetween(1, 12);
    }
    const Quantity within = filling.quantity();
    return {within.events, [within](const Rational& at) {
                return within.at(std::clamp(at, within.events.front(), within.events.back()));
            }};
}

World anyCompletion(const RandomRecording& recording, const World& recorded) {
    World world;
    world.recorded = &recorded;
    for (const RandomSignal& signal : recording.signals) {
        for (const std::string& name : {signal.name, heldName(signal.name)}) {
            world.signals[name] = completed(recorded.signals.at(name), anyFilling(signal.isTruth));
        }
    }
    const Quantity time = recorded.signals.at(timeName);
    const Times ends{time.events.front() - 100, time.events.back() + 100};
    world.signals[timeName] = completed(time, {ends, [ends, recording](const Rational& at) {
                                                   return numberReading(recording.secondsAt(
                                                       std::clamp(at, ends.front(), ends.back())));
                                               }});
    return world;
}

/// The stretches of the range that lie in none of the spans, which are in order.
std::vector<Span> outside(const std::vector<Span>& spans, const Rational& from,
                          const Rational& to) {
    std::vector<Span> result;
    Rational start = from;
    for (const Span& span : spans) {
        if (start < span.start) {
            result.push_back({start, span.start});
        }
        start = std::max(start, span.end);
    }
    if (start < to) {
        result.push_back({start, to});
    }
    return result;
}

std::vector<Span> passesOf(const Judgement& judgement) {
    std::vector<Span> spans = judgement.failures;
    spans.insert(spans.end(), judgement.openSpans.begin(), judgement.openSpans.end());
    std::sort(spans.begin(), spans.end(),
              [](const Span& a, const Span& b) { return a.start < b.start; });
    return outside(spans, judgement.from, judgement.to);
}

/// Whether the course is true throughout the inner part of each span. The ends may belong to it or
/// not, and may be as inaccurate as meetings of lines; of an instant something has to be true.
bool isTrueWithin(const TruthCourse& course, const std::vector<Span>& spans) {
    const Rational margin = powerOfTen(-8);
    return std::all_of(spans.begin(), spans.end(), [&](const Span& span) {
        if (span.end - span.start <= 2 * margin) {
            return leastWithin(negation(course), span.start - margin, span.end + margin) == False;
        }
        return leastWithin(course, span.start + margin, span.end - margin) == True;
    });
}

/// Reads the judgement in ticks.
bool contradicts(const TruthCourse& completion, const Judgement& judgement) {
    return !isTrueWithin(negation(completion), judgement.failures) ||
           !isTrueWithin(completion, passesOf(judgement));
}

TEST(Completions, NeverContradictTheEngine) {
    const int formulas = vorm::test::triesOf("VORM_COMPLETED_FORMULAS", 300);
    const int completions = vorm::test::triesOf("VORM_COMPLETIONS", 5);
    vorm::test::checkTimes(formulas / formulasPerRecording, [&] {
        const RandomCase random = anyCase();
        const World recorded = worldOf(random.recording);
        const std::vector<Reported> reported = assessed(random.texts());
        for (std::size_t i = 0; i < reported.size(); ++i) {
            const RandomRequirement& requirement = random.requirements[i];
            const Judgement certain = random.inTicks(reported[i].judgement);
            for (int attempt = 0; attempt < completions; ++attempt) {
                const World world = anyCompletion(random.recording, recorded);
                const TruthCourse course = requirement.formula.in(world);
                if (!contradicts(course, certain) ||
                    isDelicate(requirement, recorded, judged(requirement, recorded))) {
                    continue;
                }
                RC_LOG() << random.shown(requirement) << "  is said to be   " << shown(certain)
                         << "\n  but can turn out "
                         << shown(judged(course, certain.from, certain.to)) << '\n';
                RC_FAIL("a certain result was none");
            }
        }
    });
}

}  // namespace
}  // namespace vorm::evaluation::test
