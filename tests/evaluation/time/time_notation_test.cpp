#include "counted_days.hpp"

#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>

namespace vorm::evaluation {
namespace {

using vorm::test::Date;

// As `1625038759.25 UTC`; none where nothing is read.
std::string shown(const std::optional<LocalTime>& time) {
    return time ? time->time.text() + (time->hasOffset ? " UTC" : "") : "none";
}

constexpr std::array<const char*, 5> notationNames{"Iso", "DayFirst", "MonthFirst", "DayMonthName",
                                                   "Clock"};

// All that a text may mean: `DayFirst 0; MonthFirst 0`.
std::string meaningsOf(const std::string& text) {
    std::string meanings;
    for (const TimeNotation notation : notationsOf(text)) {
        meanings += (meanings.empty() ? "" : "; ") +
                    std::string(notationNames.at(static_cast<std::size_t>(notation))) + " " +
                    shown(read(text, notation));
    }
    return meanings.empty() ? "none" : meanings;
}

TEST(TimeNotation, IsToldByATextInEachOfItsWays) {
    // 2021-06-30 is day 18808, which begins at 1625011200; 9:39:19 is 34759 s.
    const std::vector<std::pair<std::string, std::string>> cases{
        {"2021-06-30", "Iso 1625011200"},
        {"2021/6/30 9:39", "Iso 1625045940"},
        {"2021.06.30 09:39:19", "Iso 1625045959"},
        {"2021-06-30t09:39:19,25", "Iso 1625045959.25"},
        {"2021-06-30_09:39:19", "Iso 1625045959"},
        {"2021-06-30, 9:39:19 am", "Iso 1625045959"},
        {"2021-06-30 093919", "Iso 1625045959"},
        {"2021-06-30T09:39:19.25+02:00", "Iso 1625038759.25 UTC"},
        {"2021-06-30T09:39:19z", "Iso 1625045959 UTC"},
        {"2021-06-30 09:39 utc", "Iso 1625045940 UTC"},
        {"2021-06-30 09:39:19 GMT", "Iso 1625045959 UTC"},
        {"2021-06-30 09:39:19 -0330", "Iso 1625058559 UTC"},
        {"2021-06-30 09:39:19+14", "Iso 1624995559 UTC"},
        {"20210630T093919.5Z", "Iso 1625045959.5 UTC"},
        {"20210630_0939", "Iso 1625045940"},
        {"20210630 09:39:19", "Iso 1625045959"},
        {"2021-06-30 24:00:00.000", "Iso 1625097600"},
        {"2016-12-31 23:59:60.5", "Iso 1483228800.5"},
        {"0001-01-01", "Iso -62135596800"},
        {"2000-02-29", "Iso 951782400"},
        {"30.06.2021 09:39:19", "DayFirst 1625045959"},
        {"30/06/2021", "DayFirst 1625011200"},
        {"6/30/2021 9:39 PM", "MonthFirst 1625089140"},
        {"6/30/2021, 9:39:19PM", "MonthFirst 1625089159"},
        {"06/05/2021", "DayFirst 1620259200; MonthFirst 1622851200"},
        {"06-05-2021", "DayFirst 1620259200; MonthFirst 1622851200"},
        {"06.05.2021", "DayFirst 1620259200"},
        {"6/30/2021 12:00 AM", "MonthFirst 1625011200"},
        {"6/30/2021 12:00 PM", "MonthFirst 1625054400"},
        {"30-Jun-2021 09:39:19.25", "DayMonthName 1625045959.25"},
        {"30 JUNE 2021", "DayMonthName 1625011200"},
        {"Jun 30, 2021", "DayMonthName 1625011200"},
        {"june 30 2021, 9:39 am", "DayMonthName 1625045940"},
        {"2021-Jun-30 09:39:19", "DayMonthName 1625045959"},
        {"144:02:18.5", "Clock 518538.5"},
        {"-0:00:03,25", "Clock -3.25"},
        {"+00:00:03", "Clock 3"},
        {"24:00:00", "Clock 86400"},
        {"05:12.3", "Clock 312.3"},
        {"-05:12.0", "Clock -312"},
        {"9:39 PM", "Clock 77940"},
        {"12:00:01.5am", "Clock 1.5"},
        {"2.03:04:05", "Clock 183845"},
        {"-2.03:04:05.5", "Clock -183845.5"},
        {"2 03:04:05", "Clock 183845"},
        {"2d 03:04:05", "Clock 183845"},
        {"1 day, 2:03:04", "Clock 93784"},
        {"3 Days 02:03:04.25", "Clock 266584.25"}};
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(meaningsOf(text), expected) << text;
    }
}

TEST(TimeNotation, IsNoneForANumberAndForWhatIsInDoubt) {
    for (const char* text :
         {"", " ", "0", "20210630", "20210630093919", "1.5", "-3e5", "2021", "2021-06", "2021.06",
          // Parts that there are none of, and too few or too many digits.
          "2021-02-29", "1900-02-29", "2021-13-01", "2021-00-10", "2021-06-31", "0000-01-01",
          "30.13.2021", "31.04.2021", "30-Juin-2021", "30-Ju-2021", "021-06-30", "12021-06-30",
          "2021-006-30", "30.06.21", "06/30/21", "2021-06/30", "2021 06 30", "06.30.2021",
          "30 06 2021", "2021-30-06",
          // Times of day.
          "2021-06-30 ", " 2021-06-30", "2021-06-30T", "2021-06-30 09", "2021-06-30 09:3",
          "2021-06-30 09:60", "2021-06-30 25:00", "2021-06-30 24:00:01", "2021-06-30 24:00:60",
          "2021-06-30 09:39:61", "2021-06-30 09:39:19.", "2021-06-30 09:39.5",
          "2021-06-30 09:39:19.25.5", "2021-06-30 09:39 XM", "2021-06-30 13:39 PM",
          "2021-06-30 0:39 AM", "2021-06-3009:39", "2021-06-30,09:39", "30.06.2021 093919",
          "20210630 ", "20210631T0939", "2021-06-30 09:39:19 PMZ0",
          // Offsets.
          "2021-06-30Z", "2021-06-30 09:39+2", "2021-06-30 09:39+02:", "2021-06-30 09:39+02:60",
          "2021-06-30 09:39+15:00", "2021-06-30 09:39+14:01", "2021-06-30 09:39 CET",
          "2021-06-30 09:39Zulu", "2021-06-30 09:39+02:00:00", "09:39:19Z",
          // `09:39` may be hours and minutes, or minutes and seconds.
          "09:39", "09:60.5", "60:00.5", "00:00:60", "00:60:00", "1:2:3", "9:39.5 PM", "13:00 PM",
          "-9:39 PM", "1 9:39 PM", "2.24:00:00", "2 03:04", "2x03:04:05", "--1:00:00",
          "1234567890:00:00", "210630 09:39:19",
          // The sign may be meant for the days alone.
          "-1 day, 2:03:04", "-2d 03:04:05"}) {
        EXPECT_EQ(meaningsOf(text), "none") << "'" << text << "'";
    }
}

TEST(TimeNotation, RoundsWhatIsFinerThanAnAttosecond) {
    const auto fraction = [](const std::string& digits) {
        return shown(read("-0:00:01." + digits, TimeNotation::Clock));
    };
    EXPECT_EQ(fraction("0000000000000000004"), "-1");
    EXPECT_EQ(fraction("0000000000000000005"), "-1.000000000000000001");
    EXPECT_EQ(fraction("00000000000000000049999999999999999999999999"), "-1");
    EXPECT_EQ(fraction("9999999999999999999999999999999999999999999999"), "-2");
}

const std::array<std::string, 12> months{"January",   "February", "March",    "April",
                                         "May",       "June",     "July",     "August",
                                         "September", "October",  "November", "December"};

std::string padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

struct Spelling {
    std::string text;
    TimeNotation notation;
};

std::vector<Spelling> spellingsOf(const Date& date) {
    const std::string year = padded(date.year, 4);
    const std::string month = std::to_string(date.month);
    const std::string day = std::to_string(date.day);
    const std::string longMonth = padded(date.month, 2);
    const std::string longDay = padded(date.day, 2);
    const std::string& name = months.at(static_cast<std::size_t>(date.month - 1));
    return {{year + "-" + longMonth + "-" + longDay, TimeNotation::Iso},
            {year + "/" + month + "/" + day, TimeNotation::Iso},
            {longDay + "." + longMonth + "." + year, TimeNotation::DayFirst},
            {day + "/" + longMonth + "/" + year, TimeNotation::DayFirst},
            {longMonth + "/" + longDay + "/" + year, TimeNotation::MonthFirst},
            {month + "-" + day + "-" + year, TimeNotation::MonthFirst},
            {day + "-" + name.substr(0, 3) + "-" + year, TimeNotation::DayMonthName},
            {name + " " + day + ", " + year, TimeNotation::DayMonthName}};
}

// Where one text is two days, both are notations of it.
TEST(TimeNotation, ReadsEachDayOfTwoCenturies) {
    const WideInteger dayZero = vorm::test::daysSince1970({1900, 1, 1});
    WideInteger day = dayZero;
    for (Date date{1900, 1, 1}; date.year < 2101; date = vorm::test::dayAfter(date)) {
        const LocalTime expected{day * oneDay};
        for (const Spelling& spelling : spellingsOf(date)) {
            ASSERT_EQ(shown(read(spelling.text, spelling.notation)), shown(expected))
                << spelling.text;
            const bool isInDoubt = date.day <= 12 &&
                                   (spelling.notation == TimeNotation::DayFirst ||
                                    spelling.notation == TimeNotation::MonthFirst) &&
                                   spelling.text.find('.') == std::string::npos;
            ASSERT_EQ(notationsOf(spelling.text).size(), isInDoubt ? 2U : 1U) << spelling.text;
        }
        ++day;
    }
    EXPECT_EQ(day - dayZero, 73'414);
}

// What follows a date, and the attoseconds that it means.
struct WrittenTime {
    std::string text;
    WideInteger attoseconds = 0;
    bool hasOffset = false;
};

// Digits behind a point, and what they mean.
WrittenTime anyFraction() {
    const auto count = *rc::gen::inRange<std::size_t>(0, 19);
    WrittenTime fraction{count == 0 ? "" : *rc::gen::element(".", ",")};
    WideInteger unit = 1'000'000'000'000'000'000;
    for (std::size_t i = 0; i < count; ++i) {
        const int digit = *rc::gen::inRange(0, 10);
        fraction.text += std::to_string(digit);
        unit /= 10;
        fraction.attoseconds += digit * unit;
    }
    return fraction;
}

WrittenTime anyTimeOfDay() {
    const int hour = *rc::gen::inRange(0, 24);
    const int minute = *rc::gen::inRange(0, 60);
    const int second = *rc::gen::inRange(0, 61);
    const bool isAfternoon = hour >= 12;
    const bool isInHalves = *rc::gen::arbitrary<bool>();
    const int shownHour = !isInHalves ? hour : isAfternoon ? hour - 12 : hour;
    const WrittenTime fraction = anyFraction();
    WrittenTime time{*rc::gen::element<std::string>(" ", "T", ", ", "_")};
    time.text += padded(isInHalves && shownHour == 0 ? 12 : shownHour,
                        *rc::gen::inRange<std::size_t>(1, 3)) +
                 ":" + padded(minute, 2) + ":" + padded(second, 2) + fraction.text;
    if (isInHalves) {
        time.text += *rc::gen::element<std::string>("", " ") + (isAfternoon ? "PM" : "am");
    }
    time.attoseconds = ((hour * 60 + minute) * 60 + second) * evaluation::second.attoseconds() +
                       fraction.attoseconds;
    return time;
}

void addAnyOffset(WrittenTime& time) {
    const int minutes = *rc::gen::inRange(-14 * 60, 14 * 60 + 1);
    const int magnitude = std::abs(minutes);
    time.text += *rc::gen::element<std::string>("", " ") + (minutes < 0 ? "-" : "+") +
                 padded(magnitude / 60, 2) + *rc::gen::element<std::string>("", ":") +
                 padded(magnitude % 60, 2);
    time.attoseconds -= minutes * 60 * second.attoseconds();
    time.hasOffset = true;
}

RC_GTEST_PROP(TimeNotation, ReadsAnyDateAndTime, ()) {
    Date date{*rc::gen::inRange(1, 10'000), *rc::gen::inRange(1, 13), 0};
    date.day = *rc::gen::inRange(1, vorm::test::daysOf(date.year, date.month) + 1);
    WrittenTime time = anyTimeOfDay();
    if (*rc::gen::arbitrary<bool>()) {
        addAnyOffset(time);
    }
    const LocalTime expected{
        ExactTime(vorm::test::daysSince1970(date) * oneDay.attoseconds() + time.attoseconds),
        time.hasOffset};
    for (const Spelling& spelling : spellingsOf(date)) {
        const std::string text = spelling.text + time.text;
        RC_LOG() << text << "\n";
        RC_ASSERT(shown(read(text, spelling.notation)) == shown(expected));
    }
}

RC_GTEST_PROP(TimeNotation, ReadsAnyElapsedTime, ()) {
    const int days = *rc::gen::inRange(0, 10'000);
    const int hours = *rc::gen::inRange(0, days == 0 ? 100'000 : 24);
    const int minutes = *rc::gen::inRange(0, 60);
    const int seconds = *rc::gen::inRange(0, 60);
    const WrittenTime fraction = anyFraction();
    const std::string sign = *rc::gen::element<std::string>("", "-", "+");
    const std::string text =
        sign +
        (days == 0 ? "" : std::to_string(days) + *rc::gen::element<std::string>(".", " ", "  ")) +
        padded(hours, *rc::gen::inRange<std::size_t>(1, 3)) + ":" + padded(minutes, 2) + ":" +
        padded(seconds, 2) + fraction.text;
    RC_LOG() << text << "\n";
    const WideInteger whole = ((WideInteger{days} * 24 + hours) * 60 + minutes) * 60 + seconds;
    const ExactTime time = whole * second + ExactTime(fraction.attoseconds);
    RC_ASSERT(meaningsOf(text) == "Clock " + (sign == "-" ? -time : time).text());
}

}  // namespace
}  // namespace vorm::evaluation
