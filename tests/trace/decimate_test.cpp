#include "support/signals.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

namespace vorm::test {
namespace {

TimedTrace_T<double> thinned(TimedTrace_T<double> signal, double width) {
    signal.decimate(width);
    return signal;
}

TEST(Decimate, KeepsExtremesOfEachBucketAndTheFirstSample) {
    EXPECT_TRUE(same(thinned(trace("0:5 0.25:1 0.5:9 0.75:3 1:4 1.25:6"), 1),
                     trace("0:5 0.25:1 0.5:9 1:4 1.25:6")));
    // The first bucket begins at time 0, wherever the trace does.
    EXPECT_TRUE(same(thinned(trace("0.5:5 1:9 1.25:1 1.5:3"), 1), trace("0.5:5 1:9 1.25:1", 1.5)));
    // Of equal extremes the earliest stays; the trace here need not have been merged.
    auto equal = trace("0:5 0.1:1 0.2:9 0.3:5 0.4:1 0.5:9 0.6:5", 0.6);
    EXPECT_TRUE(same(thinned(equal, 1), trace("0:5 0.1:1 0.2:9", 0.6)));
    // Sparser than one sample a bucket, by a little.
    EXPECT_TRUE(same(thinned(trace("0:5 1:1 1.5:3 3.5:2"), 0.8), trace("0:5 1:1 1.5:3 3.5:2")));
    EXPECT_TRUE(same(thinned(trace("0:5 4:1 9:3"), 1), trace("0:5 4:1 9:3")));
    EXPECT_TRUE(same(thinned(trace("", 3), 1), trace("", 3)));
    const TimedTrace_T<double> constant(4.0);
    EXPECT_TRUE(same(thinned(constant, 1), constant));
}

TEST(Decimate, WritesNoSampleTwice) {
    // The first sample closes the bucket that began at time 0, and is an extreme of its own.
    EXPECT_TRUE(same(thinned(trace("5:9 5.25:1 5.5:3 6:2"), 1), trace("5:9 5.25:1 6:2")));
}

RC_GTEST_PROP(Decimate, KeepsTheExtremesAndOnlySamplesOfTheTrace, ()) {
    Signal signal = anySignal(held, anyTimeBase(), -9, 9);
    signal.keepsLaterSamples = false;
    const auto before = signal.toTrace();
    const auto after = thinned(before, step({true, 0}));
    RC_LOG() << testing::PrintToString(before) << '\n' << testing::PrintToString(after) << '\n';
    RC_ASSERT(strictlyIncreasing(after));
    RC_ASSERT(after.lastKnownTime == before.lastKnownTime);
    RC_ASSERT(after.points.front().time == before.points.front().time);
    std::set<double> valuesBefore;
    std::set<double> valuesAfter;
    for (const auto& point : before.points) {
        valuesBefore.insert(point.value);
    }
    for (const auto& point : after.points) {
        RC_ASSERT(before.valueAt(point.time) == point.value);
        valuesAfter.insert(point.value);
    }
    RC_ASSERT(*valuesAfter.begin() == *valuesBefore.begin());
    RC_ASSERT(*valuesAfter.rbegin() == *valuesBefore.rbegin());
}

}  // namespace
}  // namespace vorm::test
