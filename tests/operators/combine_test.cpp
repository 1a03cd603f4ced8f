#include "support/signals.hpp"

#include <vorm/assessments/operators/combine.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace vorm::test {
namespace {

const auto sum = [](double a, double b) { return a + b; };
const auto larger = [](double a, double b) { return std::max(a, b); };

TEST(Combine, GoesOnToTheEndOfTheLongerOperand) {
    const auto line = trace(linear, "0:0 10:10");
    const auto result = line.combine<double>(trace("0:0 20:5"), sum);
    EXPECT_EQ(result.lastKnownTime, 10);
    EXPECT_EQ(result.points.back().time, 20);
    EXPECT_EQ(result.points.back().value, 15);
}

TEST(Combine, IsEmptyWithoutACommonTime) {
    const auto line = trace(linear, "0:1 1:2");
    const auto empty = trace(linear, "");
    EXPECT_TRUE(same(line.combine<double>(trace("", 9), sum), empty));
    EXPECT_TRUE(same(trace("", 9).combine<double>(line, sum), empty));
    EXPECT_TRUE(same(line.combine<double>(trace("2:1"), sum), empty));
    EXPECT_TRUE(same(trace("2:1").combine<double>(line, sum), empty));
    EXPECT_TRUE(same(line.combine<double>(trace("1:1"), sum), trace(linear, "1:3")));
}

TEST(Combine, InsertsTheCrossing) {
    const auto line = trace(linear, "0:0 10:10");
    const TimedTrace_T<double> five(5.0);
    EXPECT_TRUE(same(line.combine<double>(five, larger), trace(linear, "0:5 5:5 10:10")));
    EXPECT_TRUE(same(five.combine<double>(five, sum), TimedTrace_T<double>(10.0)));
    EXPECT_TRUE(same(five.combine<bool>(line, ValueGreater()), trace<bool>("0:1 5:0", 10)));
}

TEST(Combine, SwitchesRightAfterOperandsPart) {
    const auto line = trace(linear, "0:3 1:3 2:4");
    auto expected = trace<bool>("0:0");
    expected.push_back({after(1), true});
    expected.lastKnownTime = 2;
    EXPECT_TRUE(same(line.combine<bool>(TimedTrace_T<double>(3.0), ValueGreater()), expected));
    EXPECT_TRUE(same(line.combine<bool>(line, ValueGreater()), trace<bool>("0:0", 2)));
}

TEST(Combine, PlacesACrossingInsideAnIntervalWithoutRoom) {
    // Two samples one representable step apart, and two steps apart.
    for (const double end : {after(1), after(after(1))}) {
        TimedTrace_T<double> line(linear, -infinity);
        line.push_back({1, -1});
        line.push_back({end, 1});
        const auto result = line.combine<double>(TimedTrace_T<double>(0.0), larger);
        EXPECT_TRUE(strictlyIncreasing(result));
        EXPECT_EQ(result.points.size(), end == after(1) ? 2u : 3u);
        EXPECT_TRUE(
            strictlyIncreasing(line.combine<bool>(TimedTrace_T<double>(0.0), ValueGreater())));
    }
}

TEST(Combine, TakesALineThatBeginsAtMinusInfinity) {
    TimedTrace_T<double> line(linear, -infinity);
    for (const auto& point : {TimedPoint<double>{-infinity, 0}, {0, 5}, {1, 6}}) {
        line.push_back(point);
    }
    const auto positive = line.combine<bool>(TimedTrace_T<double>(0.0), ValueGreater());
    EXPECT_TRUE(strictlyIncreasing(positive));
    EXPECT_EQ(*positive.valueAt(0.5), true);
}

TEST(Combine, AddsNothingWhereASlopeOverflows) {
    const auto line = trace(linear, "0:-1.7e308 1:1.7e308");
    EXPECT_EQ(line.Abs().points.size(), 2u);
}

TEST(Combine, PassesOnWhatTheFunctionThrows) {
    const auto steps = trace("0:1");
    EXPECT_THROW(steps.Function(steps, {}), std::bad_function_call);
    EXPECT_TRUE(same(steps.Function(trace(""), {}), trace("")));
}

// ---- Against a slow reading of both operands ---------------------------------------------------

struct Pair {
    Signal left;
    Signal right;
    double start() const { return std::max(left.start(), right.start()); }
    double known() const { return std::min(left.known, right.known); }
    std::vector<double> times() const {
        std::vector<double> all = left.times;
        all.insert(all.end(), right.times.begin(), right.times.end());
        return start() > known() ? std::vector<double>() : withMiddles(all, start(), known());
    }
    double slack() const {
        const double scale = std::max(std::fabs(known()), std::fabs(start()));
        return 1e-12 + 16 * ulp(scale) * (left.steepest() + right.steepest());
    }
};

Pair anyPair(INTERPOLATION_METHOD leftMethod, INTERPOLATION_METHOD rightMethod) {
    const TimeBase base = anyTimeBase();
    Pair pair{anySignal(leftMethod, base, -3, 3), anySignal(rightMethod, base, -3, 3)};
    RC_LOG() << pair.left << '\n' << pair.right << '\n';
    return pair;
}

RC_GTEST_PROP(Combine, OfTracesReadAlikeIsTheFunctionOfTheirValues, (bool isLinear)) {
    const auto method = isLinear ? linear : held;
    const Pair pair = anyPair(method, method);
    const std::vector<std::function<double(double, double)>> functions{
        sum, larger, [](double a, double b) { return std::min(a, b); }};
    for (const auto& function : functions) {
        const auto result = pair.left.toTrace().Function(pair.right.toTrace(), function);
        RC_LOG() << testing::PrintToString(result) << '\n';
        RC_ASSERT(strictlyIncreasing(result));
        RC_ASSERT(result.lastKnownTime == (pair.start() > pair.known() ? -infinity : pair.known()));
        for (double time : pair.times()) {
            const double expected = function(pair.left.at(time), pair.right.at(time));
            RC_ASSERT(std::fabs(*result.valueAt(time) - expected) <= pair.slack());
        }
    }
}

// More samples than the engine takes at a time.
RC_GTEST_PROP(Combine, OfLongTracesGoesOnFromBlockToBlock, (unsigned seed)) {
    std::mt19937 random(seed);
    const auto below = [&random](int end) {
        return std::uniform_int_distribution<int>(0, end - 1)(random);
    };
    const auto longSignal = [&below](INTERPOLATION_METHOD method, std::size_t count) {
        Signal signal;
        signal.method = method;
        for (double time = 0; signal.times.size() < count; time += 0.25 * (1 + below(4))) {
            signal.times.push_back(time);
            signal.values.push_back(below(16));
        }
        signal.known = signal.times.back();
        return signal;
    };
    const auto method = seed % 2 == 0 ? held : linear;
    const Pair pair{longSignal(method, 400 + seed % 400), longSignal(method, 700)};
    const auto result = pair.left.toTrace().combine<double>(pair.right.toTrace(), larger);
    for (double time : pair.times()) {
        const double expected = larger(pair.left.at(time), pair.right.at(time));
        RC_ASSERT(std::fabs(*result.valueAt(time) - expected) <= pair.slack());
    }
}

RC_GTEST_PROP(Combine, OfAHeldAndALinearTraceIsExactAtTheirSamples, ()) {
    const Pair pair = anyPair(held, linear);
    const auto left = pair.left.toTrace();
    const auto right = pair.right.toTrace();
    const auto result = left.combine<double>(right, larger);
    for (const auto* operand : {&left, &right}) {
        for (const auto& point : operand->points) {
            if (point.time >= pair.start() && point.time <= pair.known()) {
                const double expected = larger(pair.left.at(point.time), pair.right.at(point.time));
                RC_ASSERT(std::fabs(*result.valueAt(point.time) - expected) <= pair.slack());
            }
        }
    }
}

template <class Comparison>
void checkComparison(const Pair& pair, Comparison holds) {
    const auto result = pair.left.toTrace().template combine<bool>(pair.right.toTrace(), holds);
    RC_LOG() << testing::PrintToString(result) << '\n';
    RC_ASSERT(strictlyIncreasing(result));
    for (double time : pair.times()) {
        const double a = pair.left.at(time);
        const double b = pair.right.at(time);
        // Right beside a crossing, rounding decides.
        if (std::fabs(a - b) > pair.slack()) {
            RC_ASSERT(*result.valueAt(time) == holds(a, b));
        }
    }
}

RC_GTEST_PROP(Combine, IntoBoolIsExactForEveryComparison, (bool leftIsLinear, bool rightIsLinear)) {
    const Pair pair = anyPair(leftIsLinear ? linear : held, rightIsLinear ? linear : held);
    checkComparison(pair, ValueGreater());
    checkComparison(pair, ValueGreaterEq());
    checkComparison(pair, ValueLessEq());
}

}  // namespace
}  // namespace vorm::test
