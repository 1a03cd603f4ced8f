#include "judgement.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// The common part of a piece and a range; from > to where there is none.
TimeRange common(const TimedTrace& piece, const TimeRange& range) {
    return {std::max(range.from, piece.getStartTime()),
            std::min(range.to, piece.getLastKnownTime())};
}

// Calls visit(trace, part) for what lies in the range; whole pieces are not copied.
template <class T, class Visit>
void forEachPart(const TracePieces& pieces, const TimeRange& range, Visit visit) {
    for (const TimedTrace& piece : pieces) {
        const TimeRange part = common(piece, range);
        const auto& trace = piece.get<T>();
        if (trace.points.empty() || part.from > part.to) {
            continue;
        }
        if (part.from == piece.getStartTime() && part.to == piece.getLastKnownTime()) {
            visit(trace, part);
        } else {
            visit(trace.extractWindow(part.from, part.to, 0), part);
        }
    }
}

// Calls visit(span, value) for the stretches of equal truth in the range.
template <class Visit>
void forEachStretch(const Truth& truth, const TimeRange& range, Visit visit) {
    auto point = truth.TimedPointIteratorForValueAt(range.from, true);
    double start = range.from;
    while (point != truth.points.end() && point->time <= range.to) {
        const double first = std::max(range.from, point->time);
        const std::int8_t value = point->value;
        ++point;
        const bool ends = point != truth.points.end() && point->time <= range.to;
        const double end = ends ? point->time : range.to;
        const bool isInstant = end <= support::nextTime(first);
        visit(Span{start, isInstant ? start : end}, value);
        start = isInstant ? start : end;
    }
}

double leastOf(const TimedTrace_T<double>& trace, const TimeRange& part) {
    double least = *trace.valueAt(part.to);
    for (const auto& point : trace.points) {
        if (point.time <= part.to && !(least <= point.value)) {
            least = point.value;
        }
        if (std::isnan(least)) {
            break;
        }
    }
    return least;
}

}  // namespace

std::optional<TimeRange> knownRange(const std::vector<const Signal*>& signals) {
    std::optional<TimeRange> range;
    for (const Signal* signal : signals) {
        if (!signal->pieces->empty()) {
            const double start = signal->pieces->front().getStartTime();
            const double end = signal->pieces->back().getLastKnownTime();
            range = range ? TimeRange{std::min(range->from, start), std::max(range->to, end)}
                          : TimeRange{start, end};
        }
    }
    return range;
}

Judgement judge(const Truth& truth, const TimeRange& range) {
    Judgement judgement;
    bool isPassed = false;
    forEachStretch(truth, range, [&](const Span& span, std::int8_t value) {
        if (value == certainlyTrue) {
            isPassed = true;
        } else {
            (value == isOpen ? judgement.open : judgement.failures).push_back(span);
        }
    });
    if (!judgement.failures.empty()) {
        judgement.verdict = resultEnum_t::FAIL;
    } else if (isPassed) {
        judgement.verdict = resultEnum_t::PASS;
    }
    return judgement;
}

bool isFalseThroughout(const Truth& truth, const TimeRange& range) {
    bool isFalse = range.from <= range.to;
    forEachStretch(truth, range, [&](const Span&, std::int8_t value) {
        isFalse = isFalse && value == certainlyFalse;
    });
    return isFalse;
}

std::optional<Trigger> triggerOf(const Expression& formula) {
    TimeRange window{0, 0};
    const Expression* inner = &assessments::support::withoutAliases(formula);
    while (const auto* always = boost::get<timedwindow_unary_op>(inner)) {
        if (always->op != VORM_OP::Globally) {
            return std::nullopt;
        }
        window = {window.from + always->a, window.to + always->b};
        inner = &assessments::support::withoutAliases(always->child);
    }
    const auto* either = boost::get<binary_op>(inner);
    if (either == nullptr || either->op != VORM_OP::Or) {
        return std::nullopt;
    }
    const auto* untriggered =
        boost::get<unary_op>(&assessments::support::withoutAliases(either->lhs));
    if (untriggered == nullptr || untriggered->op != VORM_OP::Not) {
        return std::nullopt;
    }
    return Trigger{&untriggered->child, window};
}

TimeRange rangeOfTrigger(const Trigger& trigger, const TimeRange& range, const TimeRange& known) {
    return {std::max(range.from + trigger.window.from, std::min(range.from, known.from)),
            std::min(range.to + trigger.window.to, std::max(range.to, known.to))};
}

std::optional<double> leastValue(const TracePieces& pieces, const TimeRange& range) {
    std::optional<double> least;
    forEachPart<double>(pieces, range,
                        [&](const TimedTrace_T<double>& trace, const TimeRange& part) {
                            const double value = leastOf(trace, part);
                            // Written so that a NaN, once met, stays.
                            if (!least || !(*least <= value || std::isnan(*least))) {
                                least = value;
                            }
                        });
    return least;
}

}  // namespace vorm::evaluation
