#include "support/signals.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

namespace vorm::test {
namespace {

constexpr int pass = 0;
constexpr int fail = 1;
constexpr int none = 254;

struct Row {
    double time;
    int verdict;
    bool operator==(const Row&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.time << ':' << row.verdict;
}

std::vector<Row> rows(const TimedTrace_T<Verdict>& verdicts) {
    std::vector<Row> result;
    for (const auto& point : verdicts.points) {
        result.push_back({point.time, static_cast<int>(point.value.get())});
    }
    return result;
}

TEST(ConvertToResult, MarksTheLimitsOfTheRangeAndOfTheData) {
    const auto flags = trace<bool>("0:1 2:0 5:1", 8);
    const double after8 = std::nextafter(8, infinity);
    const struct {
        double start;
        double end;
        std::vector<Row> expected;
        double known;
    } cases[] = {
        {0, 10, {{0, pass}, {2, fail}, {5, pass}, {after8, none}, {10, none}}, 8},
        {-1, 4, {{-1, none}, {0, pass}, {2, fail}, {4, fail}}, 4},
        {0, 8, {{0, pass}, {2, fail}, {5, pass}, {8, pass}}, 8},
        {5, 5, {{5, pass}}, 5},
        {0, after8, {{0, pass}, {2, fail}, {5, pass}, {after8, none}}, 8},
        {9, 12, {{9, none}, {12, none}}, -infinity},
        {-7, -3, {{-7, none}, {-3, none}}, -infinity},
        {9, 9, {{9, none}, {9, none}}, -infinity},
        {-7, -7, {{-7, none}, {-7, none}}, -infinity},
        {12, 9, {{12, none}, {9, none}}, -infinity},
    };
    for (const auto& row : cases) {
        const auto verdicts = flags.convertToResult(row.start, row.end);
        EXPECT_EQ(rows(verdicts), row.expected) << row.start << " to " << row.end;
        EXPECT_EQ(verdicts.lastKnownTime, row.known);
    }
    EXPECT_EQ(rows(trace<bool>("").convertToResult(1, 2)),
              (std::vector<Row>{{1, none}, {2, none}}));
}

TEST(ConvertToResult, StepsOnBeyondTwoToThe53) {
    const double big = 0x1p60;
    auto flags = trace<bool>("0:1", big);
    const auto verdicts = flags.convertToResult(0, infinity);
    EXPECT_EQ(
        rows(verdicts),
        (std::vector<Row>{{0, pass}, {std::nextafter(big, infinity), none}, {infinity, none}}));
}

RC_GTEST_PROP(ConvertToResult, AgreesWithTheTraceAtEveryTimeOfTheRange, ()) {
    const Signal signal = anySignal(held, anyTimeBase(), 0, 1);
    const double start = signal.start() + *rc::gen::inRange(-8, 30) * 0.5;
    const double end = start + *rc::gen::inRange(0, 30) * 0.5;
    const auto verdicts = signal.toTrace<bool>().convertToResult(start, end);
    RC_LOG() << signal << testing::PrintToString(verdicts) << '\n';
    if (verdicts.lastKnownTime == -infinity) {
        RC_ASSERT(rows(verdicts) == (std::vector<Row>{{start, none}, {end, none}}));
        RC_ASSERT(end < signal.start() || start > signal.known);
        return;
    }
    RC_ASSERT(strictlyIncreasing(verdicts));
    RC_ASSERT(verdicts.points.front().time == start);
    for (double time : withMiddles(signal.times, start, end)) {
        const auto inForce = verdicts.TimedPointIteratorForValueAt(time, true);
        const bool known = time >= signal.start() && time <= signal.known;
        const int expected = !known ? none : signal.at(time) == 1 ? pass : fail;
        RC_ASSERT(static_cast<int>(inForce->value.get()) == expected);
    }
}

}  // namespace
}  // namespace vorm::test
