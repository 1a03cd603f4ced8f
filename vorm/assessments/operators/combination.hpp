#pragma once

// The pointwise combination engine behind TimedTrace_T::combine. It merges the sample times of two
// operands and writes a function of them at each.

#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/pointwise_output.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace vorm::assessments::detail {

template <class T, class R, class F>
class Combination {
public:
    Combination(const TimedTrace_T<T>& left, const TimedTrace_T<T>& right, F& function)
        : leftIsLinear_(isLinear(left)),
          rightIsLinear_(isLinear(right)),
          left_(left.points.begin(), left.points.end()),
          right_(right.points.begin(), right.points.end()),
          leftKnown_(left.lastKnownTime),
          rightKnown_(right.lastKnownTime),
          output_(leftIsLinear_ || rightIsLinear_, function) {}

    TimedTrace_T<R> run() && {
        if (left_.done() || right_.done() || right_.nextTime() > leftKnown_ ||
            left_.nextTime() > rightKnown_) {
            return std::move(output_).finish(-support::infinity);
        }
        const double start = std::max(left_.nextTime(), right_.nextTime());
        left_.advanceTo(start);
        right_.advanceTo(start);
        merge(start);
        return std::move(output_).finish(std::min(leftKnown_, rightKnown_));
    }

private:
    using Point = TimedPoint<T>;
    using Values = OperandValues<T>;

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
            output_.write(time, left->valueAt(time), right->valueAt(time));
        };
        support::walk(left_, right_, visit);
    }

    // The value of an operand at the common start, which is its first sample's time or later.
    static T valueAtStart(const support::OperandCursor<T>& operand, double start) {
        const bool hasBegun = operand.done() || operand.nextTime() > start;
        return hasBegun ? operand.inForce().valueAt(start) : operand.begin()->value;
    }

    // As the sample's valueAt, for a time that is not before it. Which of both operands has a
    // sample at a visited time is as good as random: that is no branch here.
    [[gnu::always_inline]] static T valueAtVisit(const Point& sample, double time) {
        if constexpr (std::is_same_v<T, double>) {
            const double there = sample.value + (time - sample.time) * sample.derivative;
            const bool runs = (sample.derivative != 0) & (time > sample.time);
            const std::uint64_t mask = -std::uint64_t{runs};
            return std::bit_cast<double>((std::bit_cast<std::uint64_t>(there) & mask) |
                                         (std::bit_cast<std::uint64_t>(sample.value) & ~mask));
        } else {
            return sample.valueAt(time);
        }
    }

    void mergeLinear(double start) {
        Values last{start, valueAtStart(left_, start), valueAtStart(right_, start)};
        int lastOrder = last.order();
        // Inlined by force: this loop is what combining two lines spends its time in.
        const auto visit = [&](double time, const Point* left, const Point* right)
            __attribute__((always_inline)) {
            const Values now{time, valueAtVisit(*left, time), valueAtVisit(*right, time)};
            // Up to here a linear operand has run straight; a held one keeps its value.
            const Values end{time, leftIsLinear_ ? now.left : last.left,
                             rightIsLinear_ ? now.right : last.right};
            if (end.order() != lastOrder) [[unlikely]] {
                // The segments that end here.
                const Point* leftSegment = left - (left->time == time);
                const Point* rightSegment = right - (right->time == time);
                output_.changeOrder(*leftSegment, *rightSegment, last, end);
            }
            output_.write(time, now.left, now.right);
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

    const bool leftIsLinear_;
    const bool rightIsLinear_;
    support::OperandCursor<T> left_;
    support::OperandCursor<T> right_;
    const double leftKnown_;
    const double rightKnown_;
    PointwiseOutput<T, R, F> output_;
};

}  // namespace vorm::assessments::detail
