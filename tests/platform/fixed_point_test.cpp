#include "support/numbers.hpp"

#include <vorm/assessments/platform/fixed_point.hpp>

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vorm::platform {
namespace {

using boost::multiprecision::cpp_int;
using boost::multiprecision::cpp_rational;
using test::infinity;
using test::nan;

static_assert(!std::is_convertible_v<double, FixedPoint>);

// What a value must be, computed on fractions.

cpp_rational powerOfTwo(int exponent) {
    const cpp_int power = cpp_int(1) << std::abs(exponent);
    return exponent < 0 ? cpp_rational(1, power) : cpp_rational(power);
}

cpp_rational step(const NumericTypeDescriptor& type) {
    return cpp_rational(type.slope()) * powerOfTwo(-type.fractionLength());
}

cpp_rational realValue(const FixedPoint& value) {
    return cpp_rational(cpp_int(value.storedInteger())) * step(value.descriptor()) +
           cpp_rational(value.descriptor().bias());
}

cpp_int floorOf(const cpp_rational& value) {
    const cpp_int quotient = numerator(value) / denominator(value);
    return cpp_rational(quotient) > value ? cpp_int(quotient - 1) : quotient;
}

cpp_int roundedInteger(const cpp_rational& value, RoundingMode mode) {
    const cpp_int below = floorOf(value);
    const cpp_int above = -floorOf(-value);
    const cpp_int towardZero = value < 0 ? above : below;
    const cpp_int awayFromZero = value < 0 ? below : above;
    switch (mode) {
        case RoundingMode::Floor:
            return below;
        case RoundingMode::Ceiling:
            return above;
        case RoundingMode::TowardZero:
            return towardZero;
        case RoundingMode::Nearest:
        case RoundingMode::Convergent:
            break;
    }
    const cpp_rational twice = 2 * value - below - above;
    if (twice != 0) {
        return twice < 0 ? below : above;
    }
    return mode == RoundingMode::Nearest ? awayFromZero : below % 2 == 0 ? below : above;
}

cpp_int expectedStored(const cpp_rational& real, const NumericTypeDescriptor& type,
                       const FixedPointMath& math) {
    const cpp_rational offset = real - cpp_rational(type.bias());
    const cpp_int wanted = roundedInteger(offset / step(type), math.rounding());
    const cpp_int count = cpp_int(1) << type.wordLength();
    const cpp_int least = type.isSigned() ? cpp_int(-(count / 2)) : cpp_int(0);
    const cpp_int largest = least + count - 1;
    if (math.overflow() == OverflowMode::Saturate) {
        return wanted < least ? least : wanted > largest ? largest : wanted;
    }
    return wanted - floorOf(cpp_rational(wanted - least, count)) * count;
}

// Random types and values.

template <class T>
T choice(std::initializer_list<T> values) {
    return *rc::gen::elementOf(std::vector<T>(values));
}

// Every width and sign, the customary binary points beside far ones.
NumericTypeDescriptor anyType() {
    const auto signedness = choice({Signedness::Signed, Signedness::Unsigned});
    const int wordLength =
        *rc::gen::oneOf(rc::gen::inRange(1, 129), rc::gen::element(8, 32, 63, 64, 65, 128));
    const int fractionLength =
        *rc::gen::oneOf(rc::gen::inRange(0, 33), rc::gen::inRange(-200, 200));
    if (*rc::gen::arbitrary<bool>()) {
        return {NumericScaling::BinaryPoint, signedness, wordLength, 1, fractionLength, 0};
    }
    return {NumericScaling::SlopeAndBias,       signedness,     wordLength,
            choice({1.0, 0.1, 3.0, 0x1.8p-40}), fractionLength, choice({0.0, 5.0, -0.3, 1e6})};
}

FixedPointMath anyMath() {
    return {choice({RoundingMode::Nearest, RoundingMode::Convergent, RoundingMode::Floor,
                    RoundingMode::Ceiling, RoundingMode::TowardZero}),
            choice({OverflowMode::Saturate, OverflowMode::Wrap})};
}

// Halves of steps within the range, where ties are, and numbers far outside and far inside.
double anyNumberFor(const NumericTypeDescriptor& type) {
    const int exponent = *rc::gen::oneOf(rc::gen::inRange(-3, type.wordLength() + 2),
                                         rc::gen::element(-300, -1, 0, 60, 300));
    const double significand = *rc::gen::oneOf(
        rc::gen::map(rc::gen::inRange(-16, 17), [](int eighths) { return eighths / 8.0; }),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(),
                     [](std::int64_t bits) { return std::ldexp(static_cast<double>(bits), -63); }));
    const double scale = type.slope() * std::ldexp(1.0, exponent - type.fractionLength());
    return significand * scale + type.bias();
}

// Sums of several doubles fill words wider than a double's significand.
FixedPoint anyValue(const NumericTypeDescriptor& type) {
    const FixedPointMath math = anyMath();
    FixedPoint value(anyNumberFor(type), type, math);
    for (int parts = *rc::gen::inRange(0, 3); parts > 0; --parts) {
        value = value + FixedPoint(anyNumberFor(type), type, math);
    }
    return value;
}

FixedPoint anyValue() {
    return anyValue(anyType());
}

struct Pair {
    FixedPoint left, right;
};

Pair anyPair() {
    const FixedPoint left = anyValue();
    return {left, *rc::gen::arbitrary<bool>() ? anyValue(left.descriptor()) : anyValue()};
}

void requireResult(const FixedPoint& result, const cpp_rational& exact, const FixedPoint& like) {
    RC_ASSERT(result.descriptor() == like.descriptor());
    RC_ASSERT(result.math() == like.math());
    RC_ASSERT(cpp_int(result.storedInteger()) ==
              expectedStored(exact, like.descriptor(), like.math()));
}

RC_GTEST_PROP(FixedPoint, HoldsTheRoundedDouble, ()) {
    const NumericTypeDescriptor type = anyType();
    const FixedPointMath math = anyMath();
    const double number = anyNumberFor(type);
    RC_LOG() << type.text() << ' ' << number;
    const FixedPoint value(number, type, math);
    requireResult(value, cpp_rational(number), value);
    RC_ASSERT(FixedPoint::fromDouble(number, value) == value);
}

RC_GTEST_PROP(FixedPoint, ArithmeticIsExactThenRoundedOnceForTheLeftType, ()) {
    const auto [left, right] = anyPair();
    RC_LOG() << left.descriptor().text() << ' ' << left.text() << ", " << right.descriptor().text()
             << ' ' << right.text();
    const cpp_rational a = realValue(left);
    const cpp_rational b = realValue(right);
    requireResult(left + right, a + b, left);
    requireResult(left - right, a - b, left);
    requireResult(left * right, a * b, left);
    requireResult(-left, -a, left);
    requireResult(abs(left), abs(a), left);
}

RC_GTEST_PROP(FixedPoint, ComparesRealValuesAcrossTypes, ()) {
    const auto [left, right] = anyPair();
    // The same number, or the nearest one that the other type has.
    const FixedPoint near(left.toDouble(), right.descriptor());
    for (const FixedPoint& other : {right, near}) {
        const cpp_rational a = realValue(left);
        const cpp_rational b = realValue(other);
        RC_ASSERT((left < other) == (a < b));
        RC_ASSERT((left <= other) == (a <= b));
        RC_ASSERT((left > other) == (a > b));
        RC_ASSERT((left >= other) == (a >= b));
        RC_ASSERT((left == other) == (a == b));
        RC_ASSERT((left != other) == (a != b));
    }
}

RC_GTEST_PROP(FixedPoint, BecomesTheNearestDouble, ()) {
    const FixedPoint value = anyValue();
    const double nearest = value.toDouble();
    const cpp_rational real = realValue(value);
    const auto distance = [&](double other) {
        return cpp_rational(abs(cpp_rational(other) - real));
    };
    for (const double neighbour :
         {std::nextafter(nearest, infinity), std::nextafter(nearest, -infinity)}) {
        const bool evenAtTie = std::bit_cast<std::uint64_t>(nearest) % 2 == 0;
        RC_ASSERT(distance(nearest) < distance(neighbour) ||
                  (distance(nearest) == distance(neighbour) && evenAtTie));
    }
}

RC_GTEST_PROP(FixedPoint, TextIsTheWholeRealValue, ()) {
    const FixedPoint value = anyValue();
    const std::string text = value.text();
    std::string digits = text;
    cpp_rational scale = 1;
    if (const auto point = text.find('.'); point != std::string::npos) {
        digits.erase(point, 1);
        scale = cpp_rational(1, pow(cpp_int(10), static_cast<unsigned>(text.size() - point - 1)));
        RC_ASSERT(text.back() != '0');
    }
    const bool negative = digits[0] == '-';
    digits.erase(0, digits.find_first_of("123456789"));
    const cpp_rational magnitude = digits.empty() ? cpp_rational(0) : cpp_int(digits) * scale;
    RC_ASSERT((negative ? cpp_rational(-magnitude) : magnitude) == realValue(value));
}

// Examples.

NumericTypeDescriptor binaryPoint(Signedness signedness, int wordLength, int fractionLength) {
    return {NumericScaling::BinaryPoint, signedness, wordLength, 1, fractionLength, 0};
}

const NumericTypeDescriptor s8f1 = binaryPoint(Signedness::Signed, 8, 1);

void expectExact(const FixedPoint& left, const FixedPoint& right) {
    const auto expectStored = [&](const FixedPoint& result, const cpp_rational& exact) {
        EXPECT_EQ(result.storedInteger(),
                  expectedStored(exact, left.descriptor(), left.math()).str())
            << left.descriptor().text() << ' ' << left.text() << ' ' << right.text();
    };
    const cpp_rational a = realValue(left);
    const cpp_rational b = realValue(right);
    expectStored(left + right, a + b);
    expectStored(left - right, a - b);
    expectStored(left * right, a * b);
    expectStored(-left, -a);
}

// The largest stored integers lie on either side of every limit of the integers computed with.
TEST(FixedPoint, StaysExactAtTheEndsOfEveryType) {
    for (int wordLength = 1; wordLength <= 128; ++wordLength) {
        for (const int fractionLength : {-1, 0, wordLength / 2, wordLength, 121}) {
            for (const Signedness signedness : {Signedness::Signed, Signedness::Unsigned}) {
                const auto type = binaryPoint(signedness, wordLength, fractionLength);
                const FixedPoint least(-infinity, type);
                const FixedPoint largest(infinity, type);
                EXPECT_LT(least, largest);
                expectExact(least, least);
                expectExact(least, largest);
                expectExact(largest, least);
                expectExact(largest, largest);
            }
        }
    }
}

// Numbers from far below one step of the type to far above its largest value, a tie among them.
TEST(FixedPoint, RoundsDoublesOfEveryExponent) {
    const FixedPointMath up(RoundingMode::Ceiling, OverflowMode::Wrap);
    const FixedPointMath nearest;
    const FixedPointMath even(RoundingMode::Convergent, OverflowMode::Saturate);
    for (const auto& type : {binaryPoint(Signedness::Signed, 64, 3), s8f1, NumericTypeDescriptor(),
                             binaryPoint(Signedness::Unsigned, 63, -70)}) {
        for (int exponent = -260; exponent <= 200; ++exponent) {
            const double magnitude = std::ldexp(1 + 0x1p-52, exponent);
            for (const auto& [number, math] : {std::pair(magnitude, up),
                                               {magnitude, nearest},
                                               {-magnitude, up},
                                               {-magnitude, nearest},
                                               {std::ldexp(1.25, exponent), even}}) {
                EXPECT_EQ(FixedPoint(number, type, math).storedInteger(),
                          expectedStored(cpp_rational(number), type, math).str())
                    << type.text() << ' ' << number;
            }
        }
    }
}

RC_GTEST_PROP(FixedPoint, ComesBackFromItsStoredInteger, ()) {
    const FixedPoint value = anyValue();
    const auto again =
        FixedPoint::fromStored(value.storedInteger(), value.descriptor(), value.math());
    RC_ASSERT(again.storedInteger() == value.storedInteger());
    RC_ASSERT(realValue(again) == realValue(value));
    RC_ASSERT(again.descriptor() == value.descriptor());
    RC_ASSERT(again.math() == value.math());
}

TEST(FixedPoint, StoresTheIntegersOfItsTypeAndNoOther) {
    for (const int wordLength : {1, 8, 63, 64, 65, 127, 128}) {
        for (const Signedness signedness : {Signedness::Signed, Signedness::Unsigned}) {
            const NumericTypeDescriptor type(NumericScaling::SlopeAndBias, signedness, wordLength,
                                             0.1, 4, -7);
            const cpp_int count = cpp_int(1) << wordLength;
            const cpp_int least = type.isSigned() ? cpp_int(-(count / 2)) : cpp_int(0);
            const cpp_int largest = least + count - 1;
            for (const cpp_int& stored : {least, cpp_int(0), largest}) {
                const auto value = FixedPoint::fromStored(stored.str(), type);
                EXPECT_EQ(value.storedInteger(), stored.str());
                EXPECT_EQ(value.math(), FixedPointMath::global());
            }
            for (const cpp_int& none :
                 {cpp_int(least - 1), cpp_int(largest + 1), cpp_int(largest + count),
                  cpp_int(-count), cpp_int(count << 128)}) {
                EXPECT_THROW(FixedPoint::fromStored(none.str(), type), std::invalid_argument)
                    << none << ' ' << type.text();
            }
        }
    }
    for (const char* zero : {"0", "-0", "0000000000000000000000000000000000000000000000000"}) {
        EXPECT_EQ(FixedPoint::fromStored(zero, s8f1).storedInteger(), "0");
    }
    EXPECT_EQ(FixedPoint::fromStored("-0010", s8f1).text(), "-5");
    for (const char* text : {"", "-", "+1", "1.", "1e1", " 1", "1 ", "--1", "0x1"}) {
        EXPECT_THROW(FixedPoint::fromStored(text, s8f1), std::invalid_argument) << text;
    }
    try {
        FixedPoint::fromStored("128", s8f1);
        ADD_FAILURE();
    } catch (const std::invalid_argument& problem) {
        EXPECT_STREQ(problem.what(), "128 is no stored integer of s8f1.");
    }
}

TEST(FixedPoint, StartsWithTheDefaults) {
    const FixedPoint value(0.1);
    EXPECT_EQ(value.storedInteger(), "6554");
    EXPECT_EQ(value.text(), "0.100006103515625");
    EXPECT_EQ(value.descriptor().text(), "s32f16");
    EXPECT_EQ(value.math(), FixedPointMath::global());
    EXPECT_EQ(value.math(), FixedPointMath(RoundingMode::Nearest, OverflowMode::Saturate));
    EXPECT_EQ(static_cast<double>(FixedPoint::zero()), 0);
    EXPECT_EQ(FixedPoint::zero().descriptor(), NumericTypeDescriptor());
    EXPECT_EQ(FixedPointClassName(), "fixedpoint");
}

TEST(FixedPoint, WritesRealValues) {
    const NumericTypeDescriptor halves(NumericScaling::SlopeAndBias, Signedness::Unsigned, 8, 0.5,
                                       -1, -0.75);
    EXPECT_EQ(FixedPoint(-0.5, s8f1).text(), "-0.5");
    EXPECT_EQ(FixedPoint(3, s8f1).text(), "3");
    EXPECT_EQ(FixedPoint(-0.0, s8f1).text(), "0");
    EXPECT_EQ(FixedPoint(-infinity, halves).text(), "-0.75");
    EXPECT_EQ(FixedPoint(infinity, binaryPoint(Signedness::Unsigned, 128, -1)).text(),
              "680564733841876926926749214863536422910");
}

// The neighbours of these ties differ past the 53rd bit: rounding to a double's significand first
// and to the subnormal or infinite one afterwards would lose them.
TEST(FixedPoint, RoundsOnceToSubnormalAndLargestDoubles) {
    const NumericTypeDescriptor factor = binaryPoint(Signedness::Signed, 64, 61);
    const FixedPoint half(0.5, factor);
    const FixedPoint shade(0x1p-61, factor);
    for (const NumericTypeDescriptor& tiny :
         {binaryPoint(Signedness::Signed, 128, 1200), binaryPoint(Signedness::Signed, 64, 1136)}) {
        const FixedPoint least(0x1p-1074, tiny);
        EXPECT_EQ((least * half).toDouble(), 0);
        EXPECT_EQ((least * (half + shade)).toDouble(), 0x1p-1074);
    }

    const NumericTypeDescriptor huge = binaryPoint(Signedness::Unsigned, 128, -896);
    const double largest = std::numeric_limits<double>::max();
    const FixedPoint tie = FixedPoint(largest, huge) + FixedPoint(0x1p970, huge);
    EXPECT_EQ(tie.toDouble(), infinity);
    EXPECT_EQ((tie - FixedPoint(0x1p896, huge)).toDouble(), largest);
}

TEST(NumericTypeDescriptor, TellsItsTypeAndRange) {
    struct Row {
        NumericTypeDescriptor type;
        std::string text;
        double minimum, maximum;
    };
    const auto scaled = [](double slope, int fractionLength, double bias) {
        return NumericTypeDescriptor(NumericScaling::SlopeAndBias, Signedness::Unsigned, 4, slope,
                                     fractionLength, bias);
    };
    for (const Row& row : std::vector<Row>{
             {{}, "s32f16", -32768, 32768 - 0x1p-16},
             {s8f1, "s8f1", -64, 63.5},
             {binaryPoint(Signedness::Unsigned, 128, 128), "u128f128", 0, 1},
             {binaryPoint(Signedness::Signed, 16, -1100), "s16f-1100", -infinity, infinity},
             {scaled(0.5, 0, 0.25), "u4f0*0.5+0.25", 0.25, 7.75},
             {scaled(3, 1, -1), "u4f1*3-1", -1, 21.5},
             {scaled(1, -2, -0.0), "u4f-2*1+0", 0, 60}}) {
        EXPECT_EQ(row.type.text(), row.text);
        EXPECT_EQ(row.type.minimum(), row.minimum) << row.text;
        EXPECT_EQ(row.type.maximum(), row.maximum) << row.text;
    }
}

void expectRefusal(const std::function<void()>& action, const std::string& fault,
                   const std::string& remedy) {
    try {
        action();
        ADD_FAILURE() << "accepted: " << fault;
    } catch (const std::invalid_argument& refusal) {
        const std::string text = refusal.what();
        EXPECT_NE(text.find(fault), std::string::npos) << text;
        EXPECT_NE(text.find(remedy), std::string::npos) << text;
    }
}

TEST(NumericTypeDescriptor, RefusesWhatIsNoType) {
    struct Row {
        NumericScaling scaling;
        int wordLength;
        double slope;
        int fractionLength;
        double bias;
        std::string fault, remedy;
    };
    using enum NumericScaling;
    for (const Row& row : std::vector<Row>{
             {BinaryPoint, 0, 1, 0, 0, "word length 0", "give 1 to 128"},
             {BinaryPoint, 129, 1, 0, 0, "word length 129", "give 1 to 128"},
             {BinaryPoint, 8, 1, 2049, 0, "fraction length 2049", "give -2048 to 2048"},
             {BinaryPoint, 8, 1, std::numeric_limits<int>::min(), 0, "fraction length -2147483648",
              "give -2048 to 2048"},
             {SlopeAndBias, 8, 0, 0, 0, "slope 0", "above zero"},
             {SlopeAndBias, 8, -0.5, 0, 0, "slope -0.5", "above zero"},
             {SlopeAndBias, 8, nan, 0, 0, "slope nan", "finite"},
             {SlopeAndBias, 8, infinity, 0, 0, "slope inf", "finite"},
             {SlopeAndBias, 8, 1, 0, -infinity, "bias -inf", "finite"},
             {BinaryPoint, 8, 0.5, 0, 0, "slope 0.5", "choose the scaling by slope and bias"},
             {BinaryPoint, 8, 1, 0, 5, "bias 5", "choose the scaling by slope and bias"}}) {
        expectRefusal(
            [&] {
                NumericTypeDescriptor(row.scaling, Signedness::Signed, row.wordLength, row.slope,
                                      row.fractionLength, row.bias);
            },
            row.fault, row.remedy);
    }
}

TEST(FixedPoint, RefusesWhatHasNoValue) {
    const FixedPointMath wrapping(RoundingMode::Nearest, OverflowMode::Wrap);
    expectRefusal([&] { FixedPoint(nan, s8f1); }, "s8f1 has no NaN", "leave the sample out");
    expectRefusal([&] { FixedPoint(nan, s8f1, wrapping); }, "has no NaN", "give a number");
    for (const double value : {infinity, -infinity}) {
        expectRefusal([&] { FixedPoint(value, s8f1, wrapping); }, "cannot wrap an infinity",
                      "give a finite number or saturate");
    }
}

}  // namespace
}  // namespace vorm::platform
