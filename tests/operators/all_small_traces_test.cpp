// Windows over all traces of up to four samples on a small grid, with steps of one representable
// time at every point of the grid. All times there and their differences are whole numbers of
// ticks, so that the reading they are compared with does not round.

#include "support/signals.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace vorm::test {
namespace {

using Ticks = std::int64_t;
constexpr Ticks unit = Ticks{1} << 52;  // a tick is the representable step after time 1
constexpr int gridEnd = 4;

Ticks ticks(double time) {
    return static_cast<Ticks>(time * double(unit));
}

std::vector<double> sampleTimes() {
    std::vector<double> times;
    for (int i = 1; i <= gridEnd; ++i) {
        times.insert(times.end(), {double(i), after(i)});
    }
    return times;
}

// The grid, what lies a few steps beside it, and what lies between.
std::vector<double> readingTimes() {
    std::vector<double> times;
    for (int i = 1; i <= gridEnd; ++i) {
        const double time = i;
        times.insert(times.end(),
                     {before(time), time, after(time), after(after(time)),
                      after(after(after(time))), time + 0.25, time + 0.5, time + 0.625});
    }
    return times;
}

struct Window {
    double a;
    double b;
};

std::vector<Window> windows() {
    std::vector<Window> all;
    for (int a = 0; a < gridEnd; ++a) {
        for (int b = a; b < gridEnd; ++b) {
            all.push_back({double(a), double(b)});
        }
    }
    return all;
}

double valueAt(const Signal& signal, Ticks time) {
    std::size_t i = 0;
    while (i + 1 < signal.times.size() && ticks(signal.times[i + 1]) <= time) {
        ++i;
    }
    if (signal.method == held || i + 1 == signal.times.size()) {
        return signal.values[i];
    }
    const Ticks start = ticks(signal.times[i]);
    const double rise = signal.values[i + 1] - signal.values[i];
    return signal.values[i] +
           rise * double(time - start) / double(ticks(signal.times[i + 1]) - start);
}

// The greatest (sign 1) or least (sign -1) value from start to end.
double extremumIn(const Signal& signal, double sign, Ticks start, Ticks end) {
    double best = std::max(sign * valueAt(signal, start), sign * valueAt(signal, end));
    for (std::size_t i = 0; i < signal.times.size(); ++i) {
        if (ticks(signal.times[i]) >= start && ticks(signal.times[i]) <= end) {
            best = std::max(best, sign * signal.values[i]);
        }
    }
    return sign * best;
}

class AllSmallTraces : public testing::TestWithParam<INTERPOLATION_METHOD> {
protected:
    template <class Check>
    void forEachTrace(Check check) {
        Signal signal;
        signal.method = GetParam();
        extend(signal, 0, check);
    }

private:
    // Every way to go on with samples from this one of the times on.
    template <class Check>
    void extend(Signal& signal, std::size_t from, const Check& check) {
        static const std::vector<double> times = sampleTimes();
        if (!signal.times.empty()) {
            check(signal);
        }
        if (signal.times.size() == 4) {
            return;
        }
        for (std::size_t i = from; i < times.size(); ++i) {
            for (const double value : {-1.0, 0.0, 1.0}) {
                signal.times.push_back(times[i]);
                signal.values.push_back(value);
                extend(signal, i + 1, check);
                signal.times.pop_back();
                signal.values.pop_back();
            }
        }
    }
};

// What the extremum can be at a time: exactly that of a held trace. A line can bend between two
// representable times; it may then be as it is one step before or after.
struct Range {
    double low;
    double high;
};

Range extremaAround(const Signal& signal, double sign, const Window& window, double time) {
    std::vector<double> times{time};
    if (signal.method == linear) {
        times.insert(times.end(), {std::max(signal.start(), before(time)), after(time)});
    }
    Range range{infinity, -infinity};
    for (const double moment : times) {
        const double value = extremumIn(signal, sign, ticks(moment) + ticks(window.a),
                                        ticks(moment) + ticks(window.b));
        range = {std::min(range.low, value), std::max(range.high, value)};
    }
    return range;
}

std::string differences(const Signal& signal, double sign, const Window& window,
                        const TimedTrace_T<double>& result) {
    static const std::vector<double> times = readingTimes();
    if (window.b - window.a > signal.known - window.a - signal.start()) {
        return result.points.empty() ? "" : "is not empty";
    }
    const double lastStart = std::max(signal.start(), signal.known - window.b);
    if (result.points.empty() || !strictlyIncreasing(result) ||
        result.points.front().time != signal.start() || result.lastKnownTime != lastStart ||
        result.points.back().time > lastStart) {
        return "has a wrong extent";
    }
    for (const double time : times) {
        if (time >= signal.start() && time <= lastStart) {
            const Range range = extremaAround(signal, sign, window, time);
            const double value = *result.valueAt(time);
            if (!(range.low - 1e-14 < value && value < range.high + 1e-14)) {
                return "is wrong at " + testing::PrintToString(time);
            }
        }
    }
    return "";
}

TEST_P(AllSmallTraces, HaveTheExactExtremumInEveryWindow) {
    int failures = 0;
    forEachTrace([&](Signal& signal) {
        for (const double knownAfter : {0.0, 1.0}) {
            signal.known = signal.times.back() + knownAfter;
            const auto trace = signal.toTrace();
            for (const Window& window : windows()) {
                for (const double sign : {1.0, -1.0}) {
                    const auto result = sign > 0 ? trace.Eventually(window.a, window.b)
                                                 : trace.Globally(window.a, window.b);
                    const std::string wrong = differences(signal, sign, window, result);
                    if (!wrong.empty() && ++failures <= 5) {
                        ADD_FAILURE() << signal << " sign " << sign << " window [" << window.a
                                      << ", " << window.b << "] " << wrong << "\n"
                                      << testing::PrintToString(result);
                    }
                }
            }
        }
    });
    EXPECT_EQ(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(Window, AllSmallTraces, testing::Values(held, linear),
                         [](const auto& method) {
                             return method.param == held ? "Held" : "Linear";
                         });

}  // namespace
}  // namespace vorm::test
