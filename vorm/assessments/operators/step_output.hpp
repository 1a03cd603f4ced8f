#pragma once

// For operators whose events can fall on one time: what a trace is from then on is known only
// when the last of them is in.

#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments::support {

/// Writes values to a trace in the order of time, with strictly increasing times.
template <class T>
class StepOutput {
public:
    StepOutput(TimedTrace_T<T>& trace, double time, const T& value)
        : builder_(trace), pending_{time, value} {}

    /// From `time` on the value is `value`. A time that is not after the last one replaces the
    /// value there.
    void change(double time, const T& value) {
        if (time > pending_.time) {
            builder_.append(pending_);
            pending_.time = time;
        }
        pending_.value = value;
    }

    /// Writes what is pending. Nothing may follow.
    void finish() { builder_.append(pending_); }

private:
    TraceBuilder<T> builder_;
    TimedPoint<T> pending_;
};

}  // namespace vorm::assessments::support
