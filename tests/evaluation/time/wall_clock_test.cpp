#include "support/thrown.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/rounded_time.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>
#include <vorm/evaluation/time/wall_clock.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace vorm::evaluation {
namespace {

ExactTime instant(const std::string& text) {
    return read(text, TimeNotation::Iso).value().time;
}

TEST(WallClock, ShowsTheCalendarFromTimeZeroOn) {
    const WallClock clock(instant("2026-12-31 23:59:58.5"));
    EXPECT_EQ(clock.dateTimeOf({}, 3), "2026-12-31 23:59:58.5");
    EXPECT_EQ(clock.dateTimeOf(second, 0), "2027-01-01 00:00:00") << "halves go on";
    EXPECT_EQ(clock.dateTimeOf(ExactTime(1), allDigits), "2026-12-31 23:59:58.500000000000000001");
    EXPECT_EQ(WallClock(instant("1969-12-31 23:59:59"))
                  .dateTimeOf(ExactTime::of("0.25", second).value(), 3),
              "1969-12-31 23:59:59.25");
    EXPECT_EQ(clock.dateTimeOf(9'000 * 365 * oneDay, 3), "") << "there is no year of five digits";
    EXPECT_EQ(clock.zoneName(), "UTC");
}

TEST(WallClock, ShowsLocalTime) {
    const WallClock clock(instant("2026-10-25 00:30:00"), TimeZone::called("Europe/Berlin"));
    EXPECT_EQ(clock.zoneName(), "Europe/Berlin");
    EXPECT_EQ(clock.dateTimeOf(-3600 * second, 0), "2026-10-25 01:30:00");
    EXPECT_EQ(clock.dateTimeOf({}, 0), "2026-10-25 02:30:00+02:00");
    EXPECT_EQ(clock.dateTimeOf(3600 * second, 0), "2026-10-25 02:30:00+01:00");
    EXPECT_EQ(clock.dateTimeOf(2 * 3600 * second, 0), "2026-10-25 03:30:00");
    const WallClock summer(instant("2060-07-01"), TimeZone::called("America/New_York"));
    EXPECT_EQ(summer.dateTimeOf({}, 0), "") << "nobody knows";
}

TEST(WallClock, TellsHowFarClocksAreAheadADayAroundTimes) {
    const auto offsetsOf = [](const WallClock& clock, ExactTime from, ExactTime to) {
        std::string texts;
        for (const auto& [since, ahead] : clock.offsets(from, to)) {
            texts += since.text() + ": " + ahead.text() + "; ";
        }
        return texts;
    };
    const TimeZone berlin = TimeZone::called("Europe/Berlin");
    const WallClock summer(instant("2026-10-24 12:00:00.5"), berlin);
    EXPECT_EQ(offsetsOf(summer, {}, second), "1792756800: 7200; 1792890000: 3600; ")
        << "until clocks are put back at 01:00 of the next day in UTC";
    EXPECT_EQ(offsetsOf(summer, -oneDay, -oneDay), "1792670400: 7200; ");
    EXPECT_EQ(offsetsOf(WallClock(instant("2026-10-24 12:00")), {}, second), "1792756800: 0; ");
    EXPECT_EQ(offsetsOf(WallClock(instant("2060-01-01"), berlin), {}, second), "");
    EXPECT_EQ(offsetsOf(WallClock(instant("2026-01-01")), {}, 8'000 * 365 * oneDay), "");
}

TEST(WallClock, ReadsDates) {
    const WallClock clock(instant("2026-10-25 00:00:00"), TimeZone::called("Europe/Berlin"));
    EXPECT_EQ(clock.timeOf("2026-10-25 01:00"), -3600 * second);
    EXPECT_EQ(clock.timeOf("2026-10-25T01:00:00.5Z")->text(), "3600.5");
    EXPECT_EQ(clock.timeOf("2026-10-26"), 23 * 3600 * second);
    EXPECT_EQ(clock.timeOf("10:30"), std::nullopt);
    EXPECT_EQ(clock.timeOf("3600"), std::nullopt);
    EXPECT_EQ(
        vorm::test::thrown<InputError>([&] { clock.timeOf("2026-10-25 02:30"); }).problem().message,
        "clocks in Europe/Berlin show 2026-10-25 02:30:00 twice");
}

TEST(WallClock, ADayEndsWithItsLastNanosecond) {
    const WallClock clock(instant("2026-10-25 00:00:00"), TimeZone::called("Europe/Berlin"));
    EXPECT_EQ(clock.lastTimeOf("2026-10-25"), 23 * 3600 * second - nanosecond) << "of 25 hours";
    EXPECT_EQ(clock.lastTimeOf("2026-10-25 01:00"), -3600 * second);
    EXPECT_EQ(WallClock(instant("2026-12-31")).lastTimeOf("2026-12-31"), oneDay - nanosecond);
    EXPECT_EQ(clock.lastTimeOf("3600"), std::nullopt);
}

RC_GTEST_PROP(WallClock, ReadsWhatItShows, (std::int64_t seconds, std::int64_t fraction)) {
    const bool isLocal = *rc::gen::arbitrary<bool>();
    const ExactTime zero = *rc::gen::inRange<int>(0, 2'000'000'000) * second;
    const WallClock clock(
        zero, isLocal ? std::optional(TimeZone::called("Europe/Berlin")) : std::nullopt);
    const ExactTime time =
        seconds % 1'000'000'000 * second + fraction % 1'000'000'000 * ExactTime(1'000'000'000);
    const std::string shown = clock.dateTimeOf(time, 9);
    RC_PRE(!shown.empty() && shown.find('+', 10) == std::string::npos);
    RC_ASSERT(clock.timeOf(shown) == rounded(time + zero, 9) - zero);
}

// In integers, without division of what is negative.
RC_GTEST_PROP(RoundedTime, IsTheNearestOne, (std::int64_t attoseconds)) {
    const int digits = *rc::gen::inRange(0, 19);
    WideInteger unit = 1;
    for (int i = digits; i < 18; ++i) {
        unit *= 10;
    }
    const ExactTime time(attoseconds);
    const ExactTime near = rounded(time, digits);
    RC_ASSERT(near.attoseconds() % unit == 0);
    const WideInteger off = 2 * (near - time).attoseconds();
    RC_ASSERT(-unit < off && off <= unit);
    RC_ASSERT(digitsOf(near) <= digits && rounded(near, digitsOf(near)) == near);
}

}  // namespace
}  // namespace vorm::evaluation
