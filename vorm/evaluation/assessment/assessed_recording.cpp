#include "assessed_recording.hpp"

#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/evaluator/reach.hpp>

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

Recording readFor(const AssessmentFile& file, const std::vector<const Assessment*>& assessments,
                  const RecordingSource& source, const RunOptions& options) {
    ReadingOptions reading;
    reading.wanted = namesToRead(file, assessments);
    reading.jobs = options.jobs;
    reading.reach = reachOf(file, assessments);
    std::mutex mutex;  // files are read by several threads
    std::size_t bytes = 0;
    if (options.progress) {
        reading.progress = [&](std::size_t more) {
            const std::lock_guard lock(mutex);
            bytes += more;
            options.progress("reading " + source.name() + ": " + std::to_string(bytes / 1'000'000) +
                             " MB");
        };
    }
    return readRecording(source, file.layout, reading);
}

std::vector<TimeSpan> spansOf(const std::vector<Span>& spans, const Timeline& timeline) {
    std::vector<TimeSpan> times;
    times.reserve(spans.size());
    for (const auto& [start, end] : spans) {
        times.push_back({timeline.timeAt(start), timeline.timeAt(end)});
    }
    return times;
}

ExactTime lengthOf(const std::vector<TimeSpan>& spans) {
    ExactTime sum;
    for (const TimeSpan& span : spans) {
        sum += span.length();
    }
    return sum;
}

}  // namespace

AssessedRecording::AssessedRecording(const AssessmentFile& file,
                                     const std::vector<const Assessment*>& assessments,
                                     const RecordingSource& source, const RunOptions& options)
    : file_(file),
      options_(options),
      recording_(readFor(file, assessments, source, options)),
      names_(namesIn(file, recording_)) {}

Formula AssessedRecording::formulaOf(const Assessment& assessment) const {
    return typedFormula(file_, assessment, names_);
}

std::vector<const Signal*> AssessedRecording::signalsOf(const Formula& formula) const {
    std::vector<const Signal*> signals;
    for (const std::string& name : formula.signals) {
        signals.push_back(recording_.find(name));
    }
    return signals;
}

std::optional<TimeRange> AssessedRecording::rangeOf(const Assessment& assessment,
                                                    const Formula& formula) const {
    auto range = knownRange(signalsOf(formula));
    const Timeline& timeline = recording_.timeline;
    if (!range && assessment.from && assessment.to) {
        range.emplace();
    }
    if (range && assessment.from) {
        range->from = timeline.at(*assessment.from);
    }
    if (range && assessment.to) {
        range->to = timeline.at(*assessment.to);
    }
    return range && range->from <= range->to ? range : std::nullopt;
}

void AssessedRecording::judge(const Assessment& assessment, const Formula& formula,
                              const Truth& truth, AssessmentOutcome& outcome) const {
    if (const auto range = rangeOf(assessment, formula)) {
        const Judgement judgement = evaluation::judge(truth, *range);
        const Timeline& timeline = recording_.timeline;
        outcome.verdict = judgement.verdict;
        outcome.from = assessment.from.value_or(timeline.timeAt(range->from));
        outcome.to = assessment.to.value_or(timeline.timeAt(range->to));
        outcome.failures = spansOf(judgement.failures, timeline);
        outcome.openSpans = spansOf(judgement.open, timeline);
        outcome.failed = lengthOf(outcome.failures);
        outcome.open = lengthOf(outcome.openSpans);
        outcome.passed = outcome.to - outcome.from - outcome.failed - outcome.open;
    } else {
        // A range that lies beside all samples has one end.
        outcome.from = assessment.from.value_or(assessment.to.value_or(ExactTime()));
        outcome.to = assessment.to.value_or(outcome.from);
    }
    if (outcome.verdict == assessments::resultEnum_t::NO_RESULT) {
        outcome.reason = reasonForNoResult(assessment, formula);
    }
}

bool AssessedRecording::isFalseThroughout(const Assessment& assessment, const Formula& formula,
                                          const Trigger& trigger, const Truth& truth) const {
    const auto range = rangeOf(assessment, formula);
    const auto known = knownRange(signalsOf(formula));
    return range && known &&
           evaluation::isFalseThroughout(truth, rangeOfTrigger(trigger, *range, *known));
}

bool AssessedRecording::surelyDecidesRobustness(const Assessment& assessment,
                                                const Formula& formula) const {
    // Shifts and windows round times by less than a tick.
    const double reach = reachOf(formula.tree, 1);
    const auto range = rangeOf(assessment, formula);
    const auto signals = signalsOf(formula);
    return range && std::all_of(signals.begin(), signals.end(), [&](const Signal* signal) {
               return std::any_of(signal->pieces->begin(), signal->pieces->end(),
                                  [&](const auto& piece) {
                                      return piece.getStartTime() <= range->from - reach &&
                                             range->to + reach <= piece.getLastKnownTime();
                                  });
           });
}

std::string AssessedRecording::reasonForNoResult(const Assessment& assessment,
                                                 const Formula& formula) const {
    for (const Signal* signal : signalsOf(formula)) {
        if (signal->pieces->empty()) {
            return "the signal '" + signal->name + "' has no samples";
        }
    }
    if (assessment.from || assessment.to) {
        return "nothing is known in the range from 'from' to 'to'";
    }
    return "its signals have no time in common, or the recording or its pieces between holes are "
           "too short for the formula's windows";
}

std::string AssessedRecording::failureMessage(const Assessment& assessment, const Formula& formula,
                                              const std::exception_ptr& failure) const {
    const FormulaSource& source = assessment.requirement.source;
    return placed(evaluationError(failure, {0, source.text.size()}, formula.times), source).what();
}

SignalLookup AssessedRecording::lookup() const {
    std::map<boost::uuids::uuid, SharedPieces> pieces;
    for (const Signal& signal : recording_.signals) {
        pieces.emplace(signalId(signal.name), signal.pieces);
    }
    return [pieces = std::move(pieces)](const assessments::variable& variable) {
        return pieces.at(variable.id);
    };
}

EvaluationOptions AssessedRecording::evaluationOptions() const {
    EvaluationOptions evaluation;
    evaluation.timeline = recording_.timeline;
    evaluation.jobs = options_.jobs;
    if (options_.progress) {
        evaluation.progress = [this](std::size_t done, std::size_t all) {
            options_.progress("evaluating " + recording_.name + ": " + std::to_string(done) +
                              " of " + std::to_string(all) + " sub-formulas");
        };
    }
    return evaluation;
}

AssessmentOutcome describedOutcome(const Assessment& assessment) {
    AssessmentOutcome outcome;
    outcome.name = assessment.name;
    outcome.description = assessment.description;
    outcome.formula = assessment.requirement.source.text;
    return outcome;
}

}  // namespace vorm::evaluation::detail
