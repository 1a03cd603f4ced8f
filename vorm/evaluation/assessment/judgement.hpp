#pragma once

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorm::evaluation {

/// From the first to the last time at which any of the signals is known; nothing where none is.
std::optional<CountedSpan> knownRange(const std::vector<const Signal*>& signals);

/// A stretch of equal truth.
struct TruthSpan {
    TimeSpan span;
    std::int8_t truth;  ///< certainlyFalse, isOpen or certainlyTrue
};

/// The stretches of equal truth in a range, in time order: neighbours differ, and each ends where
/// the next one begins. One representable time is an instant. Linear.
std::vector<TruthSpan> truthSpans(const Truth& truth, const CountedSpan& range,
                                  const Timeline& timeline);

/// What a requirement's truth says of a range of time.
struct Judgement {
    /// FAIL where it certainly fails at some time, NO_RESULT where it is open throughout, else
    /// PASS.
    assessments::resultEnum_t verdict = assessments::resultEnum_t::NO_RESULT;
    std::vector<TimeSpan> failures;  ///< in time order
    std::vector<TimeSpan> open;      ///< in time order
};

/// The judgement of a requirement with that truth, which counts times as the timeline. Linear.
Judgement judge(const Truth& truth, const CountedSpan& range, const Timeline& timeline);

/// Whether a truth is certainly false throughout a range, which is not empty.
bool isFalseThroughout(const Truth& truth, const CountedSpan& range);

/// The left side of an implication, which stands perhaps below aliases or `always`. An assessment
/// whose trigger is false throughout was never put to the test.
struct Trigger {
    const assessments::Expression* formula;
    CountedSpan window;  ///< how far from a time the formula looks at it
};

/// The trigger of a formula; nothing where it is no implication.
std::optional<Trigger> triggerOf(const assessments::Expression& formula);

/// The times at which a formula that is assessed in a range looks at its trigger. A window that
/// leaves the range is followed to the ends of what is known, since no recording tells more.
CountedSpan rangeOfTrigger(const Trigger& trigger, const CountedSpan& range,
                           const CountedSpan& known);

/// The least value in the range; NaN where one of them is NaN, nothing where none is known.
std::optional<double> leastValue(const TracePieces& pieces, const CountedSpan& range);

}  // namespace vorm::evaluation
