#include "evaluation/recording/recorded.hpp"

namespace vorm::evaluation::test {
namespace {

std::string timesOf(const std::string& content, const TimeLayout& time) {
    RecordingLayout layout;
    layout.time = time;
    ReadingOptions options;
    options.reach = {};  // for times as fine as can be
    return textOf(read(content, layout, options));
}

TimeLayout from(TimeOrigin::Choice origin, const char* unit = nullptr, std::string format = {}) {
    TimeLayout time;
    time.origin = std::move(origin);
    time.unit = unit != nullptr ? timeUnitOf(unit) : std::nullopt;
    time.format = std::move(format);
    return time;
}

TEST(RecordingTimes, AreExactHoweverLargeTheNumbersAre) {
    const TimeOrigin::FirstSample first;
    const TimeOrigin::AsRecorded recorded;
    EXPECT_EQ(timesOf("t,a\n1710773350354000001,1\n1710773350354000002,2\n", from(first, "ns")),
              "a: double 0:1 0.000000001:2 known 0.000000001");
    EXPECT_EQ(timesOf("t,a\n1710773350354000,1\n1710773350358000,2\n", from(recorded, "us")),
              "a: double 1710773350.354:1 1710773350.358:2 known 1710773350.358");
    EXPECT_EQ(timesOf("t,a\n1700000000.3,1\n1700000000.400000001,2\n", from(recorded)),
              "a: double 1700000000.3:1 1700000000.400000001:2 known 1700000000.400000001");
    EXPECT_EQ(timesOf("t,a\n46417.139197913,1\n46417.139197913336,2\n", from(recorded)),
              "a: double 46417.139197913:1 46417.139197913336:2 known 46417.139197913336")
        << "what is finer than a nanosecond stays as far as doubles tell it";
    EXPECT_EQ(timesOf("t,a\n4.64e4,1\n46400.1,2\n", from(recorded)),
              "a: double 46400:1 46400.1:2 known 46400.1");
}

TEST(RecordingTimes, OriginIsAnyTimeThatTheFileCanWrite) {
    EXPECT_EQ(timesOf("t,a\n1.5,1\n2.25,2\n", from(TimeOrigin::FirstSample())),
              "a: double 0:1 0.75:2 known 0.75");
    EXPECT_EQ(timesOf("t_ms,a\n1000,1\n2500,2\n", from(TimeOrigin::At{"2000"})),
              "a: double -1:1 0.5:2 known 0.5");
    EXPECT_EQ(timesOf("t [d],a\n1,1\n2,2\n", from(TimeOrigin::At{"0.5"}, "min")),
              "a: double 30:1 90:2 known 90");
}

TEST(RecordingTimes, DatesAreUtcUnlessAnOffsetFollows) {
    const TimeOrigin::FirstSample first;
    EXPECT_EQ(timesOf("t,a\n2024-02-28 23:59:59.75,1\n2024-02-29 00:00:00,2\n",
                      from(first, nullptr, "%Y-%m-%d %H:%M:%S")),
              "a: double 0:1 0.25:2 known 0.25");
    TimeLayout columns = from(TimeOrigin::At{"06/30/2021 09:00:00"}, nullptr, "%m/%d/%Y %H:%M:%S");
    columns.columns = {"Date", "Time"};
    EXPECT_EQ(timesOf("Date,a,Time\n06/30/2021,1,09:39:19\n", columns),
              "a: double 2359:1 known 2359");
    EXPECT_EQ(errorOf([&] {
                  timesOf("t,a\n2024-02-30 00:00:00,1\n", from(first, nullptr, "%Y-%m-%d %T"));
              }).substr(0, 34),
              "r.csv:2:1: '2024-02-30 00:00:00' i");
}

TEST(RecordingTimes, ResolutionIsTheUnitOfExactCounts) {
    // 20 years in nanoseconds are beyond 2^59.
    const std::string years = "t,a\n0,1\n630720000.000001,2\n";
    const std::string error = errorOf([&] { timesOf(years, TimeLayout()); });
    EXPECT_NE(error.find("too long for its times: doubles tell times apart by 128 ns"),
              std::string::npos)
        << error;
    EXPECT_NE(error.find("resolution = \"us\""), std::string::npos) << error;
    EXPECT_EQ(error.substr(0, 10), "r.csv:3:1:");
    TimeLayout layout;
    layout.resolution = *timeUnitOf("us");
    EXPECT_EQ(timesOf(years, layout), "a: double 0:1 630720000.000001:2 known 630720000.000001");
    layout.resolution = *timeUnitOf("fs");
    EXPECT_EQ(timesOf("t,a\n1e-15,1\n3e-15,2\n", layout),
              "a: double 0.000000000000001:1 0.000000000000003:2 known 0.000000000000003");
}

}  // namespace
}  // namespace vorm::evaluation::test
