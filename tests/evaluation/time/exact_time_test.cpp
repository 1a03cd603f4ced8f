#include <vorm/evaluation/time/exact_time.hpp>
#include <vorm/evaluation/time/time_text.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace vorm::evaluation {
namespace {

using Rational = boost::multiprecision::cpp_rational;

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
        {"170141183460469231731", "170141183460469231731"},
        {"170141183460469231732", "none"},
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
    EXPECT_EQ(read("0.1", ExactTime(1'000'000)), "0.0000000000001");
}

Rational tenTo(int exponent) {
    const Rational power =
        pow(boost::multiprecision::cpp_int(10), static_cast<unsigned>(std::abs(exponent)));
    return exponent < 0 ? 1 / power : power;
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
        RC_ASSERT(2 * abs(attoseconds) >= Rational(boost::multiprecision::cpp_int(1) << 128) - 1);
        return;
    }
    const Rational given = Rational(static_cast<std::int64_t>(time->attoseconds() >> 64)) *
                               Rational(boost::multiprecision::cpp_int(1) << 64) +
                           Rational(static_cast<std::uint64_t>(time->attoseconds()));
    RC_ASSERT(2 * abs(given - attoseconds) <= 1);
}

RC_GTEST_PROP(ExactTime, ReadsBackItsTextAndItsSeconds, ()) {
    const auto high = *rc::gen::inRange<std::int64_t>(-1'000'000'000'000, 1'000'000'000'000);
    const auto low = *rc::gen::inRange<std::int64_t>(0, 1'000'000'000'000'000'000);
    const ExactTime time = high * second + ExactTime(low);
    RC_ASSERT(ExactTime::of(time.text(), second) == time);
    // No neighbouring double is nearer.
    const auto distance = [&](double seconds) -> Rational {
        return abs(Rational(seconds) -
                   (Rational(high) + Rational(low) / Rational(1'000'000'000'000'000'000)));
    };
    const double seconds = time.seconds();
    RC_ASSERT(distance(seconds) <= distance(std::nextafter(seconds, 1e300)));
    RC_ASSERT(distance(seconds) <= distance(std::nextafter(seconds, -1e300)));
}

TEST(ExactTime, OfADoubleIsItsShortestDecimal) {
    EXPECT_EQ(ExactTime::ofSeconds(0.3)->text(), "0.3");
    EXPECT_EQ(ExactTime::ofSeconds(-1700000000.1)->text(), "-1700000000.1");
    EXPECT_EQ(ExactTime::ofSeconds(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(ExactTime::ofSeconds(1e300), std::nullopt);
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
    EXPECT_EQ(texts.of(std::numeric_limits<double>::infinity()), "inf");
}

}  // namespace
}  // namespace vorm::evaluation
