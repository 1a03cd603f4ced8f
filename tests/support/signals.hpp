#pragma once

// Random signals as plain lists of samples, and the slow, obvious reading of them.

#include "support/traces.hpp"

#include <vorm/assessments/trace/timed_trace.hpp>

#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace vorm::test {

/// Samples in strictly increasing time, known from the first one to `known`.
struct Signal {
    INTERPOLATION_METHOD method = held;
    std::vector<double> times;
    std::vector<double> values;
    double known = 0;
    bool keepsLaterSamples = false;  // of a trace that ends before its samples, as combine gives

    double start() const { return times.front(); }

    /// Scans for the sample in force; straight between samples and on from the last segment's end.
    double at(double time) const {
        std::size_t i = 0;
        while (i + 1 < times.size() && times[i + 1] <= time) {
            ++i;
        }
        if (method == held || i + 1 == times.size()) {
            return values[i];
        }
        const double fraction = (time - times[i]) / (times[i + 1] - times[i]);
        return values[i] + fraction * (values[i + 1] - values[i]);
    }

    /// The signal as a trace, known up to `known`. If samples after that are cut away, the slope
    /// towards them stays.
    template <class T = double>
    TimedTrace_T<T> toTrace() const {
        TimedTrace_T<T> result(method, -infinity);
        for (std::size_t i = 0; i < times.size(); ++i) {
            result.push_back({times[i], valueOf<T>(values[i])});
        }
        result.lastKnownTime = std::max(result.lastKnownTime, known);
        if (keepsLaterSamples) {
            result.lastKnownTime = known;
        } else {
            result.popBackAfter(known);
        }
        return result;
    }

    double steepest() const {
        double slope = 0;
        for (std::size_t i = 0; i + 1 < times.size(); ++i) {
            const double rise = std::fabs(values[i + 1] - values[i]);
            slope = std::max(slope, rise / (times[i + 1] - times[i]));
        }
        return slope;
    }
};

inline std::ostream& operator<<(std::ostream& out, const Signal& signal) {
    out.precision(17);
    out << (signal.method == held ? "held" : "linear");
    for (std::size_t i = 0; i < signal.times.size(); ++i) {
        out << ' ' << signal.times[i] << ':' << signal.values[i];
    }
    return out << (signal.keepsLaterSamples ? " whole" : "") << " known " << signal.known;
}

/// Where the times of a signal lie. On a grid all times and widths are exact multiples of 1/4, so
/// that events coincide exactly and no arithmetic on times rounds.
struct TimeBase {
    bool grid = true;
    double origin = 0;
};

inline double step(const TimeBase& base) {
    return base.grid ? 0.25 * *rc::gen::inRange(1, 9)
                     : *rc::gen::element(0.1, 0.00018, 1.0 / 3, 0.026, 0.7, 2.6) *
                           *rc::gen::inRange(1, 20);
}

inline TimeBase anyTimeBase() {
    return {*rc::gen::arbitrary<bool>(), *rc::gen::element(0.0, -5.0, 46408.5, 1.7e9)};
}

/// A random signal; values are small integers between low and high, so that equal ones occur.
inline Signal anySignal(INTERPOLATION_METHOD method, const TimeBase& base, int low, int high) {
    Signal signal;
    signal.method = method;
    const int count = *rc::gen::inRange(1, 25);
    double time = base.origin + (base.grid ? *rc::gen::inRange(0, 9) : step(base));
    for (int i = 0; i < count; ++i) {
        signal.times.push_back(time);
        signal.values.push_back(*rc::gen::inRange(low, high + 1));
        time += step(base);
    }
    const double last = signal.times.back();
    // Known beyond the last sample, up to it, or cut before it.
    signal.known = *rc::gen::element(last, time, (signal.start() + last) / 2);
    signal.keepsLaterSamples = *rc::gen::arbitrary<bool>();
    return signal;
}

inline double ulp(double number) {
    return std::nextafter(std::fabs(number), infinity) - std::fabs(number);
}

/// The given times that lie in [from, to], and the middles between them, in order.
inline std::vector<double> withMiddles(std::vector<double> times, double from, double to) {
    times.push_back(from);
    times.push_back(to);
    std::erase_if(times, [&](double time) { return !(time >= from && time <= to); });
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    std::vector<double> all;
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (i > 0) {
            all.push_back(times[i - 1] + (times[i] - times[i - 1]) / 2);
        }
        all.push_back(times[i]);
    }
    return all;
}

template <class T>
bool strictlyIncreasing(const TimedTrace_T<T>& trace) {
    return std::adjacent_find(trace.points.begin(), trace.points.end(),
                              [](const auto& a, const auto& b) { return !(a.time < b.time); }) ==
           trace.points.end();
}

}  // namespace vorm::test
