#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/recording/recorded_times.hpp>

#include <filesystem>
#include <fstream>

namespace vorm::evaluation {
namespace {

int digitsFor(const std::string& table) {
    return recordedTimes(test::read(table)).digits;
}

TEST(RecordedTimes, HaveTheDigitsOfTheSamplesButNoNoise) {
    EXPECT_EQ(digitsFor("t,x\n0,1\n1,2\n2,3\n"), 3);
    EXPECT_EQ(digitsFor("t,x\n0,1\n0.02,2\n0.04,3\n"), 3);
    EXPECT_EQ(digitsFor("t,x\n0,1\n0.00002,2\n0.00004,3\n"), 5);
    EXPECT_EQ(digitsFor("t,x\n0.123456,1\n0.123457,2\n1.5,3\n"), 6);
    EXPECT_EQ(digitsFor("t,x\n0.100000001490116,1\n0.200000002980232,2\n"), 3)
        << "floats that were written in full";
    EXPECT_EQ(digitsFor("t,x\n5,1\n"), 3);
    EXPECT_EQ(recordedTimes(Recording()).digits, 3);
}

TEST(RecordedTimes, HaveAClockWhereTimesAreDates) {
    const auto firstDate = [](const std::string& table, const RecordingLayout& layout = {}) {
        const auto clock = test::read(table, layout).clock;
        return clock ? clock->dateTimeOf({}, 3) + " " + clock->zoneName() : "none";
    };
    EXPECT_EQ(firstDate("t,x\n2026-11-22 10:30:00,1\n2026-11-22 10:30:01,2\n"),
              "1970-01-01 00:00:00 UTC");
    EXPECT_EQ(firstDate("t,x\n2026-11-22 10:30:00,1\n2026-11-22 10:30:01,2\n",
                        test::layoutWith([](RecordingLayout& layout) {
                            layout.time.origin = TimeOrigin::FirstSample();
                            layout.time.zone = "Europe/Berlin";
                        })),
              "2026-11-22 10:30:00 Europe/Berlin");
    EXPECT_EQ(firstDate("t,x\n1700000000.5,1\n1700000001.5,2\n"), "1970-01-01 00:00:00 UTC");
    EXPECT_EQ(firstDate("t,x\n0,1\n1,2\n"), "none");
    EXPECT_EQ(firstDate("t,x\n0:00:01.5,1\n0:00:02.5,2\n"), "none") << "the day is not known";
    const auto withFormat = [](const std::string& format) {
        return test::layoutWith([&](RecordingLayout& layout) { layout.time.format = format; });
    };
    EXPECT_EQ(firstDate("t,x\n10:30,1\n10:31,2\n", withFormat("%H:%M")), "none");
    EXPECT_EQ(firstDate("t,x\n22.11. 10:30,1\n22.11. 10:31,2\n", withFormat("%d.%m. %H:%M")),
              "none");
    EXPECT_EQ(firstDate("t,x\n22/26/11 10,1\n22/26/11 11,2\n", withFormat("%d/%y/%m %H")),
              "1970-01-01 00:00:00 UTC");
}

}  // namespace
}  // namespace vorm::evaluation
