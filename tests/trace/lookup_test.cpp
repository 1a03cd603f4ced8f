#include "support/signals.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <iterator>

namespace vorm::test {
namespace {

TEST(Lookup, FindsTheSampleInForceOrTheOneAfter) {
    const auto signal = trace("0:10 1:11 2:12");
    const struct {
        double time;
        std::ptrdiff_t atOrBefore;
        std::ptrdiff_t after;
    } rows[] = {{-5, 0, 0}, {0, 0, 0}, {0.5, 0, 1}, {1, 1, 2}, {2, 2, 3}, {7, 2, 3}};
    for (const auto& row : rows) {
        const auto position = [&](bool atOrBefore) {
            return signal.TimedPointIteratorForValueAt(row.time, atOrBefore) -
                   signal.points.begin();
        };
        EXPECT_EQ(position(true), row.atOrBefore) << row.time;
        EXPECT_EQ(position(false), row.after) << row.time;
    }
    const auto empty = trace("");
    EXPECT_EQ(empty.TimedPointIteratorForValueAt(1, false), empty.points.end());
}

TEST(Lookup, ValueIsThereOnlyWhereItIsKnown) {
    const auto signal = trace(linear, "0:0 4:8", 6);
    EXPECT_EQ(signal.valueAt(-1), std::nullopt);
    EXPECT_EQ(signal.valueAt(1), 2);
    EXPECT_EQ(signal.valueAt(6), 8);
    EXPECT_EQ(signal.valueAt(6.5), std::nullopt);
    EXPECT_EQ(signal.valueAt(nan), std::nullopt);
    EXPECT_EQ(TimedTrace_T<double>(3.0).valueAt(-1e300), 3);
    EXPECT_EQ(trace("", 5).valueAt(1), std::nullopt);
}

TEST(PopFrontUntil, StartsTheTraceAtTheTimeWithItsValue) {
    auto steps = trace("0:10 1:11 2:12");
    steps.popFrontUntil(1);
    EXPECT_TRUE(same(steps, trace("1:11 2:12")));
    steps.popFrontUntil(1.5);
    EXPECT_TRUE(same(steps, trace("1.5:11 2:12")));
    steps.popFrontUntil(-3);
    EXPECT_TRUE(same(steps, trace("1.5:11 2:12")));

    auto line = trace(linear, "0:0 4:8 6:0");
    line.popFrontUntil(3);
    EXPECT_TRUE(same(line, trace(linear, "3:6 4:8 6:0")));
    // The argument may be a sample's own time.
    line.popFrontUntil(line.points[1].time);
    EXPECT_TRUE(same(line, trace(linear, "4:8 6:0")));
}

TEST(PopBackAfter, KeepsASampleAtTheTimeAndTheLastSlope) {
    auto steps = trace("0:10 1:11 2:12", 3);
    steps.popBackAfter(5);
    EXPECT_TRUE(same(steps, trace("0:10 1:11 2:12", 3)));
    steps.popBackAfter(1);
    EXPECT_TRUE(same(steps, trace("0:10 1:11", 1)));
    steps.popBackAfter(-1);
    EXPECT_TRUE(same(steps, trace("", -1)));

    auto line = trace(linear, "0:0 4:8");
    line.popBackAfter(3);
    EXPECT_EQ(line.points.size(), 1u);
    EXPECT_EQ(line.valueAt(3), 6);
}

TEST(ExtractWindow, CutsAtBothEnds) {
    const auto window = [](const auto& signal, double start, double end) {
        return signal.extractWindow(start, end, 0);
    };
    EXPECT_TRUE(same(window(TimedTrace_T<double>(7.0), 2, 5), trace("2:7", 5)));

    const auto line = window(trace(linear, "0:0 10:10"), 2.5, 4);
    ASSERT_EQ(line.points.size(), 1u);
    EXPECT_EQ(line.points[0].value, 2.5);
    EXPECT_EQ(line.points[0].derivative, 1);
    EXPECT_EQ(line.lastKnownTime, 4);

    const auto steps = trace("0:10 1:11 2:12", 3);
    EXPECT_TRUE(same(window(trace(linear, "0:1 1:2"), 1.5, 9), trace("")));
    EXPECT_TRUE(same(window(steps, 1.5, 1.5), trace("1.5:11", 1.5)));
    EXPECT_TRUE(same(window(steps, -9, -1), trace("", -1)));

    auto mode = trace<std::uint8_t>("0:1 5:2");
    mode.enumTypeName = "Mode";
    EXPECT_EQ(window(mode, 1, 2).enumTypeName, "Mode");
    EXPECT_EQ(trace("0:1 0.25:3 0.5:2 4:9").extractWindow(0, 1, 1).points.size(), 2u);
}

RC_GTEST_PROP(ExtractWindow, LeavesEveryValueInRangeUnchanged, (bool isLinear)) {
    const Signal signal = anySignal(isLinear ? linear : held, anyTimeBase(), -3, 3);
    const auto whole = signal.toTrace();
    const auto offset = [] { return *rc::gen::inRange(-4, 40) / 16.0; };
    const double start = signal.start() + offset() * (signal.known - signal.start());
    const double end = start + offset();
    RC_LOG() << signal << " from " << start << " to " << end << '\n';
    const auto window = whole.extractWindow(start, end, 0);
    if (start > signal.known) {
        RC_ASSERT(window.points.empty() && window.lastKnownTime == -infinity);
        return;
    }
    RC_ASSERT(window.lastKnownTime == std::min(end, signal.known));
    RC_ASSERT(strictlyIncreasing(window));
    const double from = std::max(start, signal.start());
    RC_ASSERT(window.points.empty() == (end < from));
    for (double time : end < from ? std::vector<double>()
                                  : withMiddles(signal.times, from, window.lastKnownTime)) {
        const double slack = isLinear ? 8 * ulp(time) * signal.steepest() + 1e-12 : 0;
        RC_ASSERT(std::fabs(*window.valueAt(time) - signal.at(time)) <= slack);
    }
}

}  // namespace
}  // namespace vorm::test
