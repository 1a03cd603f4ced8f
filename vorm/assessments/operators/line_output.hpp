#pragma once

// For operators that build a line out of knots whose times round.
//
// Knots that lie apart by less than a step of time meet at one representable time, where the line
// then jumps: before it runs towards the first of them, after it from the last. Such a jump takes
// the least time there is, so that neither side becomes a ramp. What lies between the two would
// last for less than a step and is left out.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments::detail {

/// Writes a linear trace with strictly increasing times from knots in the order of time.
template <class T>
class LineOutput {
public:
    /// The trace is empty and starts at `time`, exactly.
    LineOutput(TimedTrace_T<T>& trace, double time, const T& value)
        : trace_(trace), builder_(trace), pending_{time, value} {}

    /// The line has this value at `time`, which is not before the last knot's. If it is the same,
    /// the line jumps there.
    void knot(double time, const T& value) {
        if (time > pending_.time) {
            builder_.append(pending_);
            pending_.time = time;
        } else if (!support::sameValue(value, pending_.value)) [[unlikely]] {
            beginJump();
        }
        pending_.value = value;
    }

    /// The line bends at `time`. A bend that rounding puts at or before the last knot is part of
    /// that one.
    void bend(double time, const T& value) {
        if (time > pending_.time) {
            knot(time, value);
        }
    }

    /// From the last knot on the line follows a slope for ever.
    void slopeOn(double derivative) { pending_.derivative = derivative; }

    /// Writes what is pending. Nothing may follow.
    void finish() { builder_.append(pending_); }

private:
    // The value before the jump moves to the time before it, if that is free.
    [[gnu::noinline]] void beginJump() {
        const double before = support::previousTime(pending_.time);
        if (!trace_.points.empty() && trace_.points.back().time < before) {
            builder_.append({before, pending_.value});
        }
    }

    TimedTrace_T<T>& trace_;
    support::TraceBuilder<T> builder_;
    TimedPoint<T> pending_;
};

}  // namespace vorm::assessments::detail
