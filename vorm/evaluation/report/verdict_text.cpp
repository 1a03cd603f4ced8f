#include "verdict_text.hpp"

#include <vorm/evaluation/signal/verdict_name.hpp>

#include <array>
#include <charconv>
#include <cmath>

namespace vorm::evaluation {
namespace {

std::size_t& countOf(Mark mark, VerdictCounts& counts) {
    switch (mark) {
        case Mark::Error:
            return counts.errors;
        case Mark::Failed:
            return counts.failed;
        case Mark::Warned:
            return counts.warnings;
        case Mark::NoResult:
            return counts.noResult;
        case Mark::Open:
            return counts.open;
        case Mark::Informed:
            return counts.infos;
        case Mark::Passed:
            break;
    }
    return counts.passed;
}

}  // namespace

std::string errorText(const std::optional<InputError>& error) {
    return error ? error->what() : "";
}

std::string verdictText(const AssessmentOutcome& outcome) {
    return outcome.error ? "ERROR" : std::string(verdictName(outcome.verdict));
}

void count(Mark mark, VerdictCounts& counts) {
    ++countOf(mark, counts);
}

VerdictCounts countVerdicts(const RecordingOutcome& recording, bool strict) {
    VerdictCounts counts;
    counts.errors += recording.error ? 1 : 0;
    for (const AssessmentOutcome& assessment : recording.assessments) {
        count(markOf(assessment, strict), counts);
    }
    return counts;
}

VerdictCounts countVerdicts(const RunOutcome& run) {
    VerdictCounts sum;
    for (const RecordingOutcome& recording : run.recordings) {
        const VerdictCounts counts = countVerdicts(recording, run.strict);
        sum.passed += counts.passed;
        sum.failed += counts.failed;
        sum.warnings += counts.warnings;
        sum.infos += counts.infos;
        sum.open += counts.open;
        sum.noResult += counts.noResult;
        sum.errors += counts.errors;
    }
    return sum;
}

std::string numberText(double number, int digits) {
    if (std::isnan(number)) {
        return "nan";  // without a sign
    }
    std::array<char, 40> text;
    // Adding zero turns a minus zero into zero.
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number + 0.0,
                                   std::chars_format::general, digits);
    return std::string(text.data(), end.ptr);
}

bool hasDecidedRobustness(const AssessmentOutcome& outcome) {
    const auto& least = outcome.leastRobustness;
    const auto& greatest = outcome.greatestRobustness;
    return least && greatest && (*least == *greatest || std::isnan(*least));
}

std::string robustnessText(const AssessmentOutcome& outcome) {
    if (!outcome.leastRobustness || !outcome.greatestRobustness) {
        return "-";
    }
    const std::string least = numberText(*outcome.leastRobustness);
    return hasDecidedRobustness(outcome) ? least
                                         : least + " to " + numberText(*outcome.greatestRobustness);
}

std::string durationText(ExactTime length) {
    return numberText(length.seconds());
}

std::string neverTriggeredText(const AssessmentOutcome& outcome) {
    return outcome.neverTriggered
               ? "never triggered: its condition '" + outcome.trigger + "' is false throughout"
               : "";
}
}  // namespace vorm::evaluation
