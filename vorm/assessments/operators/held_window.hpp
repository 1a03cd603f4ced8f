#pragma once

// For timedWindow: the extremum of a held trace over the sliding window [t, t + width].
//
// A sample is inside the window from `its time - width` until the next sample comes into force, so
// the extremum changes only when a sample enters that is kept over it, or when it leaves itself.

#include <vorm/assessments/operators/step_output.hpp>
#include <vorm/assessments/operators/window_candidates.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments::detail {

/// Writes the extremum of [begin, end), which is not empty, for window starts up to `lastStart`.
/// Returns the extremum of the last window with the time at which it leaves.
template <class T, class KeepFirst>
TimedPoint<T> slideHeld(typename TimedTrace_T<T>::Points::const_iterator begin,
                        typename TimedTrace_T<T>::Points::const_iterator end, double width,
                        double lastStart, const KeepFirst& keepFirst, TimedTrace_T<T>& result) {
    WindowCandidates<T, KeepFirst> window(begin, end, keepFirst);
    const double start = begin->time;
    while (!window.allEntered() && window.entering().time - width <= start) {
        window.enter();
    }
    const auto leaves = [&window] {
        return window.best().next == nullptr ? support::infinity : window.best().next->time;
    };
    support::StepOutput<T> output(result, start, window.best().sample->value);
    double bestLeaves = leaves();
    while (true) {
        if (!window.allEntered() && window.entering().time - width <= bestLeaves) {
            const double time = window.entering().time - width;
            if (window.enter()) {
                output.change(time, window.best().sample->value);
                bestLeaves = leaves();
            }
        } else if (bestLeaves <= lastStart && bestLeaves < support::infinity) {
            window.leaveBest();
            output.change(bestLeaves, window.best().sample->value);
            bestLeaves = leaves();
        } else {
            break;
        }
    }
    output.finish();
    return {bestLeaves, window.best().sample->value};
}

}  // namespace vorm::assessments::detail
