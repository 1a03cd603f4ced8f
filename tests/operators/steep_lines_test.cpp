// Lines with steps of one or two representable times, against exact arithmetic. They are read away
// from the events, that is further than some representable times from where a sample lies, enters a
// window or leaves it; there is nothing steep left there that rounding could turn into an error.

#include "support/signals.hpp"

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace vorm::test {
namespace {

using Rational = boost::multiprecision::cpp_rational;

Rational exactAt(const Signal& line, const Rational& time) {
    std::size_t i = 0;
    while (i + 1 < line.times.size() && line.times[i + 1] <= time) {
        ++i;
    }
    const Rational value = line.values[i];
    if (i + 1 == line.times.size()) {
        return value;
    }
    const Rational start = line.times[i];
    return value + (line.values[i + 1] - value) * (time - start) / (line.times[i + 1] - start);
}

// The greatest (sign 1) or least (sign -1) value in [start, end].
Rational exactExtremum(const Signal& line, int sign, const Rational& start, const Rational& end) {
    Rational best = std::max<Rational>(sign * exactAt(line, start), sign * exactAt(line, end));
    for (std::size_t i = 0; i < line.times.size(); ++i) {
        if (line.times[i] >= start && line.times[i] <= end) {
            best = std::max<Rational>(best, sign * Rational(line.values[i]));
        }
    }
    return sign * best;
}

class SteepLines : public testing::Test {
protected:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }
    double real(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random_);
    }

    // Between steps the line is flat enough for the tolerance of reading it.
    Signal anyLine() {
        Signal line;
        line.method = linear;
        const double gap = std::vector{0.1, 1.0, 7.3, 900.0}[std::size_t(below(4))];
        double time = std::vector{0.1, 1.0, -5.0, 15.0, 46408.5}[std::size_t(below(5))];
        for (int count = 2 + below(8); count > 0; --count) {
            line.times.push_back(time);
            line.values.push_back(below(9) - 4);
            const int kind = below(5);
            time = kind == 0   ? after(time)
                   : kind == 1 ? after(after(time))
                   : kind == 2 ? time + 0.1 * (1 + below(30))
                   : kind == 3 ? time + 1 + below(40)
                               : time + gap * real(1, 5);
        }
        line.known = line.times.back() + 0.7 * below(2);
        return line;
    }

    double anyWidth(double span) {
        const double width = below(2) == 0 ? 0.1 * (1 + below(40)) : real(0, span);
        return std::min(width, span * real(0, 1));
    }

    // Any time of the result, or one near an event, yet not among the `steps` next to one.
    std::vector<double> readings(const TimedTrace_T<double>& result,
                                 const std::vector<double>& events) {
        std::vector<double> times;
        if (result.points.empty()) {
            return times;
        }
        const double from = result.points.front().time;
        double scale = std::max(std::fabs(from), std::fabs(result.lastKnownTime));
        for (const double event : events) {
            scale = std::max(scale, std::fabs(event));
        }
        const double away = 32 * ulp(scale);
        for (int i = 0; i < 6; ++i) {
            const double event = events[std::size_t(below(int(events.size())))];
            const double beside = std::exp(real(0, 28)) * away;
            const double time = i % 3 == 0   ? real(from, result.lastKnownTime)
                                : i % 3 == 1 ? event + beside
                                             : event - beside;
            const bool isAway = std::all_of(events.begin(), events.end(), [&](double other) {
                return std::fabs(time - other) > away;
            });
            if (isAway && time >= from && time <= result.lastKnownTime) {
                times.push_back(time);
            }
        }
        return times;
    }

    static void expectNear(const TimedTrace_T<double>& result, double time,
                           const Rational& expected) {
        EXPECT_NEAR(*result.valueAt(time), static_cast<double>(expected), 1e-7)
            << "at " << testing::PrintToString(time) << " of " << testing::PrintToString(result);
    }

    static constexpr int cases = 3000;
    std::mt19937 random_{20240229};
};

TEST_F(SteepLines, HaveTheExactExtremumInAWindow) {
    for (int i = 0; i < cases && !HasFailure(); ++i) {
        const Signal line = anyLine();
        const double start = below(2) == 0 ? 0 : below(3) == 0 ? real(-3, 3) : 0.1 * below(30);
        const double end = start + anyWidth(line.known - line.start());
        const int sign = below(2) == 0 ? 1 : -1;
        const auto trace = line.toTrace();
        const auto result = sign > 0 ? trace.Eventually(start, end) : trace.Globally(start, end);
        SCOPED_TRACE(testing::Message()
                     << line << " window [" << start << ", " << end << "] sign " << sign);
        EXPECT_TRUE(strictlyIncreasing(result));
        std::vector<double> events;
        for (const double time : line.times) {
            events.insert(events.end(), {time - start, time - end});
        }
        for (const double time : readings(result, events)) {
            const Rational exact = time;
            expectNear(result, time, exactExtremum(line, sign, exact + start, exact + end));
        }
    }
}

TEST_F(SteepLines, KeepTheirLevelsWhereTheyMove) {
    for (int i = 0; i < cases && !HasFailure(); ++i) {
        const Signal line = anyLine();
        const double delay = below(2) == 0 ? real(-1e5, 30) : 0.1 * (below(60) - 30);
        const auto moved = line.toTrace().Shift(delay, true);
        SCOPED_TRACE(testing::Message() << line << " by " << delay);
        EXPECT_TRUE(strictlyIncreasing(moved));
        std::vector<double> events;
        for (const double time : line.times) {
            events.push_back(time - delay);
        }
        for (const double time : readings(moved, events)) {
            expectNear(moved, time, exactAt(line, Rational(time) + delay));
        }
        for (const double direction : {1.0, -1.0}) {
            const auto stepped = line.toTrace().EpsilonShift(direction);
            EXPECT_TRUE(strictlyIncreasing(stepped));
            for (const double time : readings(stepped, line.times)) {
                expectNear(stepped, time, exactAt(line, time));
            }
        }
    }
}

TEST_F(SteepLines, CombineIntoWhatTheyAreAtEveryTime) {
    for (int i = 0; i < cases && !HasFailure(); ++i) {
        const Signal left = anyLine();
        Signal right = anyLine();
        if (below(3) == 0) {
            // Steps of both that touch or overlap.
            right.times = left.times;
            for (double& time : right.times) {
                time = below(2) == 0 ? after(time) : time;
            }
            right.times.erase(std::unique(right.times.begin(), right.times.end()),
                              right.times.end());
            right.values.resize(right.times.size(), 1);
            right.known = std::max(right.times.back(), left.known);
        }
        SCOPED_TRACE(testing::Message() << left << "\n" << right);
        std::vector<double> events = left.times;
        events.insert(events.end(), right.times.begin(), right.times.end());
        const auto a = left.toTrace();
        const auto b = right.toTrace();
        const auto smaller = a.And(b);
        const auto greater = a.Or(b);
        const auto added = a.Function(b, [](double x, double y) { return x + y; });
        for (const double time : readings(added, events)) {
            const Rational x = exactAt(left, time);
            const Rational y = exactAt(right, time);
            expectNear(smaller, time, std::min(x, y));
            expectNear(greater, time, std::max(x, y));
            expectNear(added, time, x + y);
        }
    }
}

TEST_F(SteepLines, StepAtOneTimeWhereMovingRounds) {
    TimedTrace_T<double> line(linear, -infinity);
    for (const auto& sample : {TimedPoint<double>{0, 0}, {6, 0}, {after(6), 1}, {56, 1}}) {
        line.push_back(sample);
    }
    const auto moved = line.Shift(1.1, true);
    ASSERT_EQ(moved.points.size(), 4U);
    EXPECT_EQ(moved.points[1].time, before(moved.points[2].time));
    EXPECT_EQ(*moved.valueAt(moved.points[1].time), 0);
    EXPECT_EQ(*moved.valueAt(moved.points[2].time), 1);

    const auto earlier = line.EpsilonShift(-1);
    EXPECT_EQ(*earlier.valueAt(before(6)), 0);
    EXPECT_EQ(*earlier.valueAt(6), 1);
    const auto later = line.EpsilonShift(1);
    EXPECT_EQ(*later.valueAt(after(6)), 0);
    EXPECT_EQ(*later.valueAt(after(after(6))), 1);
}

}  // namespace
}  // namespace vorm::test
