#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace vorm::test {
namespace {

struct Stretch {
    double start;
    double end;
    double value;
};

// The samples up to where the signal is known, each with its end.
std::vector<Stretch> stretchesOf(const Signal& signal) {
    std::vector<Stretch> stretches;
    for (std::size_t i = 0; i < signal.times.size(); ++i) {
        const double next = i + 1 < signal.times.size() ? signal.times[i + 1] : signal.known;
        if (signal.times[i] <= signal.known) {
            stretches.push_back({signal.times[i], std::min(next, signal.known), signal.values[i]});
        }
    }
    return stretches;
}

double integralIn(const Signal& signal, double first, double last) {
    double integral = 0;
    for (const Stretch& each : stretchesOf(signal)) {
        const double length = std::min(each.end, last) - std::max(each.start, first);
        integral += length > 0 ? length * each.value : 0;
    }
    return integral;
}

// One that is true at the window's begin, and those that begin after it.
int countIn(const Signal& signal, double first, double last) {
    int count = signal.at(first) != 0 ? 1 : 0;
    for (std::size_t i = 1; i < signal.times.size(); ++i) {
        const bool begins = signal.values[i] != 0 && signal.values[i - 1] == 0;
        count += begins && first < signal.times[i] && signal.times[i] <= last ? 1 : 0;
    }
    return count;
}

const TimeBase quarters{true, 46408.5};

std::vector<double> windowStarts(const Signal& signal, double width) {
    std::vector<double> times = signal.times;
    for (const double time : signal.times) {
        times.push_back(time - width);
    }
    return withMiddles(times, signal.start(), signal.known - width);
}

RC_GTEST_PROP(Integral, IsTheSumOfWhatLiesInTheWindow, ()) {
    const Signal signal = anySignal(held, quarters, -3, 3);
    const double width = 0.25 * *rc::gen::inRange(0, 30);
    const auto result = signal.toTrace().Integral(width);
    RC_LOG() << signal << " width " << width << ' ' << testing::PrintToString(result) << '\n';
    if (signal.known - width < signal.start()) {
        RC_ASSERT(result.points.empty());
        return;
    }
    RC_ASSERT(result.lastKnownTime == signal.known - width);
    for (const double t : windowStarts(signal, width)) {
        RC_ASSERT(std::fabs(*result.valueAt(t) - integralIn(signal, t, t + width)) < 1e-9);
    }
}

RC_GTEST_PROP(Count, IsThatOfTheStretchesInTheWindow, ()) {
    const Signal signal = anySignal(held, quarters, 0, 1);
    const double width = 0.25 * *rc::gen::inRange(0, 30);
    const auto result = signal.toTrace<bool>().Count(width);
    RC_LOG() << signal << " width " << width << ' ' << testing::PrintToString(result) << '\n';
    if (signal.known - width < signal.start()) {
        RC_ASSERT(result.points.empty());
        return;
    }
    RC_ASSERT(result.lastKnownTime == signal.known - width);
    for (const double t : windowStarts(signal, width)) {
        RC_ASSERT(*result.valueAt(t) == countIn(signal, t, t + width));
    }
}

TEST(Integral, OfWhatNeverBeganIsKnownForEver) {
    EXPECT_EQ(*TimedTrace_T<double>(3).Integral(2).valueAt(1e9), 6);
    TimedTrace_T<bool> truth(held, -infinity);
    truth.push_back({-infinity, true});
    truth.push_back({5, false});
    truth.lastKnownTime = infinity;
    const auto duration = truth.Integral(2);
    EXPECT_EQ(*duration.valueAt(-1e9), 2);
    EXPECT_EQ(*duration.valueAt(4), 1);
    EXPECT_EQ(*duration.valueAt(1e9), 0);
}

TEST(Integral, KeepsSmallNumbersBesideLargeOnes) {
    const auto sum = trace("0:1e15 1:0.5 3:0", 4).Integral(1);
    EXPECT_EQ(*sum.valueAt(2), 0.5);
}

TEST(Count, CountsAnInstantAsOften) {
    auto instants = trace<bool>("0:0 1:1", 9);
    instants.push_back({after(1), false});
    instants.push_back({4, true});
    instants.push_back({after(4), false});
    instants.lastKnownTime = 9;
    const auto count = instants.Count(3);
    EXPECT_EQ(*count.valueAt(1), 2);
    EXPECT_EQ(*count.valueAt(before(1)), 1);
    EXPECT_EQ(*count.valueAt(after(1)), 1);
    EXPECT_EQ(*count.valueAt(after(4)), 0);
}

TEST(WindowSums, RefuseWhatHasNone) {
    const auto number = trace("0:1 1:2", 5);
    auto mode = trace<std::int8_t>("0:1 1:2", 5);
    mode.enumTypeName = "Mode";
    EXPECT_THROW(trace(linear, "0:1 1:2", 5).Integral(1), AssessmentTypeException);
    EXPECT_THROW(mode.Integral(1), AssessmentTypeException);
    EXPECT_THROW(TimedTrace_T<Verdict>(held, 5).Integral(1), AssessmentTypeException);
    EXPECT_THROW(number.Count(1), AssessmentTypeException);
    for (const double width : {-1.0, nan, infinity}) {
        EXPECT_THROW(number.Integral(width), AssessmentInternalException) << width;
        EXPECT_THROW(trace<bool>("0:1", 5).Count(width), AssessmentInternalException) << width;
    }
    EXPECT_THROW(trace("0:1 1:nan", 5).Integral(1), AssessmentInternalException);
    EXPECT_TRUE(same(TimedTrace_T<double>(held, 3).Integral(1), trace(linear, "")));
}

TEST(Products, AndQuotientsAreOfHeldNumbers) {
    const auto x = trace("0:6 2:-4", 9);
    const auto y = trace("1:2 3:0 4:0.5", 7);
    EXPECT_TRUE(same(x.Multiply(y), trace("1:12 2:-8 3:0 4:-2", 7)));
    EXPECT_TRUE(same(x.Divide(y), trace("1:3 2:-2 3:nan 4:-8", 7)));
    EXPECT_TRUE(same(trace<std::int8_t>("0:100", 5).Multiply(trace<std::int8_t>("0:2", 5)),
                     trace<std::int8_t>("0:-56", 5)))
        << "integers wrap";
    const auto line = trace(linear, "0:1 1:2", 5);
    EXPECT_THROW(line.Multiply(x), AssessmentTypeException);
    EXPECT_THROW(x.Divide(line), AssessmentTypeException);
    const auto whole = trace<std::int8_t>("0:1", 5);
    EXPECT_THROW(whole.Divide(whole), AssessmentTypeException);
    const auto flag = trace<bool>("0:1", 5);
    EXPECT_THROW(flag.Multiply(flag), AssessmentBinaryTypeException);
}

}  // namespace
}  // namespace vorm::test
