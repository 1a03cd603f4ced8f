#include "robustness.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/evaluation/evaluator/conversion.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// A number between two of these that follow each other at neighbouring times must not lie on the
// line from one to the other, or it would count as redundant: no two of them are opposite.
constexpr double certain = 1e200;
constexpr double certainlyNot = -3e200;
constexpr double unknown = 5e200;

bool isCertain(const TimedPoint<double>& point) {
    return std::fabs(point.value) >= certain;
}

template <class Holds>
bool anyPoint(const TimedTrace& trace, Holds holds) {
    if (trace.which() != int{valueTypeIndex<double>}) {
        return false;
    }
    const auto& points = trace.get<double>().points;
    return std::any_of(points.begin(), points.end(), holds);
}

bool isNumeric(const TimedTrace& trace) {
    return trace.visit([]<class T>(const TimedTrace_T<T>& typed) {
        return !std::is_same_v<T, bool> && !std::is_same_v<T, Verdict> &&
               typed.enumTypeName.empty();
    });
}

TimedTrace difference(const TimedTrace& left, const TimedTrace& right) {
    const ChangedTrace leftNumbers = asDouble(left);
    const ChangedTrace rightNumbers = asDouble(right);
    return onAligned(changedOr(leftNumbers, left), changedOr(rightNumbers, right),
                     [](const TimedTrace& l, const TimedTrace& r) { return l.Minus(r); });
}

static_assert(support::consistsOf(support::OperatorFamily::Comparison,
                                  {VORM_OP::Eq, VORM_OP::Neq, VORM_OP::Lt, VORM_OP::Leq,
                                   VORM_OP::Gt, VORM_OP::Geq}));

TimedTrace distance(VORM_OP op, const TimedTrace& left, const TimedTrace& right) {
    requireComparable(op, left, right);
    if (op == VORM_OP::Eq) {
        return difference(left, right).Abs().UnaryMinus();
    }
    if (op == VORM_OP::Neq) {
        return difference(left, right).Abs();
    }
    const bool isUpperBound = op == VORM_OP::Lt || op == VORM_OP::Leq;
    return isUpperBound ? difference(right, left) : difference(left, right);
}

// Where nothing known lies just before, or nothing is known any more.
std::vector<double> timesWithoutBefore(const Truth& truth) {
    std::vector<double> times;
    bool isKnown = false;
    bool hasBegun = false;
    for (const Truth::Point& point : truth.points) {
        const bool begins = point.value != isOpen && !hasBegun;
        const bool ends = point.value == isOpen && isKnown;
        if ((begins || ends) && std::isfinite(point.time)) {
            times.push_back(point.time);
        }
        isKnown = point.value != isOpen;
        hasBegun = hasBegun || isKnown;
    }
    return times;
}

// Writes what is known in pieces as one trace. A line steps to and from what is between them.
class Joining {
public:
    Joining(INTERPOLATION_METHOD method, double between)
        : between_(between), joined_(method, -support::infinity), output_(joined_) {
        output_.append({-support::infinity, between_});
    }

    void add(const TimedTrace_T<double>& piece) {
        const double start = piece.points.front().time;
        const double end = piece.lastKnownTime;
        append(support::previousTime(start), between_);
        for (const TimedPoint<double>& point : piece.points) {
            if (point.time <= end) {
                append(point.time, point.value);
            }
        }
        append(end, *piece.valueAt(end));
        append(support::nextTime(end), between_);
    }

    SharedPieces finish() {
        joined_.lastKnownTime = support::infinity;
        return std::make_shared<const TracePieces>(TracePieces{std::move(joined_)});
    }

private:
    // A piece that begins where another one ends replaces what was between them.
    void append(double time, double value) {
        if (time > joined_.lastKnownTime) {
            output_.append({time, value});
        } else if (time == joined_.points.back().time) {
            joined_.points.back().value = value;
        }
    }

    double between_;
    TimedTrace_T<double> joined_;
    support::TraceBuilder<double> output_;
};

SharedPieces overAllTime(const TracePieces& pieces, double open) {
    const bool isLinear = std::any_of(pieces.begin(), pieces.end(), isLine);
    if (!isLinear) {
        Joining joining(INTERPOLATION_METHOD::ZOH, open);
        for (const TimedTrace& piece : pieces) {
            joining.add(piece.get<double>());
        }
        return joining.finish();
    }
    Joining joining(INTERPOLATION_METHOD::LINEAR, open);
    for (const TimedTrace& piece : pieces) {
        const ChangedTrace finite = withFiniteCertainty(piece);
        const ChangedTrace line = steppingLine(changedOr(finite, piece));
        joining.add(changedOr(line, changedOr(finite, piece)).get<double>());
    }
    return joining.finish();
}

}  // namespace

bool isRobustness(Meaning meaning) {
    return meaning != Meaning::Boolean;
}

double openAs(Meaning meaning) {
    return meaning == Meaning::LeastRobustness ? -unknown : unknown;
}

SharedPieces certainty(const Truth& truth, double open) {
    TimedTrace_T<double> result(INTERPOLATION_METHOD::ZOH, -support::infinity);
    support::TraceBuilder<double> output(result);
    for (const Truth::Point& point : truth.points) {
        output.append({point.time, point.value == isOpen ? open : point.value * support::infinity});
    }
    result.lastKnownTime = support::infinity;
    return std::make_shared<const TracePieces>(TracePieces{std::move(result)});
}

SharedPieces comparisonRobustness(VORM_OP op, const Compared& left, const Compared& right,
                                  double open) {
    if (!std::all_of(left.pieces.begin(), left.pieces.end(), isNumeric)) {
        return certainty(compare(op, left, right), open);
    }
    const SharedPieces known =
        onPairs(left.pieces, right.pieces,
                [&](const TimedTrace& l, const TimedTrace& r) { return distance(op, l, r); });
    return overAllTime(*known, open);
}

TimedTrace justBefore(const TimedTrace& robustness, const Truth& truth) {
    const TimedTrace_T<double>& now = robustness.get<double>();
    const TimedTrace_T<double> before = now.EpsilonShift(1);
    const std::vector<double> kept = timesWithoutBefore(truth);
    TimedTrace_T<double> result(before.interpolation, -support::infinity);
    support::TraceBuilder<double> output(result);
    const auto append = [&](double time, double value) {
        if (result.points.empty() || time > result.lastKnownTime) {
            output.append({time, value});
        }
    };
    auto point = before.points.begin();
    for (const double time : kept) {
        for (; point != before.points.end() && point->time < time; ++point) {
            append(point->time, point->value);
        }
        append(support::previousTime(time), *before.valueAt(support::previousTime(time)));
        append(time, *now.valueAt(time));
        const double after = support::nextTime(time);
        if (!std::binary_search(kept.begin(), kept.end(), after)) {
            append(after, *before.valueAt(after));
        }
    }
    for (; point != before.points.end(); ++point) {
        append(point->time, point->value);
    }
    result.lastKnownTime = support::infinity;
    return result;
}

ChangedTrace withFiniteCertainty(const TimedTrace& trace) {
    const auto isInfinite = [](const auto& point) { return std::isinf(point.value); };
    if (!anyPoint(trace, isInfinite)) {
        return std::nullopt;
    }
    TimedTrace_T<double> finite = trace.get<double>();
    for (TimedPoint<double>& point : finite.points) {
        if (isInfinite(point)) {
            point.value = point.value > 0 ? certain : certainlyNot;
        }
    }
    return TimedTrace(std::move(finite));
}

bool hasFiniteCertainty(const TimedTrace& trace) {
    return anyPoint(
        trace, [](const auto& point) { return isCertain(point) && std::isfinite(point.value); });
}

TimedTrace withInfiniteCertainty(const TimedTrace& trace) {
    if (!hasFiniteCertainty(trace)) {
        return trace;
    }
    TimedTrace_T<double> infinite = trace.get<double>();
    bool nextIsCertain = false;
    for (auto point = infinite.points.rbegin(); point != infinite.points.rend(); ++point) {
        const bool pointIsCertain = isCertain(*point);
        // Between certainty and a number lies no time but for rounding.
        if (pointIsCertain || nextIsCertain) {
            point->derivative = 0;
        }
        if (pointIsCertain) {
            point->value = std::copysign(support::infinity, point->value);
        }
        nextIsCertain = pointIsCertain;
    }
    return infinite;
}

}  // namespace vorm::evaluation
