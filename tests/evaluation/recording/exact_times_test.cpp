#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/recording/instant.hpp>

#include <rapidcheck/gtest.h>

#include <cmath>

namespace vorm::evaluation::test {
namespace {

std::string timesOf(const std::string& content, const TimeLayout& time) {
    RecordingLayout layout;
    layout.time = time;
    return textOf(read(content, layout));
}

TimeLayout from(TimeOrigin::Choice origin, const char* unit = nullptr, std::string format = {}) {
    TimeLayout time;
    time.origin = std::move(origin);
    time.unit = unit != nullptr ? timeUnitOf(unit) : std::nullopt;
    time.format = std::move(format);
    return time;
}

TEST(RecordingTimes, IntegersAreExactBeyondTheDoubles) {
    const TimeOrigin::FirstSample first;
    EXPECT_EQ(timesOf("t,a\n1710773350354000001,1\n1710773350354000002,2\n", from(first, "ns")),
              "a: double 0:1 1e-09:2 known 1e-09");
    EXPECT_EQ(timesOf("t,a\n-9223372036854775808,1\n9223372036854775807,2\n", from(first, "us")),
              "a: double 0:1 18446744073709.55:2 known 18446744073709.55");
    EXPECT_EQ(timesOf("t,a\n1710773350354000,1\n1710773350358000,2\n",
                      from(TimeOrigin::AsRecorded(), "us")),
              "a: double 1710773350.354:1 1710773350.358:2 known 1710773350.358");
}

TEST(RecordingTimes, OriginIsAnyTimeThatTheFileCanWrite) {
    EXPECT_EQ(timesOf("t,a\n1.5,1\n2.25,2\n", from(TimeOrigin::FirstSample())),
              "a: double 0:1 0.75:2 known 0.75");
    EXPECT_EQ(timesOf("t_ms,a\n1000,1\n2500,2\n", from(TimeOrigin::At{"2000"})),
              "a: double -1:1 0.5:2 known 0.5");
    EXPECT_EQ(timesOf("t [d],a\n1,1\n2,2\n", from(TimeOrigin::At{"0.5"}, "min")),
              "a: double 30:1 90:2 known 90");
}

TEST(RecordingTimes, CalendarTimesAreUtcWithAFraction) {
    const TimeOrigin::FirstSample first;
    EXPECT_EQ(timesOf("t,a\n2024-02-28 23:59:59.75,1\n2024-02-29 00:00:00,2\n",
                      from(first, nullptr, "%Y-%m-%d %H:%M:%S")),
              "a: double 0:1 0.25:2 known 0.25");
    EXPECT_EQ(timesOf("t,a\n1969-12-31T23:59:59.5+0100,1\n",
                      from(TimeOrigin::AsRecorded(), nullptr, "%Y-%m-%dT%H:%M:%S.5%z")),
              "a: double -3601:1 known -3601");
    TimeLayout columns = from(TimeOrigin::At{"06/30/2021 09:00:00"}, nullptr, "%m/%d/%Y %H:%M:%S");
    columns.columns = {"Date", "Time"};
    EXPECT_EQ(timesOf("Date,a,Time\n06/30/2021,1,09:39:19\n", columns),
              "a: double 2359:1 known 2359");
    for (const char* time : {"2024-02-30 00:00:00", "2024-02-28 00:00:00.", "2024-02-28 00:00:00 x",
                             "2024-02-28", "2300-01-01 00:00:00"}) {
        const std::string error = errorOf([&] {
            timesOf(std::string("t,a\n") + time + ",1\n",
                    from(first, nullptr, "%Y-%m-%d %H:%M:%S"));
        });
        EXPECT_EQ(error.substr(0, 12), "r.csv:2:1: '") << time << error;
    }
}

// Seconds from 2^23 on are multiples of 2^-30, so that their nanoseconds in 2^-30 are integers.
WideInteger distance(double seconds, WideInteger nanoseconds) {
    const auto scaled = static_cast<WideInteger>(std::ldexp(seconds, 30)) * 1'000'000'000;
    const WideInteger difference = scaled - (nanoseconds * (1 << 30));
    return difference < 0 ? -difference : difference;
}

RC_GTEST_PROP(RecordingTimes, NanosecondsBecomeTheNearestSeconds, ()) {
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    const WideInteger magnitude{(bits >> 1U) | std::uint64_t{1} << 53U};
    const WideInteger nanoseconds = bits % 2 == 0 ? magnitude : -magnitude;
    const double seconds = secondsOfNanoseconds(nanoseconds);
    const WideInteger error = distance(seconds, nanoseconds);
    RC_ASSERT(error <= distance(std::nextafter(seconds, 1e300), nanoseconds));
    RC_ASSERT(error <= distance(std::nextafter(seconds, -1e300), nanoseconds));
}

}  // namespace
}  // namespace vorm::evaluation::test
