#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>

namespace vorm::test {
namespace {

TEST(PushBack, LinearTraceStoresOnlyCorners) {
    auto signal = trace(linear, "0:0 1:1 2:2");
    ASSERT_EQ(signal.points.size(), 2u);
    EXPECT_EQ(signal.points[0].derivative, 1);
    signal.push_back({3, 5});
    ASSERT_EQ(signal.points.size(), 3u);
    EXPECT_EQ(signal.points[1].time, 2);
    EXPECT_EQ(signal.points[1].derivative, 3);
    EXPECT_EQ(signal.points[2].derivative, 0);

    // A second equal sample still makes a segment, which a third one extends.
    EXPECT_EQ(trace(linear, "0:4 1:4").points.size(), 2u);
    EXPECT_EQ(trace(linear, "0:4 1:4 2:4").points.size(), 2u);
}

TEST(PushBack, NanAfterNanIsNoChange) {
    for (const auto method : {held, linear}) {
        TimedTrace_T<double> signal(method, -infinity);
        for (double time : {0.0, 1.0, 2.0, 3.0}) {
            signal.push_back({time, nan});
        }
        EXPECT_EQ(signal.points.size(), method == held ? 1u : 2u);
        EXPECT_EQ(signal.lastKnownTime, 3);
        signal.push_back({4, 1});
        EXPECT_EQ(*signal.valueAt(4), 1);
        EXPECT_NE(*signal.valueAt(3.5), *signal.valueAt(3.5));
    }
}

TEST(PushBack, RefusesTimesThatDoNotIncrease) {
    for (const auto method : {held, linear}) {
        for (const double time : {2.0, 1.5, -infinity, nan}) {
            auto signal = trace(method, "0:1 2:3");
            const auto before = signal;
            const auto failure = thrown<AssessmentException>([&] { signal.push_back({time, 7}); });
            EXPECT_EQ(failure.GetID(), "quillet:assessments:TimeValueMustIncrease");
            EXPECT_EQ(failure.getCause(), nullptr);
            EXPECT_TRUE(same(signal, before));
        }
    }
    // Nothing comes before the first sample, so that any time will do; a NaN stays the only one.
    TimedTrace_T<double> signal(held, -infinity);
    signal.push_back({nan, 1});
    EXPECT_THROW(signal.push_back({1, 2}), AssessmentException);
}

TEST(PushBack, DiscreteValuesAreNeverInterpolated) {
    for (const int second : {0, 1}) {
        auto flags = trace<bool>(linear, "0:1");
        const auto before = flags;
        const auto failure = thrown<AssessmentInternalException>([&] {
            flags.push_back({1, second == 1});
        });
        EXPECT_NE(
            std::string(failure.what()).find("Derivative cannot be set for discrete type value"),
            std::string::npos);
        EXPECT_TRUE(same(flags, before));
    }
}

TEST(PushBack, SetsExtremeSlopesWithoutOverflowOfIntegers) {
    auto wide = trace<std::int64_t>("0:1");
    wide.push_back({1, std::numeric_limits<std::int64_t>::max()});
    EXPECT_EQ(*wide.valueAt(5 - 4), std::numeric_limits<std::int64_t>::max());
    auto single = trace<float>(linear, "0:-3e38 1:3e38");
    EXPECT_EQ(single.points[0].derivative, 2.0 * double(3e38f));
}

RC_GTEST_PROP(PushBack, KeepsEveryValueThatWasPushed, (bool isLinear)) {
    const Signal signal = anySignal(isLinear ? linear : held, anyTimeBase(), -2, 2);
    TimedTrace_T<double> result(signal.method, -infinity);
    for (std::size_t i = 0; i < signal.times.size(); ++i) {
        result.push_back({signal.times[i], signal.values[i]});
        RC_ASSERT(result.lastKnownTime == signal.times[i]);
    }
    for (double time : withMiddles(signal.times, signal.start(), result.lastKnownTime)) {
        const double slack = 8 * ulp(time) * signal.steepest() + 1e-12;
        RC_ASSERT(std::fabs(*result.valueAt(time) - signal.at(time)) <= slack);
    }
    if (!isLinear) {
        for (std::size_t i = 1; i < result.points.size(); ++i) {
            RC_ASSERT(result.points[i].value != result.points[i - 1].value);
        }
    }
}

}  // namespace
}  // namespace vorm::test
