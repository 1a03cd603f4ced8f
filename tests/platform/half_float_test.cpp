#include "support/numbers.hpp"

#include <vorm/assessments/platform/half_float.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <type_traits>
#include <vector>

namespace vorm::platform {
namespace {

using test::infinity;
using test::nan;

static_assert(std::is_trivially_copyable_v<HalfFloat> && sizeof(HalfFloat) == 2);
static_assert(!std::is_convertible_v<double, HalfFloat> &&
              !std::is_convertible_v<HalfFloat, double>);

// What a pattern means, read off the definition of binary16.
double decoded(unsigned bits) {
    const int exponent = static_cast<int>(bits >> 10 & 31U);
    const double fraction = bits & 1023U;
    const double magnitude = exponent == 31  ? (fraction == 0 ? infinity : nan)
                             : exponent == 0 ? std::ldexp(fraction, -24)
                                             : std::ldexp(1024 + fraction, exponent - 25);
    return (bits & 0x8000U) != 0 ? -magnitude : magnitude;
}

// Looks the number up among all halves. One more power of two stands for the infinity, so that the
// last tie is like every other.
unsigned nearestBits(double value) {
    static const std::vector<double> halves = [] {
        std::vector<double> all;
        for (unsigned bits = 0; bits < 0x7c00; ++bits) {
            all.push_back(decoded(bits));
        }
        all.push_back(65536);
        return all;
    }();
    const double magnitude = std::min(std::abs(value), 65536.0);
    const auto above = std::lower_bound(halves.begin(), halves.end(), magnitude);
    auto bits = static_cast<unsigned>(above - halves.begin());
    if (*above != magnitude) {
        const double toUpper = *above - magnitude;
        const double toLower = magnitude - *(above - 1);
        if (toLower < toUpper || (toLower == toUpper && bits % 2 == 1)) {
            --bits;
        }
    }
    return std::signbit(value) ? bits | 0x8000U : bits;
}

void expectHalf(HalfFloat actual, double exact) {
    if (std::isnan(exact)) {
        ASSERT_TRUE(isnan(actual));
    } else {
        ASSERT_EQ(actual.bits(), nearestBits(exact)) << std::hexfloat << exact;
    }
}

HalfFloat half(unsigned bits) {
    return HalfFloat::fromBits(static_cast<std::uint16_t>(bits));
}

TEST(HalfFloat, EveryPatternSurvivesTheWayThroughDouble) {
    for (unsigned bits = 0; bits <= 0xffff; ++bits) {
        const auto number = static_cast<double>(half(bits));
        if (std::isnan(decoded(bits))) {
            ASSERT_TRUE(std::isnan(number) && isnan(HalfFloat(number))) << bits;
        } else {
            ASSERT_EQ(number, decoded(bits));
            ASSERT_EQ(HalfFloat(number).bits(), bits);
        }
    }
}

// The doubles next to a tie are nearer to it than any float is: rounding by way of float fails
// here.
TEST(HalfFloat, RoundsOnceAtAndAroundEveryTie) {
    for (unsigned bits = 0; bits < 0x7c00; ++bits) {
        const double upper = bits == 0x7bff ? 65536 : decoded(bits + 1);
        const double tie = (decoded(bits) + upper) / 2;
        for (const double value : {tie, std::nextafter(tie, 0), std::nextafter(tie, infinity)}) {
            expectHalf(HalfFloat(value), value);
            expectHalf(HalfFloat(-value), -value);
        }
    }
}

TEST(HalfFloat, RoundsTheWholeRangeOfDouble) {
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        for (const double significand :
             {1.0, 1 + 0x1p-10, 1 + 0x1p-11, 1.5 + 0x1p-52, 2 - 0x1p-52}) {
            const double value = std::ldexp(significand, exponent);
            expectHalf(HalfFloat(value), value);
        }
    }
    for (const double value : {infinity, -infinity, 0.0, -0.0, nan, 65519.999, 65520.0}) {
        expectHalf(HalfFloat(value), value);
    }
}

TEST(HalfFloat, ArithmeticAndComparisonFollowTheExactNumbers) {
    const std::vector<unsigned> partners = {0,      0x8000, 1,      0x8001, 0x03ff, 0x0400,
                                            0x3555, 0x3c00, 0xbc01, 0x6bff, 0x7800, 0x7bff,
                                            0xfbff, 0x7c00, 0xfc00, 0x7e00};
    for (unsigned bits = 0; bits <= 0xffff; ++bits) {
        const double a = decoded(bits);
        const HalfFloat left = half(bits);
        for (const unsigned other : partners) {
            const double b = decoded(other);
            const HalfFloat right = half(other);
            expectHalf(left + right, a + b);
            expectHalf(left - right, a - b);
            expectHalf(right - left, b - a);
            expectHalf(left * right, a * b);
            ASSERT_EQ(left < right, a < b);
            ASSERT_EQ(left <= right, a <= b);
            ASSERT_EQ(left > right, a > b);
            ASSERT_EQ(left >= right, a >= b);
            ASSERT_EQ(left == right, a == b);
            ASSERT_EQ(left != right, a != b);
        }
    }
}

TEST(HalfFloat, NegationAndAbsoluteValueTouchTheSignOnly) {
    for (unsigned bits = 0; bits <= 0xffff; ++bits) {
        ASSERT_EQ((-half(bits)).bits(), bits < 0x8000 ? bits + 0x8000 : bits - 0x8000);
        ASSERT_EQ(abs(half(bits)).bits(), bits % 0x8000);
    }
}

TEST(HalfFloat, IsZeroByDefaultAndWritesItsNumber) {
    EXPECT_EQ(HalfFloat().bits(), 0);
    std::ostringstream text;
    text << HalfFloat(0.1) << ' ' << HalfFloat(-65504.0) << ' ' << HalfFloat(1e9);
    EXPECT_EQ(text.str(), "0.0999756 -65504 inf");
}

}  // namespace
}  // namespace vorm::platform
