#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

namespace vorm::test {
namespace {

using Times = std::vector<double>;
using Intervals = std::vector<std::vector<double>>;

TEST(ErrorLists, OfBoolTraces) {
    const auto flags = trace<bool>("0:1 2:0 5:1", 8);
    EXPECT_EQ(flags.getErrorTimeList(), (Times{2}));
    EXPECT_EQ(flags.getErrorIntervalList(), (Intervals{{2, 5}}));
    EXPECT_EQ(trace<bool>("0:1 2:0", 8).getErrorIntervalList(), (Intervals{{2, 8}}));
    const auto twice = trace<bool>("0:0 3:1 4:0 6:1", 6);
    EXPECT_EQ(twice.getErrorTimeList(), (Times{0, 4}));
    EXPECT_EQ(twice.getErrorIntervalList(), (Intervals{{0, 3}, {4, 6}}));
    EXPECT_EQ(trace<bool>("").getErrorIntervalList(), Intervals{});
    EXPECT_EQ(TimedTrace_T<bool>(false).getErrorIntervalList(), (Intervals{{-infinity, infinity}}));
    // They need no zero to compare with.
    auto enumerated = flags;
    enumerated.enumTypeName = "Switch";
    EXPECT_EQ(enumerated.getErrorTimeList(), (Times{2}));
    EXPECT_EQ(enumerated.getErrorIntervalList(), (Intervals{{2, 5}}));
}

TEST(ErrorLists, StopAtTheLastKnownTime) {
    // Samples may stand after it.
    auto flags = trace<bool>("0:1 2:0 5:1 7:0 9:1");
    flags.lastKnownTime = 4;
    EXPECT_EQ(flags.getErrorIntervalList(), (Intervals{{2, 4}}));
    EXPECT_EQ(flags.getErrorTimeList(), (Times{2, 7}));
    flags.lastKnownTime = 6;
    EXPECT_EQ(flags.getErrorIntervalList(), (Intervals{{2, 5}}));
}

TEST(ErrorLists, OfNumbersFailWhereNotGreaterThanZero) {
    const auto steps = trace("0:1 1:0 2:-3 3:4");
    EXPECT_EQ(steps.getErrorTimeList(), (Times{1}));
    EXPECT_EQ(steps.getErrorIntervalList(), (Intervals{{1, 3}}));
    EXPECT_EQ(trace<std::uint8_t>("0:1 1:0 2:3").getErrorIntervalList(), (Intervals{{1, 2}}));

    auto unknown = trace("0:1");
    unknown.push_back({1, nan});
    unknown.push_back({2, 1});
    EXPECT_EQ(unknown.getErrorIntervalList(), (Intervals{{1, 2}}));

    auto cutLine = trace(linear, "0:2 4:-2");
    cutLine.popBackAfter(3);
    EXPECT_EQ(cutLine.getErrorIntervalList(), (Intervals{{2, 3}}));
}

TEST(ErrorLists, RefuseWhatHasNoZeroToCompareWith) {
    auto gear = trace<std::int8_t>("0:1");
    gear.enumTypeName = "Gear";
    const auto failure =
        thrown<AssessmentBinaryTypeException>([&] { gear.getErrorIntervalList(); });
    EXPECT_EQ(failure.getLHSTypeName() + ' ' + failure.getRHSTypeName(), "Gear int8");
    EXPECT_THROW(gear.getErrorTimeList(), AssessmentBinaryTypeException);
}

RC_GTEST_PROP(ErrorLists, AgreeWithADirectScan, ()) {
    Signal signal = anySignal(held, anyTimeBase(), -1, 1);
    signal.keepsLaterSamples = false;  // their times would be listed too
    const auto steps = signal.toTrace();
    Intervals expected;
    for (double time : signal.times) {
        const bool fails = !(signal.at(time) > 0);
        const bool open = !expected.empty() && expected.back().size() == 1;
        if (time <= signal.known && fails != open) {
            fails ? expected.push_back({time}) : expected.back().push_back(time);
        }
    }
    if (!expected.empty() && expected.back().size() == 1) {
        expected.back().push_back(signal.known);
    }
    RC_ASSERT(steps.getErrorIntervalList() == expected);
    Times starts;
    for (const auto& interval : expected) {
        starts.push_back(interval[0]);
    }
    RC_ASSERT(steps.getErrorTimeList() == starts);
}

}  // namespace
}  // namespace vorm::test
