#include "outcome_judgement.hpp"

#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/evaluator/reach.hpp>
#include <vorm/evaluation/time/rounded_time.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace vorm::evaluation::detail {
namespace {

ExactTime lengthOf(const std::vector<TimeSpan>& spans) {
    ExactTime sum;
    for (const TimeSpan& span : spans) {
        sum += span.length();
    }
    return sum;
}

// `60 s (2026-11-22 10:30:00)`
std::string momentText(ExactTime time, const Recording& recording) {
    const std::string date = recording.clock ? recording.clock->dateTimeOf(time, allDigits) : "";
    return time.text() + " s" + (date.empty() ? "" : " (" + date + ")");
}

std::string rangeText(const TypedAssessment& assessment) {
    const auto text = [&](const std::optional<ExactTime>& limit) {
        return momentText(*limit, *assessment.recording);
    };
    if (!assessment.to) {
        return "from " + text(assessment.from) + " on";
    }
    return assessment.from ? "from " + text(assessment.from) + " to " + text(assessment.to)
                           : "up to " + text(assessment.to);
}

std::string knownText(const TypedAssessment& assessment) {
    if (!assessment.known) {
        return "nowhere";
    }
    const auto text = [&](double counted) {
        const Recording& recording = *assessment.recording;
        return momentText(recording.timeline.timeAt(counted), recording);
    };
    return "from " + text(assessment.known->first) + " to " + text(assessment.known->last);
}

std::string reasonInRange(const TypedAssessment& assessment) {
    const auto& known = assessment.known;
    const auto& range = assessment.range;
    const bool isBeside =
        !known || !range || range->last < known->first || known->last < range->first;
    return "nothing is known in the range " + rangeText(assessment) + ": " +
           (isBeside ? "its signals are known " + knownText(assessment)
                     : "its signals have holes there, or its formula looks beyond what is known "
                       "of them");
}

std::string reasonForNoResult(const TypedAssessment& assessment) {
    for (const Signal* signal : assessment.signals) {
        if (signal->pieces->empty()) {
            return "the signal '" + signal->name + "' has no samples";
        }
    }
    if (assessment.from || assessment.to) {
        return reasonInRange(assessment);
    }
    return "its signals have no time in common, or the recording or its pieces between holes are "
           "too short for the formula's windows";
}

}  // namespace

AssessmentOutcome describedOutcome(const Assessment& assessment) {
    AssessmentOutcome outcome;
    outcome.name = assessment.name;
    outcome.description = assessment.description;
    outcome.formula = assessment.requirement.source.text;
    outcome.severity = assessment.severity;
    outcome.tags = assessment.tags;
    return outcome;
}

void judge(const TypedAssessment& assessment, const Truth& truth, AssessmentOutcome& outcome) {
    const auto& from = assessment.from;
    const auto& to = assessment.to;
    if (const auto& range = assessment.range) {
        const Timeline& timeline = assessment.recording->timeline;
        Judgement judgement = evaluation::judge(truth, *range, timeline);
        outcome.verdict = judgement.verdict;
        outcome.from = from.value_or(timeline.timeAt(range->first));
        outcome.to = to.value_or(timeline.timeAt(range->last));
        outcome.failures = std::move(judgement.failures);
        outcome.openSpans = std::move(judgement.open);
        outcome.failed = lengthOf(outcome.failures);
        outcome.open = lengthOf(outcome.openSpans);
        outcome.passed = outcome.to - outcome.from - outcome.failed - outcome.open;
    } else {
        // A range that lies beside all samples has one end.
        outcome.from = from.value_or(to.value_or(ExactTime()));
        outcome.to = to.value_or(outcome.from);
    }
    if (outcome.verdict == assessments::resultEnum_t::NO_RESULT) {
        outcome.reason = reasonForNoResult(assessment);
    }
}

bool isFalseThroughout(const TypedAssessment& assessment, const Trigger& trigger,
                       const Truth& truth) {
    return assessment.range && assessment.known &&
           evaluation::isFalseThroughout(
               truth, rangeOfTrigger(trigger, *assessment.range, *assessment.known));
}

bool surelyDecidesRobustness(const TypedAssessment& assessment) {
    // Shifts and windows round times by less than a tick.
    const double reach = reachOf(assessment.formula.tree, 1);
    const auto& range = assessment.range;
    const auto isKnownAround = [&](const assessments::TimedTrace& piece) {
        return piece.getStartTime() <= range->first - reach &&
               range->last + reach <= piece.getLastKnownTime();
    };
    const auto isKnown = [&](const Signal* signal) {
        return std::any_of(signal->pieces->begin(), signal->pieces->end(), isKnownAround);
    };
    return range && std::all_of(assessment.signals.begin(), assessment.signals.end(), isKnown);
}

InputError evaluationFailure(const TypedAssessment& assessment, const std::exception_ptr& failure) {
    const FormulaSource& source = assessment.assessment->requirement.source;
    const FormulaError error =
        evaluationError(failure, {0, source.text.size()}, assessment.formula.times);
    return placed(error, source);
}

}  // namespace vorm::evaluation::detail
