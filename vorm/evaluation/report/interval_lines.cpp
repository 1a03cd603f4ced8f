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
                                   std::size_t most, const Details& details) {
    const std::size_t shown = std::min(spans.size(), most);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back(what + " " + intervalText(spans[i]));
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

std::vector<std::string> reasonLines(const AssessmentOutcome& outcome, std::size_t span) {
    std::vector<std::string> lines;
    if (span >= outcome.openReasons.size()) {
        return lines;
    }
    const auto& reasons = outcome.openReasons[span];
    const std::size_t shown = std::min(reasons.size(), mostReasons);
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back((i == 0 ? "since " : "and ") + reasons[i]);
    }
    if (shown < reasons.size()) {
        lines.push_back("and for " + countText(reasons.size() - shown, "more reason"));
    }
    return lines;
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

std::string causeText(const Cause& cause) {
    return cause.condition + " is " + (cause.value ? "true " : "false ") + cause.when;
}

std::vector<std::string> causeLines(const FailureExplanation& explanation, std::size_t most) {
    if (explanation.causes.empty()) {
        return {"whatever its signals are"};
    }
    const std::size_t shown = std::min(explanation.causes.size(), most);
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < shown; ++i) {
        lines.push_back((i == 0 ? introduction(explanation.extent) : "and ") +
                        causeText(explanation.causes[i]));
    }
    if (shown < explanation.causes.size()) {
        lines.push_back("and for " + countText(explanation.causes.size() - shown, "more cause"));
    }
    if (explanation.otherSets > 0) {
        const bool isOne = explanation.otherSets == 1 && !explanation.hasMoreSets;
        lines.push_back("(" + std::string(explanation.hasMoreSets ? "at least " : "") +
                        countText(explanation.otherSets, "other set") + " of conditions " +
                        (isOne ? "accounts" : "account") + " for it as well)");
    }
    return lines;
}

std::vector<std::string> failureLines(const AssessmentOutcome& outcome, std::size_t most) {
    return spanLines("fails", outcome.failures, most, [&](std::size_t i) {
        return i < outcome.explanations.size()
                   ? causeLines(outcome.explanations[i], mostCausesShown)
                   : std::vector<std::string>();
    });
}

std::vector<std::string> openLines(const AssessmentOutcome& outcome, std::size_t most) {
    if (outcome.openSpans.empty()) {
        return {};
    }
    if (outcome.verdict == assessments::resultEnum_t::NO_RESULT) {
        return reasonLines(outcome, 0);
    }
    const std::string share = "no result for " + partText(outcome.openShare()) + " of the range";
    if (most == 0) {
        return {share};
    }
    std::vector<std::string> lines =
        spanLines("no result", outcome.openSpans, most,
                  [&](std::size_t i) { return reasonLines(outcome, i); });
    lines.front() = share + (outcome.openSpans.size() == 1 ? ": " : ", first ") +
                    intervalText(outcome.openSpans.front());
    return lines;
}

}  // namespace vorm::evaluation
