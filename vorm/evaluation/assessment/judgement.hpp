#pragma once

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <optional>
#include <vector>

namespace vorm::evaluation {

/// A closed range of time, as traces count.
struct TimeRange {
    double from;
    double to;
};

/// From the first to the last time at which any of the signals is known; nothing where none is.
std::optional<TimeRange> knownRange(const std::vector<const Signal*>& signals);

/// A stretch of time in a closed range: `start` is the first time of it, `end` the first one after
/// it, or the range's last one where it lasts to there. One representable time is an instant, whose
/// end is its start; what begins after it begins with it.
struct Span {
    double start;
    double end;
};

/// What a requirement's truth says of a range of time.
struct Judgement {
    /// FAIL where it certainly fails at some time, NO_RESULT where it is open throughout, else
    /// PASS.
    assessments::resultEnum_t verdict = assessments::resultEnum_t::NO_RESULT;
    std::vector<Span> failures;  ///< in time order
    std::vector<Span> open;      ///< in time order
};

/// The judgement of a requirement with that truth. Linear.
Judgement judge(const Truth& truth, const TimeRange& range);

/// Whether a truth is certainly false throughout a range, which is not empty.
bool isFalseThroughout(const Truth& truth, const TimeRange& range);

/// The left side of an implication, which stands perhaps below aliases or `always`. An assessment
/// whose trigger is false throughout was never put to the test.
struct Trigger {
    const assessments::Expression* formula;
    TimeRange window;  ///< how far from a time the formula looks at it
};

/// The trigger of a formula; nothing where it is no implication.
std::optional<Trigger> triggerOf(const assessments::Expression& formula);

/// The times at which a formula that is assessed in a range looks at its trigger. A window that
/// leaves the range is followed to the ends of what is known, since no recording tells more.
TimeRange rangeOfTrigger(const Trigger& trigger, const TimeRange& range, const TimeRange& known);

/// The least value in the range; NaN where one of them is NaN, nothing where none is known.
std::optional<double> leastValue(const TracePieces& pieces, const TimeRange& range);

}  // namespace vorm::evaluation
