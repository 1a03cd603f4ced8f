#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

namespace vorm::test {
namespace {

TEST(Shift, LooksAheadByTheDelay) {
    const auto signal = trace("0:1 3:2 5:3", 6);
    EXPECT_TRUE(same(signal.Shift(2, true), trace("0:1 1:2 3:3", 4)));
    EXPECT_TRUE(same(signal.Shift(2, false), trace("-2:1 1:2 3:3", 4)));
    EXPECT_TRUE(same(signal.Shift(-2, true), trace("2:1 5:2 7:3", 8)));
    EXPECT_TRUE(same(signal.Shift(0, true), signal));
    EXPECT_TRUE(same(trace(linear, "0:0 4:8").Shift(1, true), trace(linear, "0:2 3:8")));

    const TimedTrace_T<double> constant(5.0);
    for (const double delay : {3.0, -3.0, infinity, -infinity}) {
        EXPECT_TRUE(same(constant.Shift(delay, true), constant));
    }
    EXPECT_TRUE(same(trace("", 4).Shift(3, true), trace("", 4)));
}

TEST(Shift, KeepsTimesApartThatRoundingBringsTogether) {
    auto close = trace("0.001:1");
    close.push_back({after(0.001), 2});
    close.push_back({1, 3});
    const auto shifted = close.Shift(-1e9, true);
    EXPECT_TRUE(strictlyIncreasing(shifted));
    EXPECT_EQ(shifted.points.size(), 3u);
    EXPECT_EQ(*shifted.valueAt(1e9 + 0.5), 2);

    TimedTrace_T<double> line(linear, -infinity);
    for (const auto& point : {TimedPoint<double>{0, 0}, {1, 8}, {after(1), 100}, {2, 100}}) {
        line.push_back(point);
    }
    const auto moved = line.Shift(-1e6, true);
    EXPECT_TRUE(strictlyIncreasing(moved));
    EXPECT_EQ(*moved.valueAt(1e6 + 1), 100);
    EXPECT_NEAR(*moved.valueAt(1e6 + 0.5), 4, 1e-6);
}

RC_GTEST_PROP(Shift, ReadsTheTraceLater, (bool isLinear)) {
    const Signal signal = anySignal(isLinear ? linear : held, {true, 46408.5}, -3, 3);
    const double delay = 0.25 * *rc::gen::inRange(-20, 20);
    const auto whole = signal.toTrace();
    const auto shifted = whole.Shift(delay, true);
    RC_ASSERT(shifted.lastKnownTime == whole.lastKnownTime - delay);
    for (double time :
         withMiddles(signal.times, signal.start() + std::max(0.0, -delay), shifted.lastKnownTime)) {
        RC_ASSERT(std::fabs(*shifted.valueAt(time) - signal.at(time + delay)) < 1e-9);
    }
}

TEST(EpsilonShift, MovesByOneRepresentableStep) {
    const auto signal = trace("0:1 3:2 5:3", 6);
    const auto later = signal.EpsilonShift(1);
    EXPECT_EQ(later.points[0].time, 0);
    EXPECT_EQ(later.points[1].time, after(3));
    EXPECT_EQ(later.points[2].time, after(5));
    EXPECT_EQ(later.lastKnownTime, after(6));
    EXPECT_TRUE(same(signal.EpsilonShift(1000), later));

    const auto earlier = signal.EpsilonShift(-1);
    EXPECT_EQ(earlier.points[0].time, 0);
    EXPECT_EQ(earlier.points[0].value, 1);
    EXPECT_EQ(earlier.points[1].time, before(3));
    EXPECT_EQ(earlier.lastKnownTime, before(6));
    EXPECT_TRUE(same(signal.EpsilonShift(nan), earlier));

    const TimedTrace_T<double> constant(5.0);
    EXPECT_TRUE(same(constant.EpsilonShift(1), constant));
    EXPECT_TRUE(same(constant.EpsilonShift(-1), constant));
    EXPECT_TRUE(same(trace("", 2).EpsilonShift(1), trace("", 2)));
}

TEST(Slope, IsTheHeldDerivative) {
    EXPECT_TRUE(same(trace(linear, "0:0 1:2 3:0").Slope(), trace("0:2 1:-1", before(3))));
    EXPECT_TRUE(same(trace<float>(linear, "0:0 1:2 2:2").Slope(), trace("0:2 1:0", before(2))));
    EXPECT_TRUE(same(trace(linear, "").Slope(), trace("")));
}

TEST(Slope, RefusesHeldAndEnumeratedTraces) {
    const auto failure = thrown<AssessmentInternalException>([] { trace("0:0 1:2").Slope(); });
    EXPECT_NE(std::string(failure.what()).find("Slope is not valid for ZOH TimedTrace."),
              std::string::npos);
    auto mode = trace<std::int8_t>("0:1");
    mode.enumTypeName = "Mode";
    EXPECT_THROW(mode.Slope(), AssessmentTypeException);
}

}  // namespace
}  // namespace vorm::test
