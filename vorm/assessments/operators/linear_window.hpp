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
//
// Steps may be as steep as times allow. Two rules keep them, and the levels beside them, exact:
// - The right end passes a sample at `its time - width`, rounded once. Samples that then lie at one
//   time make the right end jump there. No value of it is taken where rounding moves it past the
//   entering sample.
// - Where lines meet, the time is rounded and the value is that of the flatter one: of a steep line
//   the time is as good as known, and its value there is not.

#include <vorm/assessments/operators/crossing.hpp>
#include <vorm/assessments/operators/line_output.hpp>
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
            } else if (!window_.allEntered() && enterTime() <= bestTime()) {
                window_.enter();
            } else if (risesForEver()) {
                output_.bend(rightEndMeetsBest(), bestValue());
                output_.slopeOn(window_.entered().derivative);
                break;
            } else if (bestTime() < lastStart_) {
                fall();
            } else {
                break;
            }
        }
        if (std::isfinite(lastStart_)) {
            output_.bend(lastStart_, bestValue());
        }
        output_.finish();
    }

private:
    using Point = TimedPoint<T>;

    T firstExtremum(double start) {
        window_.enter();
        while (!window_.allEntered() && enterTime() <= start) {
            window_.enter();
        }
        return restAt(start);
    }

    const T& better(const T& a, const T& b) const { return keepFirst_(a, b) ? a : b; }

    double enterTime() const { return window_.entering().time - width_; }
    double bestTime() const { return window_.best().sample->time; }
    const T& bestValue() const { return window_.best().sample->value; }

    // The right end as a line in the time of the left one, from the sample entered last on.
    Point rightLine() const {
        Point line = window_.entered();
        line.time -= width_;
        return line;
    }

    T rightEndAt(double time) const {
        const T onLine = rightLine().valueAt(time);
        if (window_.allEntered()) {
            return onLine;
        }
        const T& next = window_.entering().value;
        const bool isPast = time == enterTime() ||
                            (keepFirst_(onLine, next) && keepFirst_(next, window_.entered().value));
        return isPast ? next : onLine;
    }

    T restAt(double time) const {
        const T rightEnd = rightEndAt(time);
        return window_.empty() ? rightEnd : better(bestValue(), rightEnd);
    }

    // Whether the result runs, or is about to run, along the right end to the entering sample.
    bool rises() const {
        return !window_.allEntered() && window_.entersAsBest() &&
               (window_.empty() || riseBegins() <= bestTime());
    }

    // Whether the result runs along the last slope of a trace that is known for ever.
    bool risesForEver() const {
        const Point& last = window_.entered();
        return window_.allEntered() && std::isinf(lastStart_) &&
               !keepFirst_(last.value, last.valueAt(last.time + 1)) &&
               rightEndMeetsBest() <= bestTime();
    }

    void rise() {
        const double time = enterTime();
        if (!window_.empty()) {
            output_.bend(riseBegins(), bestValue());
        }
        window_.enter();
        output_.knot(time, bestValue());
    }

    double riseBegins() const { return std::min(rightEndMeetsBest(), enterTime()); }

    // When the right end, on its way from the sample entered last, is as good as the best sample.
    // The slope may be 0 or NaN; then it is so at once.
    double rightEndMeetsBest() const {
        const Point& from = window_.entered();
        const double start = from.time - width_;
        const double rise = support::toDouble(bestValue()) - support::toDouble(from.value);
        const double meeting = start + rise / from.derivative;
        return meeting > start ? meeting : start;
    }

    // The left end leaves the best sample on the line to the next one.
    void fall() {
        const Point& line = *window_.best().sample;
        const Point* lineEnd = window_.best().next;
        output_.knot(line.time, line.value);
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
            if (bestIsBetter(leftEnd) || rightEndIsBetter(leftEnd, to)) {
                bendToRest(line, leftEnd, from, to);
                return;
            }
            if (!enters) {
                output_.knot(to, leftEnd);
                return;
            }
            window_.enter();
            from = to;
        }
    }

    bool bestIsBetter(const T& leftEnd) const {
        return !window_.empty() && !keepFirst_(leftEnd, bestValue());
    }

    // No sample that has entered is better than the best one. The right end, which comes from one
    // of them, is therefore better only on its way to a sample that is.
    bool rightEndIsBetter(const T& leftEnd, double time) const {
        if (window_.allEntered()) {
            return !keepFirst_(leftEnd, rightLine().valueAt(time));
        }
        return !keepFirst_(leftEnd, window_.entering().value) &&
               (time == enterTime() || !keepFirst_(leftEnd, rightLine().valueAt(time)));
    }

    // Somewhere in [from, to] the rest of the window becomes better than the left end, which falls
    // along this line and is `leftEnd` at `to`.
    void bendToRest(const Point& line, const T& leftEnd, double from, double to) {
        const Point right = rightLine();
        const bool rightIsNan = support::isNan(rightEndAt(to));
        const bool rightIsSteeper =
            rightIsNan || std::fabs(line.derivative) <= std::fabs(right.derivative);
        const double meetsBest =
            bestIsBetter(leftEnd) ? within(from, timeAtBest(line), to) : support::infinity;
        double meetsRight = support::infinity;
        if (rightEndIsBetter(leftEnd, to)) {
            meetsRight = rightIsNan ? from : within(from, meetingTime(line, right), to);
        }
        if (rightIsSteeper && meetsRight < meetsBest) {
            output_.bend(meetsRight, meetsRight == to ? leftEnd : line.valueAt(meetsRight));
        } else {
            // At its sample the steeper line still counts.
            const double meeting = std::min(meetsRight, meetsBest);
            const double time = meeting > line.time ? meeting : support::nextTime(line.time);
            output_.bend(time, rightIsSteeper ? bestValue() : restAt(time));
        }
    }

    // When a falling line is as bad as the best sample.
    double timeAtBest(const Point& line) const {
        return line.time +
               (support::toDouble(bestValue()) - support::toDouble(line.value)) / line.derivative;
    }

    // A line through a NaN meets nothing; the NaN is kept up to its end.
    static double within(double from, double time, double to) {
        return time < to ? std::max(from, time) : to;
    }

    // The last line of a trace that is known for ever falls for ever.
    void followForEver(const Point& line) {
        output_.slopeOn(line.derivative);
        lastStart_ = line.time;
    }

    const KeepFirst& keepFirst_;
    const double width_;
    double lastStart_;
    WindowCandidates<T, KeepFirst> window_;
    LineOutput<T> output_;
};

}  // namespace vorm::assessments::detail
