// Windows over all traces of up to four samples on a small grid, and operators of two operands over
// all pairs of traces of up to three samples, with steps of one representable time at points of the
// grid. All times there and their differences are whole numbers of ticks, so that the reading they
// are compared with does not round.

#include "support/signals.hpp"

#include <vorm/assessments/operators/comparison.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
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
std::vector<double> readingTimes(double origin = 0) {
    std::vector<double> times;
    for (int i = 1; i <= gridEnd; ++i) {
        const double time = origin + i;
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

// Every way to go on with samples from this one of the times on.
template <class Check>
void forEachTrace(Signal& signal, const std::vector<double>& times,
                  const std::vector<double>& values, std::size_t most, const Check& check,
                  std::size_t from = 0) {
    if (!signal.times.empty()) {
        check(signal);
    }
    if (signal.times.size() == most) {
        return;
    }
    for (std::size_t i = from; i < times.size(); ++i) {
        for (const double value : values) {
            signal.times.push_back(times[i]);
            signal.values.push_back(value);
            forEachTrace(signal, times, values, most, check, i + 1);
            signal.times.pop_back();
            signal.values.pop_back();
        }
    }
}

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

class AllSmallTraces : public testing::TestWithParam<INTERPOLATION_METHOD> {};

TEST_P(AllSmallTraces, HaveTheExactExtremumInEveryWindow) {
    int failures = 0;
    Signal all{GetParam(), {}, {}};
    forEachTrace(all, sampleTimes(), {-1, 0, 1}, 4, [&](Signal& signal) {
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

// ---- Two operands ------------------------------------------------------------------------------

std::vector<Signal> smallSignals(INTERPOLATION_METHOD method, const std::vector<double>& values,
                                 double origin = 0) {
    std::vector<Signal> signals;
    Signal all{method, {}, {}};
    const std::vector<double> times{origin + 1, after(origin + 1), origin + 2, origin + 3};
    forEachTrace(all, times, values, 3, [&](Signal& signal) {
        for (const double knownAfter : {0.0, 0.5}) {
            signal.known = signal.times.back() + knownAfter;
            signals.push_back(signal);
        }
    });
    return signals;
}

// Checks the result of an operator on all pairs at all times from which both are known throughout
// the window.
template <class T, class R, class Result, class IsRight>
void checkPairs(const std::vector<Signal>& signals, const Window& window, Result resultOf,
                IsRight isRight, double origin = 0) {
    const std::vector<double> times = readingTimes(origin);
    int failures = 0;
    for (const Signal& left : signals) {
        const auto leftTrace = left.toTrace<T>();
        for (const Signal& right : signals) {
            const TimedTrace_T<R> result = resultOf(leftTrace, right.toTrace<T>());
            const double start = std::max(left.start(), right.start()) - window.a;
            const double end = std::min(left.known, right.known) - window.b;
            const auto isWrongAt = [&](double time) {
                return time >= start && time <= end &&
                       !isRight(left, right, time, *result.valueAt(time));
            };
            if ((!strictlyIncreasing(result) ||
                 std::any_of(times.begin(), times.end(), isWrongAt)) &&
                ++failures <= 5) {
                ADD_FAILURE() << left << "\n" << right << "\n" << testing::PrintToString(result);
            }
        }
    }
    EXPECT_EQ(failures, 0);
}

template <class Function>
void checkPointwise(
    TimedTrace_T<double> (TimedTrace_T<double>::*member)(const TimedTrace_T<double>&) const,
    Function function) {
    for (const auto method : {held, linear}) {
        checkPairs<double, double>(
            smallSignals(method, {-1, 0, 2}), {0, 0},
            [&](const auto& left, const auto& right) { return (left.*member)(right); },
            [&](const Signal& left, const Signal& right, double time, double value) {
                // Where lines cross between two representable times, the value is that of either.
                std::vector<double> values;
                for (const double beside : {before(time), time, after(time)}) {
                    const double moment = method == held ? time : std::max(beside, 1.0);
                    values.push_back(
                        function(valueAt(left, ticks(moment)), valueAt(right, ticks(moment))));
                }
                const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
                return *least - 1e-14 < value && value < *greatest + 1e-14;
            });
    }
}

TEST(AllSmallPairs, AreCombinedPointByPoint) {
    using Trace = TimedTrace_T<double>;
    checkPointwise(&Trace::Add, std::plus<>());
    checkPointwise(&Trace::And, [](double a, double b) { return std::min(a, b); });
    checkPointwise(&Trace::Or, [](double a, double b) { return std::max(a, b); });
}

TEST(AllSmallPairs, AreComparedExactlyWhereHeldAndBesideCrossings) {
    for (const auto method : {held, linear}) {
        checkPairs<double, bool>(
            smallSignals(method, {-1, 0, 2}), {0, 0},
            [](const auto& left, const auto& right) {
                return left.template combine<bool>(right, ValueGreater());
            },
            [&](const Signal& left, const Signal& right, double time, bool value) {
                const double difference = valueAt(left, ticks(time)) - valueAt(right, ticks(time));
                const bool isBesideCrossing = method == linear && std::fabs(difference) < 1e-14;
                return isBesideCrossing || value == (difference > 0);
            });
    }
}

// The goal at some time of the window, and the condition at all times before it; in any case up to
// where the window begins.
bool untilAt(const Signal& condition, const Signal& goal, const Window& window, double time) {
    const Ticks now = ticks(time);
    std::vector<Ticks> changes{now + ticks(window.a)};
    for (const Signal* signal : {&condition, &goal}) {
        for (const double change : signal->times) {
            changes.push_back(ticks(change));
        }
    }
    const auto holdsUntil = [&](Ticks end) {
        return valueAt(condition, now) == 1 &&
               std::none_of(changes.begin(), changes.end(), [&](Ticks change) {
                   return change > now && change < end && valueAt(condition, change) != 1;
               });
    };
    return holdsUntil(changes[0] + 1) &&
           std::any_of(changes.begin(), changes.end(), [&](Ticks change) {
               return change >= changes[0] && change <= now + ticks(window.b) &&
                      valueAt(goal, change) == 1 && (change == now || holdsUntil(change));
           });
}

TEST(AllSmallPairs, WaitUntilInEveryWindow) {
    const std::vector<Signal> signals = smallSignals(held, {0, 1});
    for (const Window& window : {Window{0, 0}, Window{0, 1}, Window{0, 1.5}, Window{0.5, 1},
                                 Window{1, 1}, Window{1, 1.5}}) {
        SCOPED_TRACE(testing::Message() << "[" << window.a << ", " << window.b << "]");
        checkPairs<bool, bool>(
            signals, {0, window.b},
            [&](const auto& condition, const auto& goal) {
                return condition.Until(goal, window.a, window.b);
            },
            [&](const Signal& condition, const Signal& goal, double time, bool value) {
                return value == untilAt(condition, goal, window, time);
            });
    }
}

// The goal at some time of the window, and the condition from just after it on; in any case from
// where the window ends. The goal's last time before each change is the best one.
bool sinceAt(const Signal& condition, const Signal& goal, const Window& window, double time) {
    const double latest = time - window.a;
    std::vector<double> changes;
    std::vector<double> goals{latest};
    for (const Signal* signal : {&condition, &goal}) {
        for (const double change : signal->times) {
            changes.push_back(change);
            goals.push_back(before(change));
        }
    }
    const auto holds = [&](double from) {
        return valueAt(condition, ticks(time)) == 1 && valueAt(condition, ticks(from)) == 1 &&
               std::none_of(changes.begin(), changes.end(), [&](double change) {
                   return change > from && change <= time && valueAt(condition, ticks(change)) != 1;
               });
    };
    return holds(latest) && std::any_of(goals.begin(), goals.end(), [&](double each) {
               return each <= latest && each >= time - window.b &&
                      valueAt(goal, ticks(each)) == 1 && (each == time || holds(after(each)));
           });
}

// Between 4 and 8 a shift loses no step.
TEST(AllSmallPairs, HoldSinceInEveryWindow) {
    constexpr double origin = 4;
    const std::vector<Signal> signals = smallSignals(held, {0, 1}, origin);
    for (const Window& window : {Window{0, 0}, Window{0, 1}, Window{0, 1.5}, Window{0.5, 1},
                                 Window{1, 1}, Window{1, 1.5}}) {
        SCOPED_TRACE(testing::Message() << "[" << window.a << ", " << window.b << "]");
        checkPairs<bool, bool>(
            signals, {-window.b, 0},
            [&](const auto& condition, const auto& goal) {
                return condition.Since(goal, window.a, window.b);
            },
            [&](const Signal& condition, const Signal& goal, double time, bool value) {
                return value == sinceAt(condition, goal, window, time);
            },
            origin);
    }
}

}  // namespace
}  // namespace vorm::test
