#include "line_arithmetic.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/evaluation/evaluator/changed_trace.hpp>
#include <vorm/evaluation/evaluator/compared_operand.hpp>
#include <vorm/evaluation/evaluator/line_crossing.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/step_line.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

namespace {

static_assert(support::consistsOf(support::OperatorFamily::Arithmetic,
                                  {VORM_OP::Plus, VORM_OP::Minus, VORM_OP::Multiply,
                                   VORM_OP::Divide}));

// By the core, which refuses what has no numbers.
TimedTrace onTraces(VORM_OP op, const TimedTrace& left, const TimedTrace& right) {
    return op == VORM_OP::Plus       ? left.Plus(right)
           : op == VORM_OP::Minus    ? left.Minus(right)
           : op == VORM_OP::Multiply ? left.Multiply(right)
                                     : left.Divide(right);
}

template <class T>
T onValues(VORM_OP op, const T& left, const T& right) {
    return op == VORM_OP::Plus       ? support::sum(left, right)
           : op == VORM_OP::Minus    ? support::difference(left, right)
           : op == VORM_OP::Multiply ? support::product(left, right)
                                     : support::quotient(left, right);
}

// Two operands on a span throughout which both are known.
template <class T>
TimedTrace_T<T> onLines(VORM_OP op, const TimedTrace_T<T>& left, const TimedTrace_T<T>& right,
                        const CountedSpan& span) {
    ComparedOperand<T> l(left, span.first, span.last, false);
    ComparedOperand<T> r(right, span.first, span.last, false);
    l.cursor().advanceTo(span.first);
    r.cursor().advanceTo(span.first);
    TimedTrace_T<T> result(INTERPOLATION_METHOD::LINEAR, -support::infinity);
    support::TraceBuilder<T> builder(result);
    const auto visit = [&](double time, const TimedPoint<T>* ofLeft, const TimedPoint<T>* ofRight)
        __attribute__((always_inline)) {
        const T leftValue = support::fromDouble(l.valueAt(ofLeft, time), ofLeft->value);
        const T rightValue = support::fromDouble(r.valueAt(ofRight, time), ofRight->value);
        builder.append({time, onValues(op, leftValue, rightValue)});
    };
    support::walk(l.cursor(), r.cursor(), visit);
    const TimedPoint<T>& lastLeft = l.cursor().inForce();
    const TimedPoint<T>& lastRight = r.cursor().inForce();
    const bool slopes = lastLeft.derivative != 0 || lastRight.derivative != 0;
    if (slopes && result.lastKnownTime < span.last && std::isfinite(span.last)) {
        visit(span.last, &lastLeft, &lastRight);
    }
    result.lastKnownTime = span.last;
    return result;
}

// A line as it is, with all that it leads to; what is held only in the span.
ChangedTrace steppingIn(const CountedSpan& span, const TimedTrace& piece) {
    if (isLine(piece)) {
        return std::nullopt;
    }
    ChangedTrace part = cutTo(span, piece);
    ChangedTrace line = steppingLine(changedOr(part, piece));
    return line ? std::move(line) : std::move(part);
}

TimedTrace onMixed(VORM_OP op, const TimedTrace& left, const TimedTrace& right,
                   const CountedSpan& span) {
    const ChangedTrace leftLine = steppingIn(span, left);
    const ChangedTrace rightLine = steppingIn(span, right);
    const TimedTrace& l = changedOr(leftLine, left);
    const TimedTrace& r = changedOr(rightLine, right);
    return l.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (IsFloatingPoint<T>::value) {
            return onLines(op, typed, r.get<T>(), span);
        }
        throw AssessmentInternalException("Only floating-point numbers are lines.");
    });
}

template <class T>
bool passesZero(const TimedPoint<T>& from, const TimedPoint<T>& to) {
    const double start = support::toDouble(from.value);
    const double end = support::toDouble(to.value);
    const bool hasInside = support::nextTime(from.time) < to.time;
    return hasInside && ((start < 0 && 0 < end) || (end < 0 && 0 < start));
}

template <class T>
TimedPoint<T> zeroBetween(const TimedPoint<T>& from, const TimedPoint<T>& to, bool isComputed) {
    const long double start = support::toDouble(from.value);
    const long double rise = support::toDouble(to.value) - start;
    return {crossingTime(from.time, to.time, start, rise, isComputed),
            support::fromDouble(0, to.value)};
}

// A line with a sample wherever it passes through zero, so that its magnitude bends there.
template <class T>
TimedTrace_T<T> withZeros(const TimedTrace_T<T>& line, bool isComputed) {
    TimedTrace_T<T> result(line.interpolation, line.lastKnownTime);
    const auto append = [&](const TimedPoint<T>& point) {
        if (!result.points.empty()) {
            result.points.back().setDerivative(point);
        }
        result.points.push_back(point);
    };
    const TimedPoint<T>* last = nullptr;
    for (const TimedPoint<T>& point : line.points) {
        if (last != nullptr && passesZero(*last, point)) {
            append(zeroBetween(*last, point, isComputed));
        }
        append(point);
        last = &point;
    }
    return result;
}

}  // namespace

SharedPieces arithmetic(VORM_OP op, const TracePieces& left, const TracePieces& right) {
    if (std::none_of(left.begin(), left.end(), isLine) &&
        std::none_of(right.begin(), right.end(), isLine)) {
        return onPairs(left, right, [&](const TimedTrace& l, const TimedTrace& r) {
            return onTraces(op, l, r);
        });
    }
    auto results = std::make_shared<TracePieces>();
    for (PiecePairs pairs(left, right); !pairs.done(); pairs.advance()) {
        appendPiece(*results, onMixed(op, pairs.left(), pairs.right(), pairs.span()));
    }
    return results;
}

SharedPieces magnitude(const TracePieces& quantity, bool isComputed) {
    return onPieces(quantity, [&](const TimedTrace& piece) {
        return piece.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
            if constexpr (IsFloatingPoint<T>::value) {
                if (isLine(piece)) {
                    return withZeros(typed, isComputed).Abs();
                }
            }
            return typed.Abs();
        });
    });
}

}  // namespace vorm::evaluation
