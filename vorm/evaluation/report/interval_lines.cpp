#include "interval_lines.hpp"

#include <vorm/evaluation/report/verdict_text.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

constexpr std::size_t mostReasons = 3;

std::string countText(std::size_t count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

void indent(std::vector<std::string>& lines, const std::vector<std::string>& below) {
    for (const std::string& line : below) {
        lines.push_back("  " + line);
    }
}

// What each interval is followed by, where there is anything to tell.
template <class Details>
std::vector<std::string> spanLines(const std::string& what, const std::vector<TimeSpan>& spans,
                                   std::size_t most, const TimeWriter& times,
                                   const Details& details) {
    const std::size_t shown = std::min(spans.size(), most);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back(what + " " + times.interval(spans[i]));
        indent(lines, details(i));
    }
    if (const std::size_t others = spans.size() - shown; others > 0) {
        lines.push_back(moreIntervalsText(others));
    }
    return lines;
}

// Of what is neither nothing nor all, however near it comes to that.
std::string partText(double share) {
    const double percent = 100 * share;
    if (percent < 1) {
        return "less than 1 %";
    }
    return percent > 99 ? "more than 99 %" : std::to_string(std::lround(percent)) + " %";
}

std::vector<std::string> reasonLines(const AssessmentOutcome& outcome, std::size_t span,
                                     const TimeWriter& times) {
    std::vector<std::string> lines;
    if (span >= outcome.openReasons.size()) {
        return lines;
    }
    const auto& reasons = outcome.openReasons[span];
    const std::size_t shown = std::min(reasons.size(), mostReasons);
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back((i == 0 ? "since " : "and ") + reasonText(reasons[i], times));
    }
    if (shown < reasons.size()) {
        lines.push_back("and for " + countText(reasons.size() - shown, "more reason"));
    }
    return lines;
}

// The same times with the digits that tell those apart that lists of so many intervals name.
TimeWriter withDigitsFor(const AssessmentOutcome& outcome, std::size_t most,
                         const TimeWriter& times) {
    std::vector<ExactTime> named{outcome.from, outcome.to};
    const auto add = [&](const TimeSpan& span) {
        named.push_back(span.start);
        named.push_back(span.end);
    };
    const auto addSome = [&](const std::vector<TimeSpan>& spans) {
        for (std::size_t i = 0; i < std::min(spans.size(), most); ++i) {
            add(spans[i]);
        }
    };
    addSome(outcome.failures);
    addSome(outcome.openSpans);
    for (std::size_t i = 0; i < std::min(outcome.explanations.size(), most); ++i) {
        const auto& causes = outcome.explanations[i].causes;
        for (std::size_t cause = 0; cause < std::min(causes.size(), mostCausesShown); ++cause) {
            add(causes[cause].span);
        }
    }
    for (std::size_t i = 0; i < std::min(outcome.openReasons.size(), most); ++i) {
        for (const OpenReason& reason : outcome.openReasons[i]) {
            add(reason.gap);
        }
    }
    return times.tellingApart(std::move(named));
}

// Of the first causes, each once.
std::vector<DefinitionText> definitionsIn(const FailureExplanation& explanation,
                                          std::size_t causes) {
    std::vector<DefinitionText> definitions;
    for (std::size_t i = 0; i < causes; ++i) {
        for (const DefinitionText& definition : explanation.causes[i].named.definitions) {
            if (std::find(definitions.begin(), definitions.end(), definition) ==
                definitions.end()) {
                definitions.push_back(definition);
            }
        }
    }
    return definitions;
}

const char* introduction(CauseExtent extent) {
    switch (extent) {
        case CauseExtent::Whole:
            return "because ";
        case CauseExtent::Beginning:
            return "at first because ";
        case CauseExtent::Part:
            break;
    }
    return "in part because ";
}

}  // namespace

std::string moreIntervalsText(std::size_t count) {
    return "and in " + countText(count, "more interval");
}

std::string whenText(const Cause& cause, const TimeWriter& times) {
    return cause.span.isInstant() ? times.instant(cause.span.start, cause.beside)
                                  : times.interval(cause.span);
}

std::string causeText(const Cause& cause, const TimeWriter& times) {
    return cause.named.text + " is " + (cause.value ? "true " : "false ") + whenText(cause, times);
}

std::string reasonText(const OpenReason& reason, const TimeWriter& times) {
    using Kind = OpenReason::Kind;
    const std::string signal = "'" + reason.signal + "'";
    const std::string atTime = " at " + times.moment(reason.gap.start);
    switch (reason.kind) {
        case Kind::NoSamples:
            return signal + " has no samples";
        case Kind::Hole:
            return signal + " has a hole " + times.interval(reason.gap);
        case Kind::SignalBegins:
            return signal + " begins" + atTime;
        case Kind::SignalEnds:
            return signal + " ends" + atTime;
        case Kind::RecordingBegins:
            return "the recording begins" + atTime;
        case Kind::RecordingEnds:
            return "the recording ends" + atTime;
        case Kind::WindowReachesBack:
            return "the window reaches back before the recording's begin" + atTime;
        case Kind::WindowReachesOn:
            break;
    }
    return "the window reaches beyond the recording's end" + atTime;
}

std::vector<std::string> causeLines(const FailureExplanation& explanation, std::size_t most,
                                    const TimeWriter& times) {
    if (explanation.causes.empty()) {
        return {"whatever its signals are"};
    }
    const std::size_t shown = std::min(explanation.causes.size(), most);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back((i == 0 ? introduction(explanation.extent) : "and ") +
                        causeText(explanation.causes[i], times));
    }
    if (shown < explanation.causes.size()) {
        lines.push_back("and for " + countText(explanation.causes.size() - shown, "more cause"));
    }
    for (const DefinitionText& definition : definitionsIn(explanation, shown)) {
        lines.push_back("where " + definition.name + " is " + definition.formula);
    }
    if (explanation.otherSets > 0) {
        const bool isOne = explanation.otherSets == 1 && !explanation.hasMoreSets;
        lines.push_back("(" + std::string(explanation.hasMoreSets ? "at least " : "") +
                        countText(explanation.otherSets, "other set") + " of conditions " +
                        (isOne ? "accounts" : "account") + " for it as well)");
    }
    return lines;
}

std::vector<std::string> failureLines(const AssessmentOutcome& outcome, std::size_t most,
                                      const TimeWriter& times) {
    const TimeWriter apart = withDigitsFor(outcome, most, times);
    return spanLines("fails", outcome.failures, most, apart, [&](std::size_t i) {
        return i < outcome.explanations.size()
                   ? causeLines(outcome.explanations[i], mostCausesShown, apart)
                   : std::vector<std::string>();
    });
}

std::vector<std::string> openLines(const AssessmentOutcome& outcome, std::size_t most,
                                   const TimeWriter& times) {
    if (outcome.openSpans.empty()) {
        return {};
    }
    const TimeWriter apart = withDigitsFor(outcome, most, times);
    if (outcome.verdict == assessments::resultEnum_t::NO_RESULT) {
        return reasonLines(outcome, 0, apart);
    }
    const std::string share = "no result for " + partText(outcome.openShare()) + " of the range";
    if (most == 0) {
        return {share};
    }
    std::vector<std::string> lines =
        spanLines("no result", outcome.openSpans, most, apart,
                  [&](std::size_t i) { return reasonLines(outcome, i, apart); });
    lines.front() = share + (outcome.openSpans.size() == 1 ? ": " : ", first ") +
                    apart.interval(outcome.openSpans.front());
    return lines;
}

}  // namespace vorm::evaluation
