#include "support/numbers.hpp"

#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/exact_time.hpp>
#include <vorm/evaluation/time/time_text.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

using Rational = boost::multiprecision::cpp_rational;

using vorm::test::infinity;

std::string read(const std::string& decimal, ExactTime unit = second) {
    const auto time = ExactTime::of(decimal, unit);
    return time ? time->text() : "none";
}

TEST(ExactTime, ReadsDecimalsOfAnyLength) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"0.3", "0.3"},
        {"-0", "0"},
        {"+5", "5"},
        {"12.", "12"},
        {".5e3", "500"},
        {"4.6408E+4", "46408"},
        {"1700000000.3", "1700000000.3"},
        {"0.5e-18", "0.000000000000000001"},
        {"-0.5e-18", "-0.000000000000000001"},
        {"4.9e-19", "0"},
        {"123456789012345678901234567890e-20", "1234567890.123456789012345679"},
        {"100000000000000000000000000000000000000000000e-30", "100000000000000"},
        {"0.00000000000000000000000000000000000000000000000000001e40", "0.0000000000001"},
        {"21267647932558653966", "21267647932558653966"},
        {"19876543210123456789.876543210123456789", "19876543210123456789.876543210123456789"},
        {"21267647932558653967", "none"},
        {"1e999999999999", "none"},
        {"1e-999999999999", "0"}};
    for (const auto& [decimal, expected] : cases) {
        EXPECT_EQ(read(decimal), expected) << decimal;
    }
    for (const char* none :
         {"", "-", ".", "e5", "1e", "1e+", "1e+-2", "0x1", "1 ", "nan", "1.2.3", "--1", "1,5"}) {
        EXPECT_EQ(read(none), "none") << none;
    }
    EXPECT_EQ(read("1.5", 60 * second), "90");
    EXPECT_EQ(read("4.9999999999999999999999999999999999999", oneDay), "432000");
    EXPECT_EQ(read("0.1", ExactTime(1'000'000)), "0.0000000000001");
}

Rational tenTo(int exponent) {
    const Rational power =
        pow(boost::multiprecision::cpp_int(10), static_cast<unsigned>(std::abs(exponent)));
    return exponent < 0 ? 1 / power : power;
}

Rational rational(WideInteger number) {
    return Rational(static_cast<std::int64_t>(number >> 64)) *
               Rational(boost::multiprecision::cpp_int(1) << 64) +
           Rational(static_cast<std::uint64_t>(number));
}

RC_GTEST_PROP(ExactTime, IsTheNearestToTheDecimal, ()) {
    const auto digits = *rc::gen::arbitrary<std::int64_t>();
    const int exponent = *rc::gen::inRange(-40, 10);
    const TimeUnit unit = *rc::gen::elementOf(timeUnits);
    const auto time =
        ExactTime::of(std::to_string(digits) + "e" + std::to_string(exponent), unit.length);
    const Rational one(unit.length.text().find('.') == std::string::npos
                           ? Rational(unit.length.text())
                           : Rational(static_cast<std::int64_t>(unit.length.attoseconds())) *
                                 tenTo(-18));
    const Rational attoseconds = digits * one * tenTo(exponent + 18);
    if (!time) {
        RC_ASSERT(2 * abs(attoseconds) >= Rational(boost::multiprecision::cpp_int(1) << 125) - 1);
        return;
    }
    RC_ASSERT(2 * abs(rational(time->attoseconds()) - attoseconds) <= 1);
}

// No neighbouring double is nearer.
bool isNearest(double number, const Rational& exact) {
    const auto distance = [&](double other) -> Rational { return abs(Rational(other) - exact); };
    return distance(number) <= distance(std::nextafter(number, infinity)) &&
           distance(number) <= distance(std::nextafter(number, -infinity));
}

// Of times that are, or are nearly, a double or halfway between two.
RC_GTEST_PROP(ExactTime, IsTheNearestDoubleOfUnits, ()) {
    const ExactTime unit = timeUnits[*rc::gen::inRange<std::size_t>(0, 6)].length;
    const int bits = *rc::gen::elementOf(std::vector<int>{10, 53, 54, 54});
    const std::int64_t highest = std::int64_t{1} << (bits - 1);
    const std::int64_t mantissa = *rc::gen::inRange<std::int64_t>(0, highest) | highest | 1;
    const int exponent = *rc::gen::inRange(-70, 20);
    WideInteger attoseconds = mantissa * unit.attoseconds();
    for (int i = 0; i < std::abs(exponent); ++i) {
        RC_PRE(attoseconds < WideInteger{1} << 125);
        attoseconds = exponent < 0 ? attoseconds / 2 : attoseconds * 2;
    }
    attoseconds += *rc::gen::inRange(-2, 3);
    for (const WideInteger signedly : {attoseconds, -attoseconds}) {
        RC_ASSERT(isNearest(ExactTime(signedly).in(unit),
                            rational(signedly) / rational(unit.attoseconds())));
    }
}

TEST(ExactTime, IsRoundedOnceHoweverLongItIs) {
    const auto time = [](const char* decimal) { return *ExactTime::of(decimal, second); };
    EXPECT_EQ(time("9007199254740993").seconds(), 9007199254740992.0);
    EXPECT_EQ(time("9007199254740993.000000000000000001").seconds(), 9007199254740994.0);
    EXPECT_EQ(time("200000000000.0000000001").in(nanosecond), 2e20);
}

RC_GTEST_PROP(ExactTime, ReadsBackItsTextsAndItsSeconds, ()) {
    const auto high = *rc::gen::inRange<std::int64_t>(-1'000'000'000'000, 1'000'000'000'000);
    const auto low = *rc::gen::inRange<std::int64_t>(0, 1'000'000'000'000'000'000);
    const ExactTime time = high * second + ExactTime(low);
    RC_ASSERT(ExactTime::of(time.text(), second) == time);
    const std::string text = timeWithUnit(time);
    const std::size_t space = std::min(text.find(' '), text.size());
    const auto unit = timeUnitOf(space < text.size() ? text.substr(space + 1) : "s");
    RC_ASSERT(ExactTime::of(text.substr(0, space), unit.value().length) == time);
    RC_ASSERT(isNearest(time.seconds(),
                        Rational(high) + Rational(low) / Rational(1'000'000'000'000'000'000)));
}

TEST(ExactTime, OfADoubleIsItsShortestDecimal) {
    EXPECT_EQ(ExactTime::ofSeconds(0.3)->text(), "0.3");
    EXPECT_EQ(ExactTime::ofSeconds(-1700000000.1)->text(), "-1700000000.1");
    EXPECT_EQ(ExactTime::ofSeconds(infinity), std::nullopt);
    EXPECT_EQ(ExactTime::ofSeconds(1e300), std::nullopt);
    // Eight times what is read still fit.
    const ExactTime longest = ExactTime::ofSeconds(2e19).value();
    EXPECT_EQ((8 * longest).text(), "160000000000000000000");
    EXPECT_EQ(ExactTime::ofSeconds(2.2e19), std::nullopt);
}

// Times of few digits are told without a text, the same as with one.
RC_GTEST_PROP(ExactTimeProperty, OfADoubleIsThatOfItsText, ()) {
    const auto digits =
        *rc::gen::inRange<std::int64_t>(-2'000'000'000'000'000, 2'000'000'000'000'000);
    const double scale = *rc::gen::element(1.0, 1e1, 1e3, 1e4, 1e6, 1e9, 1e10, 1e13, 3.0);
    double seconds = static_cast<double>(digits) / scale;
    seconds = *rc::gen::element(seconds, std::nextafter(seconds, infinity),
                                std::nextafter(seconds, -infinity));
    RC_ASSERT(ExactTime::ofSeconds(seconds) == ExactTime::of(shortestNumber(seconds), second));
}

TEST(TimeText, TakesTheUnitThatIsShortest) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"0", "0"},        {"0.1", "100 ms"},     {"64800", "18 h"},   {"1.5", "1.5 s"},
        {"90", "90 s"},    {"300", "5 min"},      {"-0.002", "-2 ms"}, {"0.00007", "70 us"},
        {"1e-15", "1 fs"}, {"1e-18", "0.001 fs"}, {"5400", "90 min"},  {"100", "100 s"}};
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(timeWithUnit(*ExactTime::of(seconds, second)), expected);
    }
}

TEST(TimeText, PrefersWhatWasWritten) {
    TimeTexts texts(nanosecond);
    texts.add(1e8, "0.1");
    texts.add(1e8, "100 ms");
    EXPECT_EQ(texts.of(1e8), "0.1");
    EXPECT_EQ(texts.of(2e8), "200 ms");
    EXPECT_EQ(texts.of(infinity), "inf");
}

}  // namespace
}  // namespace vorm::evaluation
