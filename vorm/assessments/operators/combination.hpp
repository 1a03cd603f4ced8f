#pragma once

// The pointwise combination engine behind TimedTrace_T::combine. It merges the sample times of two
// operands and evaluates a function at each; with a linear operand it also finds the times at
// which the operands cross, since a function such as the minimum bends or switches there.

#include <vorm/assessments/operators/crossing.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace vorm::assessments::detail {

template <class T, class R, class F>
class Combination {
public:
    Combination(const TimedTrace_T<T>& left, const TimedTrace_T<T>& right, F& function)
        : function_(function),
          leftIsLinear_(isLinear(left)),
          rightIsLinear_(isLinear(right)),
          left_(left.points.begin(), left.points.end()),
          right_(right.points.begin(), right.points.end()),
          leftKnown_(left.lastKnownTime),
          rightKnown_(right.lastKnownTime),
          result_(resultMethod(left, right), -support::infinity),
          builder_(result_) {}

    TimedTrace_T<R> run() && {
        if (left_.done() || right_.done() || right_.nextTime() > leftKnown_ ||
            left_.nextTime() > rightKnown_) {
            return std::move(result_);
        }
        const double start = std::max(left_.nextTime(), right_.nextTime());
        left_.advanceTo(start);
        right_.advanceTo(start);
        merge(start);
        result_.lastKnownTime = std::min(leftKnown_, rightKnown_);
        return std::move(result_);
    }

private:
    using Point = TimedPoint<T>;

    static bool isLinear(const TimedTrace_T<T>& trace) {
        return trace.interpolation == INTERPOLATION_METHOD::LINEAR;
    }

    static INTERPOLATION_METHOD resultMethod(const TimedTrace_T<T>& left,
                                             const TimedTrace_T<T>& right) {
        constexpr bool staysHeld = std::is_same_v<R, bool> || std::is_same_v<R, Verdict>;
        return !staysHeld && (isLinear(left) || isLinear(right)) ? INTERPOLATION_METHOD::LINEAR
                                                                 : INTERPOLATION_METHOD::ZOH;
    }

    void merge(double start) {
        // The values of other types are held, whatever their traces say.
        if constexpr (IsFloatingPoint<T>::value) {
            if (leftIsLinear_ || rightIsLinear_) {
                mergeLinear(start);
                return;
            }
        }
        mergeHeld();
    }

    void mergeHeld() {
        const auto visit = [this](double time, const Point* left, const Point* right)
            __attribute__((always_inline)) {
            emit(time, function_(left->valueAt(time), right->valueAt(time)));
        };
        support::walk(left_, right_, visit);
    }

    // The values of both operands at one time.
    struct Values {
        double time;
        T left;
        T right;

        // Which one is greater: 1 the left, -1 the right, 0 neither.
        int order() const { return int{right < left} - int{left < right}; }
    };

    // The value of an operand at the common start, which is its first sample's time or later.
    static T valueAtStart(const support::OperandCursor<T>& operand, double start) {
        const bool hasBegun = operand.done() || operand.nextTime() > start;
        return hasBegun ? operand.inForce().valueAt(start) : operand.begin()->value;
    }

    void mergeLinear(double start) {
        Values last{start, valueAtStart(left_, start), valueAtStart(right_, start)};
        int lastOrder = last.order();
        // Inlined by force: this loop is what comparing a signal with a limit spends its time in.
        const auto visit = [&](double time, const Point* left, const Point* right)
            __attribute__((always_inline)) {
            const Values now{time, left->valueAt(time), right->valueAt(time)};
            // Up to here a linear operand has run straight; a held one keeps its value.
            const Values end{time, leftIsLinear_ ? now.left : last.left,
                             rightIsLinear_ ? now.right : last.right};
            if (end.order() != lastOrder) [[unlikely]] {
                // The segments that end here.
                const Point* leftSegment = left - (left->time == time);
                const Point* rightSegment = right - (right->time == time);
                changeOrder(*leftSegment, *rightSegment, last, end);
            }
            emit(time, function_(now.left, now.right));
            last = now;
            lastOrder = now.order();
        };
        support::walk(left_, right_, visit);

        // A cut trace keeps its last slope up to its last known time.
        const Point& left = left_.inForce();
        const Point& right = right_.inForce();
        const double known = std::min(leftKnown_, rightKnown_);
        const bool slopes = left.derivative != 0 || right.derivative != 0;
        if (slopes && last.time < known && std::isfinite(known)) {
            visit(known, &left, &right);
        }
    }

    // The operands run along these segments and change their order between two times.
    [[gnu::noinline]] void changeOrder(const Point& left, const Point& right, const Values& start,
                                       const Values& end) {
        if constexpr (std::is_same_v<R, bool>) {
            if (start.left == start.right) {
                emitInside(std::nextafter(start.time, end.time), end.time,
                           function_(end.left, end.right));
            }
        }
        if (start.order() * end.order() >= 0) {
            return;
        }
        const double time = clampInside(meetingTime(left, right), start.time, end.time);
        if (!(start.time < time && time < end.time)) {
            return;
        }
        if constexpr (std::is_same_v<R, bool>) {
            const T common = left.valueAt(time);
            emitRarely(time, function_(common, common));
            emitInside(std::nextafter(time, end.time), end.time, function_(end.left, end.right));
        } else {
            emitRarely(time, function_(left.valueAt(time), right.valueAt(time)));
        }
    }

    void emitInside(double time, double end, const R& value) {
        if (time < end) {
            emitRarely(time, value);
        }
    }

    [[gnu::noinline]] void emitRarely(double time, const R& value) { emit(time, value); }

    [[gnu::always_inline]] void emit(double time, const R& value) {
        builder_.append({time, value});
    }

    F& function_;
    const bool leftIsLinear_;
    const bool rightIsLinear_;
    support::OperandCursor<T> left_;
    support::OperandCursor<T> right_;
    const double leftKnown_;
    const double rightKnown_;
    TimedTrace_T<R> result_;
    support::TraceBuilder<R> builder_;
};

}  // namespace vorm::assessments::detail
