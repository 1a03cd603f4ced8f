#include <vorm/evaluation/time/counted_time.hpp>
#include <vorm/evaluation/time/time_notation.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

TEST(CountedTime, IsThatOfASpreadsheetsSerialDate) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"25569", "1970-01-01 00:00:00"},
        {"43374.42", "2018-10-01 10:04:48"},
        {"61", "1900-03-01 00:00:00"},
        {"25568.75", "1969-12-31 18:00:00"}};
    for (const auto& [serial, expected] : cases) {
        const auto time = timeOfSerialDate(serial);
        const auto written = read(expected, TimeNotation::Iso);
        ASSERT_TRUE(time && written) << serial;
        EXPECT_EQ(time->text(), written->time.text()) << serial;
    }
    EXPECT_EQ(timeOfSerialDate("25569.000000000000000000001")->text(), "0.000000000000000086");
    for (const char* none : {"", "2021-06-30", "1e30", "nan"}) {
        EXPECT_EQ(timeOfSerialDate(none), std::nullopt) << none;
    }
}

TEST(CountedTime, TellsItsUnitByItsMagnitude) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"999999999.999999999", "none"},
        {"1000000000", "s"},
        {"9999999999.999999999999999999", "s"},
        {"10000000000", "none"},
        {"999999999999.9", "none"},
        {"1000000000000", "ms"},
        {"10000000000000", "none"},
        {"1000000000000000", "us"},
        {"1700000000123456", "us"},
        {"10000000000000000", "none"},
        {"999999999999999999", "none"},
        {"1700000000123456789", "ns"},
        {"9999999999999999999", "ns"},
        {"10000000000000000000", "none"},
        {"0", "none"},
        {"-1700000000", "none"}};
    for (const auto& [number, expected] : cases) {
        const auto unit = epochUnitOf(ExactTime::of(number, second).value());
        EXPECT_EQ(unit ? unit->name : "none", expected) << number;
    }
}

}  // namespace
}  // namespace vorm::evaluation
