#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace vorm::test {
namespace {

template <class T>
T only(const TimedTrace_T<T>& result) {
    return result.points.at(0).value;
}

template <class T>
TimedTrace_T<T> one(double value) {
    return TimedTrace_T<T>(valueOf<T>(value));
}

TEST(Arithmetic, IntegersWrapAndUnsignedDifferencesStopAtZero) {
    EXPECT_EQ(only(one<std::int8_t>(3).Substract(one<std::int8_t>(5), std::true_type())), 0);
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    const TimedTrace_T<std::int64_t> lowest(least);
    EXPECT_EQ(only(lowest.Substract(one<std::int64_t>(1))),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(only(lowest.Scale(one<std::int64_t>(-1))), least);
    EXPECT_EQ(only(lowest.Abs()), least);
    EXPECT_EQ(only(lowest.UMinus()), least);
    EXPECT_EQ(only(one<std::int8_t>(-128).Abs()), -128);
    EXPECT_EQ(only(one<std::uint8_t>(200).Abs()), 200);
}

TEST(Abs, BendsWhereALineCrossesZero) {
    EXPECT_TRUE(same(trace(linear, "0:-2 4:2").Abs(), trace(linear, "0:2 2:0 4:2")));
    EXPECT_FALSE(std::signbit(only(one<double>(-0.0).Abs())));
    EXPECT_TRUE(std::isnan(only(one<double>(nan).Abs())));
}

TEST(Negation, FlipsValuesAndSlopes) {
    const auto line = trace(linear, "0:1 2:-5", 3);
    const auto negated = line.UMinus();
    EXPECT_TRUE(same(negated, trace(linear, "0:-1 2:5", 3)));
    EXPECT_TRUE(same(negated.UMinus(), line));
}

TEST(Negation, OfFixedPointFollowsItsSaturation) {
    using namespace platform;
    using T = ValueType<FixedPoint>;
    const NumericTypeDescriptor byte(NumericScaling::BinaryPoint, Signedness::Unsigned, 8, 1, 0, 0);
    TimedTrace_T<T> line(linear, -infinity);
    line.push_back({0, T(FixedPoint(10, byte))});
    line.push_back({10, T(FixedPoint(0, byte))});
    EXPECT_EQ(line.UMinus().valueAt(5)->get().toDouble(), 0);
    const auto clamped = line.Substract(line.Shift(-10, true), std::true_type());
    EXPECT_EQ(only(clamped).get().descriptor(), byte);
}

TEST(Scale, NeedsAConstantOnOneSide) {
    const auto steps = trace("0:1 2:3", 5);
    EXPECT_TRUE(same(steps.Scale(one<double>(2)), trace("0:2 2:6", 5)));
    EXPECT_TRUE(same(one<double>(2).Scale(steps), trace("0:2 2:6", 5)));
    // A constant that begins at a time does so in the product too.
    EXPECT_TRUE(same(steps.Scale(trace("1:2", 9)), trace("1:2 2:6", 5)));
    const auto failure = thrown<AssessmentInternalException>([&] { steps.Scale(steps); });
    EXPECT_NE(std::string(failure.what()).find("Only multiplication by constant is supported."),
              std::string::npos);
}

TEST(Scale, TakesAnyTraceOfOneSampleForAConstant) {
    const auto steps = trace("0:1 2:3", 5);
    auto cutLine = trace(linear, "0:1 4:5");
    cutLine.popBackAfter(3);
    // Exact at the samples and at the end of what is known.
    const auto expected = trace(linear, "0:1 2:9 3:12");
    EXPECT_TRUE(same(steps.Scale(cutLine), expected));
    EXPECT_TRUE(same(cutLine.Scale(steps), expected));
}

template <class T>
void expectNanStaysNan() {
    const auto unknown = one<T>(nan);
    const auto some = one<T>(1);
    for (const auto& result :
         {unknown.And(some), some.And(unknown), unknown.Or(some), some.Or(unknown)}) {
        EXPECT_TRUE(support::isNan(only(result)));
    }
}

TEST(AndOr, NanStaysNan) {
    expectNanStaysNan<double>();
    expectNanStaysNan<float>();
    expectNanStaysNan<HalfFloat>();
}

TEST(If, PassesTheGuardedVerdictOn) {
    const auto condition = trace<Verdict>("0:0 1:1 2:254", 9);
    const auto guarded = trace<Verdict>("0:1 0.5:0 1.5:1", 9);
    EXPECT_TRUE(same(condition.If(guarded), trace<Verdict>("0:1 0.5:0 1:254", 9)));
    EXPECT_THROW(trace<bool>("0:1").If(trace<bool>("0:1")), AssessmentTypeException);
}

TEST(Refusals, NameTheType) {
    const auto flag = trace<bool>("0:1");
    const auto refuse = [](const auto& operation, const std::string& names) {
        try {
            operation();
            ADD_FAILURE() << "not refused: " << names;
        } catch (const AssessmentBinaryTypeException& failure) {
            EXPECT_EQ(failure.getLHSTypeName() + " " + failure.getRHSTypeName(), names);
        } catch (const AssessmentTypeException& failure) {
            EXPECT_EQ(failure.getRHSTypeName(), names);
        }
    };
    refuse([&] { return flag.Add(flag); }, "logical logical");
    refuse([&] { return flag.Substract(flag); }, "logical logical");
    refuse([&] { return flag.Scale(flag); }, "logical logical");
    refuse([&] { return flag.UMinus(); }, "logical");
    refuse([&] { return trace<std::uint16_t>("0:1").UMinus(); }, "uint16");
    refuse([&] { return trace<std::uint16_t>("0:1").UMinus(std::true_type()); }, "uint16");

    const auto number = trace<std::int8_t>("0:1");
    auto gear = number;
    gear.enumTypeName = "Gear";
    refuse([&] { return gear.Add(number); }, "Gear int8");
    refuse([&] { return number.Substract(gear); }, "int8 Gear");
    refuse([&] { return gear.Substract(gear, std::true_type()); }, "Gear Gear");
    refuse([&] { return gear.Scale(gear); }, "Gear Gear");
    refuse([&] { return gear.And(gear); }, "Gear Gear");
    refuse([&] { return number.Or(gear); }, "int8 Gear");
    refuse([&] { return gear.Abs(); }, "Gear");
    refuse([&] { return gear.UMinus(); }, "Gear");

    const auto enumerated = [](auto typed) {
        typed.enumTypeName = "Gear";
        return typed;
    };
    refuse([&] { return enumerated(flag).UMinus(); }, "logical");
    refuse([&] { return enumerated(trace<std::uint16_t>("0:1")).UMinus(); }, "Gear");
}

template <class T>
void expectNegationToKeepTheEnumeration() {
    auto gear = trace<T>(linear, "0:1 2:-5", 3);
    gear.enumTypeName = "Gear";
    auto expected = trace<T>(linear, "0:-1 2:5", 3);
    expected.enumTypeName = "Gear";
    EXPECT_TRUE(same(gear.UMinus(), expected));
}

TEST(Negation, OfEnumeratedSpecialValuesIsThatOfTheValues) {
    expectNegationToKeepTheEnumeration<HalfFloat>();
    expectNegationToKeepTheEnumeration<ValueType<FixedPoint>>();
    auto verdicts = trace<Verdict>("0:1");
    verdicts.enumTypeName = "Gear";
    EXPECT_THROW(verdicts.UMinus(), std::runtime_error);
}

__extension__ using Wide = __int128;

template <class T>
void checkWrapping(T a, T b) {
    const Wide wideA = a;
    const Wide wideB = b;
    const TimedTrace_T<T> left(a);
    const TimedTrace_T<T> right(b);
    RC_ASSERT(only(left.Add(right)) == static_cast<T>(wideA + wideB));
    RC_ASSERT(only(left.Substract(right, std::false_type())) == static_cast<T>(wideA - wideB));
    RC_ASSERT(only(left.Substract(right)) ==
              (std::is_unsigned_v<T> && a < b ? T{0} : static_cast<T>(wideA - wideB)));
    RC_ASSERT(only(left.Scale(right)) == static_cast<T>(wideA * wideB));
}

RC_GTEST_PROP(Arithmetic, WrapsLikeWideIntegersCutToTheType,
              (std::int8_t a, std::int8_t b, std::uint16_t c, std::uint16_t d, std::int64_t e,
               std::int64_t f)) {
    checkWrapping(a, b);
    checkWrapping(c, d);
    checkWrapping(e, f);
}

}  // namespace
}  // namespace vorm::test
