#pragma once

// For the loops that combine two operands: what they write at the times at which they read both,
// and where the operands cross in between, since a function such as the minimum bends or switches
// there.

#include <vorm/assessments/operators/crossing.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <cmath>
#include <type_traits>
#include <utility>

namespace vorm::assessments::detail {

template <class T>
bool isLinear(const TimedTrace_T<T>& trace) {
    return trace.interpolation == INTERPOLATION_METHOD::LINEAR;
}

/// The values of both operands at one time.
template <class T>
struct OperandValues {
    double time;
    T left;
    T right;

    /// Which one is greater: 1 the left, -1 the right, 0 neither.
    int order() const { return int{right < left} - int{left < right}; }
};

/// Writes a function of two operands. The function must outlive it.
template <class T, class R, class F>
class PointwiseOutput {
public:
    using Point = TimedPoint<T>;
    using Values = OperandValues<T>;

    /// The result is empty and known up to minus infinity.
    PointwiseOutput(bool isLinear, F& function)
        : function_(function), result_(methodOf(isLinear), -support::infinity), builder_(result_) {}

    /// The function of the values at that time, in the order of times.
    [[gnu::always_inline]] void write(double time, const T& left, const T& right) {
        append(time, function_(left, right));
    }

    /// The operands run along these segments and change their order between two times.
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

    TimedTrace_T<R> finish(double known) && {
        result_.lastKnownTime = known;
        return std::move(result_);
    }

private:
    static INTERPOLATION_METHOD methodOf(bool isLinear) {
        constexpr bool staysHeld = std::is_same_v<R, bool> || std::is_same_v<R, Verdict>;
        return isLinear && !staysHeld ? INTERPOLATION_METHOD::LINEAR : INTERPOLATION_METHOD::ZOH;
    }

    void emitInside(double time, double end, const R& value) {
        if (time < end) {
            emitRarely(time, value);
        }
    }

    [[gnu::noinline]] void emitRarely(double time, const R& value) { append(time, value); }

    [[gnu::always_inline]] void append(double time, const R& value) {
        builder_.append({time, value});
    }

    F& function_;
    TimedTrace_T<R> result_;
    support::TraceBuilder<R> builder_;
};

}  // namespace vorm::assessments::detail
