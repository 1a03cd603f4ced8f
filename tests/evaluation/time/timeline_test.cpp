#include "support/numbers.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_format.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace vorm::evaluation {
namespace {

using vorm::test::infinity;

ExactTime seconds(const std::string& decimal) {
    return *ExactTime::of(decimal, second);
}

RC_GTEST_PROP(Timeline, WholeTicksAreExactThroughSumsAndSteps, ()) {
    const double span = *rc::gen::elementOf(std::vector<double>{1, 7, 6e10, 1e14});
    const auto anyTicks = rc::gen::inRange<std::int64_t>(0, static_cast<std::int64_t>(span) + 1);
    const ExactTime zero = seconds("1700000000.3");
    const Timeline timeline = Timeline(nanosecond, zero).over(0, span);
    const std::int64_t ticks = *anyTicks;
    const std::int64_t distance = *anyTicks / 2;
    const double at = timeline.at(zero + ticks * nanosecond);
    RC_ASSERT(timeline.timeAt(at) == zero + ticks * nanosecond);
    RC_ASSERT(std::nextafter(at, infinity) - at == timeline.step());
    // What is just after a time stays just after it, however it is moved, and never reaches a tick.
    for (const double moved : {static_cast<double>(distance), -static_cast<double>(distance)}) {
        const double after = std::nextafter(at, infinity) + moved;
        RC_ASSERT(after == std::nextafter(at + moved, infinity));
        RC_ASSERT(timeline.timeAt(after) == timeline.timeAt(at + moved));
        RC_ASSERT(after + timeline.step() < at + moved + 1);
    }
}

RC_GTEST_PROP(Timeline, FinerDigitsStayAsFarAsDoublesTellThem, ()) {
    const auto picoseconds = *rc::gen::inRange<std::int64_t>(0, 60'000'000'000'000);
    const ExactTime zero = seconds("46408.123456789012");
    const Timeline timeline = Timeline(nanosecond, zero).over(0, 6e10);
    const ExactTime time = zero + picoseconds * ExactTime(1'000'000);
    RC_ASSERT(timeline.timeAt(timeline.at(time)) == time);
}

// Whatever the ticks are, steps are as fine as the length of the recording lets them be.
RC_GTEST_PROP(Timeline, StepsAreFineForAnyResolution, ()) {
    const ExactTime tick = *rc::gen::elementOf(
        std::vector<ExactTime>{nanosecond, 1000 * nanosecond, 1'000'000 * nanosecond, second});
    const auto length = *rc::gen::elementOf(std::vector<std::string>{"4", "60", "3600", "86400"});
    const double span = seconds(length).in(tick);
    const Timeline timeline = Timeline(tick).over(0, span);
    const double most = std::max(span, seconds("17").in(tick)) * 0x1p-48;
    RC_ASSERT(timeline.step() <= most);
    const auto fraction = *rc::gen::inRange<std::int64_t>(0, 4'000'000'000);
    const ExactTime time = fraction * nanosecond;
    RC_ASSERT(std::fabs(timeline.at(time) - timeline.bias() - time.in(tick)) <= timeline.step());
}

TEST(Timeline, WithoutABiasIsTheShortestDecimalOfTheCount) {
    const Timeline timeline(second);
    EXPECT_EQ(timeline.at(seconds("0.1")), 0.1);
    EXPECT_EQ(timeline.at(seconds("12.3")), 12.3);
    EXPECT_EQ(timeline.at(seconds("1e-7")), 1e-7);
    EXPECT_EQ(timeline.at(seconds("-7.000000000000001")), -7.000000000000001);
    EXPECT_EQ(timeline.timeAt(12.3).text(), "12.3");
}

TEST(Timeline, RefusesTicksThatItsStepsMiss) {
    const Timeline timeline = Timeline().over(0, 1e17);
    EXPECT_EQ(timeline.step(), 64);
    EXPECT_EQ(timeline.biased(128), timeline.bias() + 128);
    EXPECT_THROW(timeline.biased(1), InputError);
}

TEST(TimeFormat, ReadsFractionsAndOffsets) {
    struct Row {
        std::string format;
        std::string text;
        std::string seconds;  // since 1970; empty for what is no time
    };
    const std::vector<Row> rows{
        {"%Y-%m-%d %H:%M:%S", "1970-01-02 00:00:00.25", "86400.25"},
        {"%Y-%m-%d %T", "1970-01-01 00:00:01,000000000001", "1.000000000001"},
        {"%Y-%m-%dT%H:%M:%S%z", "1970-01-01T00:00:00.5+0100", "-3599.5"},
        {"%Y-%m-%dT%H:%M:%S%z", "1970-01-01T00:00:00Z", "0"},
        {"%d.%m.%Y %H:%M:%S Uhr", "01.01.1970 00:00:59.9 Uhr", "59.9"},
        {"%I:%M:%S %p", "01:00:00 PM", "46800"},
        {"%I:%M:%S %p", "01:00:00.5 PM", ""},
        {"%H:%M", "10:30.5", ""},
        {"%Y-%m-%d %T", "2024-02-30 00:00:00", ""},
        {"%Y-%m-%d %T", "2024-02-28 00:00:00.", ""},
        {"%Y-%m-%d %T", "2024-02-28 00:00:00 x", ""},
        {"%Y-%m-%d %T", "2024-02-28", ""},
        {"%Y-%m-%d %T", "2300-01-01 00:00:00", "10413792000"},
        {"%Y-%m-%d %T", "2016-12-31 23:59:60", "1483228800"}};
    for (const Row& row : rows) {
        const auto time = TimeFormat(row.format).read(row.text);
        EXPECT_EQ(time ? time->text() : "", row.seconds) << row.text;
    }
}

TEST(TimeFormat, NamesWhatItCannotRead) {
    EXPECT_EQ(TimeFormat::unreadableConversion("%Y-%m-%d %T %z%%"), std::nullopt);
    EXPECT_EQ(TimeFormat::unreadableConversion("%T %Z"), "%Z");
    EXPECT_EQ(TimeFormat::unreadableConversion("%c"), "%c");
    EXPECT_EQ(TimeFormat::unreadableConversion("%T %"), "%");
}

}  // namespace
}  // namespace vorm::evaluation
