#pragma once

// For timedWindow: the extremum of a linear trace over the sliding window [t, t + width], at every
// real time t.
//
// It is the best, under an order of the values, of three: the trace at the window's left end, the
// trace at its right end, and the samples between. As t grows the result
// - stays at the best sample, as long as this is inside the window and the right end stays below;
// - rises along the right end towards an entering sample that is at least as good;
// - falls along the left end once that has passed the best sample, until the rest is as good.
// All three are straight, so the result is linear, and its corners are the samples' times, those
// times minus the width, and the meetings of a line with another line or with the best sample.
// While the result stays level, nothing is written.

#include <vorm/assessments/operators/crossing.hpp>
#include <vorm/assessments/operators/step_output.hpp>
#include <vorm/assessments/operators/window_candidates.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::assessments::detail {

template <class T, class KeepFirst>
class LinearWindow {
public:
    /// The samples [begin, end) are not empty and, unless the trace is known for ever, end with
    /// one at its last known time, `lastStart` + `width`.
    LinearWindow(typename TimedTrace_T<T>::Points::const_iterator begin,
                 typename TimedTrace_T<T>::Points::const_iterator end, double width,
                 double lastStart, const KeepFirst& keepFirst, TimedTrace_T<T>& result)
        : keepFirst_(keepFirst),
          width_(width),
          lastStart_(lastStart),
          window_(begin, end, keepFirst),
          output_(result, begin->time, firstExtremum(begin->time)) {}

    void run() {
        while (true) {
            if (rises()) {
                rise();
            } else if (risesForEver()) {
                bend(rightEndMeetsBest(), bestValue());
                output_.slopeOn(window_.entered().derivative);
                break;
            } else if (!window_.allEntered() && enterTime() <= bestTime()) {
                window_.enter();
            } else if (bestTime() < lastStart_) {
                fall();
            } else {
                break;
            }
        }
        if (std::isfinite(lastStart_)) {
            reach(lastStart_, bestValue());
        }
        output_.finish();
    }

private:
    T firstExtremum(double start) {
        window_.enter();
        while (!window_.allEntered() && window_.entering().time - start <= width_) {
            window_.enter();
        }
        return better(bestValue(), window_.entered().valueAt(start + width_));
    }

    const T& better(const T& a, const T& b) const { return keepFirst_(a, b) ? a : b; }

    double enterTime() const { return window_.entering().time - width_; }
    double bestTime() const { return window_.best().sample->time; }
    const T& bestValue() const { return window_.best().sample->value; }

    // Whether the result runs, or is about to run, along the right end to the entering sample.
    bool rises() const {
        return !window_.allEntered() && window_.entersAsBest() &&
               (window_.empty() || riseBegins() <= bestTime());
    }

    // Whether the result runs along the last slope of a trace that is known for ever.
    bool risesForEver() const {
        const TimedPoint<T>& last = window_.entered();
        return window_.allEntered() && std::isinf(lastStart_) &&
               !keepFirst_(last.value, last.valueAt(last.time + 1)) &&
               rightEndMeetsBest() <= bestTime();
    }

    void rise() {
        const double time = enterTime();
        if (!window_.empty()) {
            // A rise too steep for the times there are still begins before it ends.
            const bool isStep =
                riseBegins() == time && !keepFirst_(bestValue(), window_.entering().value);
            bend(isStep ? previousTime(time) : riseBegins(), bestValue());
        }
        window_.enter();
        reach(time, bestValue());
    }

    double riseBegins() const { return std::min(rightEndMeetsBest(), enterTime()); }

    // When the right end, on its way from the sample entered last, is as good as the best sample.
    // The slope may be 0 or NaN; then it is so at once.
    double rightEndMeetsBest() const {
        const TimedPoint<T>& from = window_.entered();
        const double start = from.time - width_;
        const double rise = toDouble(bestValue()) - toDouble(from.value);
        const double meeting = start + rise / from.derivative;
        return meeting > start ? meeting : start;
    }

    // The left end leaves the best sample on the line to the next one.
    void fall() {
        const TimedPoint<T>& line = *window_.best().sample;
        const TimedPoint<T>* lineEnd = window_.best().next;
        reach(line.time, line.value);
        if (lineEnd == nullptr) {
            followForEver(line);
            return;
        }
        window_.leaveBest();
        const double fallEnds = std::min(lineEnd->time, lastStart_);
        double from = line.time;
        while (true) {
            const bool enters = !window_.allEntered() && enterTime() <= fallEnds;
            const double to = enters ? enterTime() : fallEnds;
            const T leftEnd = to == lineEnd->time ? lineEnd->value : line.valueAt(to);
            if (overtakes(line, leftEnd, from, to)) {
                return;
            }
            if (!enters) {
                reach(to, leftEnd);
                return;
            }
            window_.enter();
            from = to;
        }
    }

    // Whether the rest of the window becomes better than the falling left end before `to`, where
    // this is `leftEnd`; if so, the result bends there.
    bool overtakes(const TimedPoint<T>& line, const T& leftEnd, double from, double to) {
        const T rightEnd = rightEndAt(to);
        const T rest = window_.empty() ? rightEnd : better(bestValue(), rightEnd);
        if (keepFirst_(leftEnd, rest)) {
            return false;
        }
        const Meeting right = meetsRightEnd(line, leftEnd, rightEnd, rest, from, to);
        const double sampleMeets = meetsBest(line, leftEnd, from, to);
        if (sampleMeets < to && sampleMeets <= right.time) {
            bend(sampleMeets, bestValue());
        } else if (right.time < to) {
            bend(right.time, right.value);
        } else {
            if (right.isStep) {
                // The right end steps past the left one at once; up to then that one counts.
                bend(previousTime(to), line.valueAt(previousTime(to)));
            }
            bend(to, rest);
        }
        return true;
    }

    // Where the falling left end meets the right one.
    struct Meeting {
        double time = infinity;  // infinity where they do not
        T value;
        bool isStep = false;  // whether the right end passes the left one within one step of time
    };

    Meeting meetsRightEnd(const TimedPoint<T>& line, const T& leftEnd, const T& rightEnd,
                          const T& rest, double from, double to) const {
        if (keepFirst_(leftEnd, rightEnd)) {
            return {infinity, rest};
        }
        TimedPoint<T> right = window_.entered();
        right.time -= width_;
        const bool leftIsSteeper = std::fabs(line.derivative) > std::fabs(right.derivative);
        double time = isNan(rightEnd) ? from : within(from, meetingTime(line, right), to);
        if (leftIsSteeper && time == from && from == output_.lastTime()) {
            time = nextTime(from);
        }
        // The value on the flatter of the two, since the time is rounded.
        return {time, (leftIsSteeper ? right : line).valueAt(time), !leftIsSteeper && time == to};
    }

    // When the falling left end meets the best sample; infinity where it does not.
    double meetsBest(const TimedPoint<T>& line, const T& leftEnd, double from, double to) const {
        if (window_.empty() || keepFirst_(leftEnd, bestValue())) {
            return infinity;
        }
        const double drop = toDouble(bestValue()) - toDouble(line.value);
        const double time = within(from, line.time + drop / line.derivative, to);
        return drop != 0 && time == from ? nextTime(from) : time;
    }

    T rightEndAt(double time) const {
        const bool atSample = !window_.allEntered() && time == enterTime();
        return atSample ? window_.entering().value : window_.entered().valueAt(time + width_);
    }

    // A falling line through a NaN meets nothing; the NaN is kept up to its end.
    static double within(double from, double time, double to) {
        return time < to ? std::max(from, time) : to;
    }

    // The result has this value at this time. Rounding can bring two such times together; the
    // window then contains both values.
    void reach(double time, const T& value) {
        if (time > output_.lastTime() || keepFirst_(value, output_.lastValue())) {
            output_.change(time, value);
        }
    }

    // The result changes its slope. Rounding can move a meeting out of its place, in which case
    // the neighbouring samples say it all.
    void bend(double time, const T& value) {
        if (time > output_.lastTime()) {
            output_.change(time, value);
        }
    }

    // The last line of a trace that is known for ever falls for ever.
    void followForEver(const TimedPoint<T>& line) {
        output_.slopeOn(line.derivative);
        lastStart_ = line.time;
    }

    const KeepFirst& keepFirst_;
    const double width_;
    double lastStart_;
    WindowCandidates<T, KeepFirst> window_;
    StepOutput<T> output_;
};

}  // namespace vorm::assessments::detail
