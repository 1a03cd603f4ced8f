#include "judgement.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// The common part of a piece and a range; from > to where there is none.
CountedSpan common(const TimedTrace& piece, const CountedSpan& range) {
    return {std::max(range.first, piece.getStartTime()),
            std::min(range.last, piece.getLastKnownTime())};
}

// Calls visit(trace, part) for what lies in the range; whole pieces are not copied.
template <class T, class Visit>
void forEachPart(const TracePieces& pieces, const CountedSpan& range, Visit visit) {
    for (const TimedTrace& piece : pieces) {
        const CountedSpan part = common(piece, range);
        const auto& trace = piece.get<T>();
        if (trace.points.empty() || part.first > part.last) {
            continue;
        }
        if (part.first == piece.getStartTime() && part.last == piece.getLastKnownTime()) {
            visit(trace, part);
        } else {
            visit(trace.extractWindow(part.first, part.last, 0), part);
        }
    }
}

// Calls visit(first, end, value) for the stretches of equal truth in the range: with the first time
// of each and the first one after it, or the range's last one.
template <class Visit>
void forEachStretch(const Truth& truth, const CountedSpan& range, Visit visit) {
    auto point = truth.TimedPointIteratorForValueAt(range.first, true);
    while (point != truth.points.end() && point->time <= range.last) {
        const double first = std::max(range.first, point->time);
        const std::int8_t value = point->value;
        ++point;
        const bool ends = point != truth.points.end() && point->time <= range.last;
        visit(first, ends ? point->time : range.last, value);
    }
}

// Calls visit(span, value). What follows an instant begins with it.
template <class Visit>
void forEachSpan(const Truth& truth, const CountedSpan& range, const Timeline& timeline,
                 Visit visit) {
    ExactTime start = timeline.timeAt(range.first);
    forEachStretch(truth, range, [&](double first, double next, std::int8_t value) {
        const bool isInstant = next <= support::nextTime(first);
        const ExactTime end = isInstant ? start : timeline.timeAt(next);
        visit(TimeSpan{start, end}, value);
        start = end;
    });
}

double leastOf(const TimedTrace_T<double>& trace, const CountedSpan& part) {
    double least = *trace.valueAt(part.last);
    for (const auto& point : trace.points) {
        if (point.time <= part.last && !(least <= point.value)) {
            least = point.value;
        }
        if (std::isnan(least)) {
            break;
        }
    }
    return least;
}

}  // namespace

std::optional<CountedSpan> knownRange(const std::vector<const Signal*>& signals) {
    std::optional<CountedSpan> range;
    for (const Signal* signal : signals) {
        if (!signal->pieces->empty()) {
            const double start = signal->pieces->front().getStartTime();
            const double end = signal->pieces->back().getLastKnownTime();
            range = range ? CountedSpan{std::min(range->first, start), std::max(range->last, end)}
                          : CountedSpan{start, end};
        }
    }
    return range;
}

std::vector<TruthSpan> truthSpans(const Truth& truth, const CountedSpan& range,
                                  const Timeline& timeline) {
    std::vector<TruthSpan> spans;
    forEachSpan(truth, range, timeline, [&](const TimeSpan& span, std::int8_t value) {
        spans.push_back({span, value});
    });
    return spans;
}

Judgement judge(const Truth& truth, const CountedSpan& range, const Timeline& timeline) {
    Judgement judgement;
    bool isPassed = false;
    forEachSpan(truth, range, timeline, [&](const TimeSpan& span, std::int8_t value) {
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

bool isFalseThroughout(const Truth& truth, const CountedSpan& range) {
    bool isFalse = range.first <= range.last;
    forEachStretch(truth, range, [&](double, double, std::int8_t value) {
        isFalse = isFalse && value == certainlyFalse;
    });
    return isFalse;
}

std::optional<Trigger> triggerOf(const Expression& formula) {
    CountedSpan window{0, 0};
    const Expression* inner = &assessments::support::withoutAliases(formula);
    while (const auto* always = boost::get<timedwindow_unary_op>(inner)) {
        if (support::isForSomeTime(always->op)) {
            return std::nullopt;
        }
        const auto distances = support::windowOf(always->op, always->a, always->b);
        window = {window.first + distances.first, window.last + distances.last};
        inner = &assessments::support::withoutAliases(always->child);
    }
    const auto* either = boost::get<binary_op>(inner);
    if (either != nullptr && either->op == VORM_OP::Implies) {
        return Trigger{&either->lhs, window};
    }
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

CountedSpan rangeOfTrigger(const Trigger& trigger, const CountedSpan& range,
                           const CountedSpan& known) {
    return {std::max(range.first + trigger.window.first, std::min(range.first, known.first)),
            std::min(range.last + trigger.window.last, std::max(range.last, known.last))};
}

std::optional<double> leastValue(const TracePieces& pieces, const CountedSpan& range) {
    std::optional<double> least;
    forEachPart<double>(pieces, range,
                        [&](const TimedTrace_T<double>& trace, const CountedSpan& part) {
                            const double value = leastOf(trace, part);
                            // Written so that a NaN, once met, stays.
                            if (!least || !(*least <= value || std::isnan(*least))) {
                                least = value;
                            }
                        });
    return least;
}

}  // namespace vorm::evaluation
