#include "vorm/assessments/facade/timed_trace.hpp"

#include "support/thrown.hpp"
#include "support/traces.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vorm::test {
namespace {

// What all fourteen value types have in common.
using AllTypes = boost::mp11::mp_rename<ValueTypes, testing::Types>;
template <class T>
class EveryType : public testing::Test {};
TYPED_TEST_SUITE(EveryType, AllTypes);

template <class T>
constexpr bool isVerdict = std::is_same_v<T, Verdict>;

// 0 at 0, 1 at 2, 0 at 5, known up to 8.
template <class T>
TimedTrace pulse() {
    return trace<T>("0:0 2:1 5:0", 8);
}

template <class T>
std::string name() {
    return AssessmentTypeException::getTypeName(AssessmentTypeException::typeTAG<T>());
}

template <class Failure, class Operation>
std::string message(const Operation& operation) {
    return thrown<Failure>(operation).what();
}

TYPED_TEST(EveryType, TellsWhatItHolds) {
    using T = TypeParam;
    const TimedTrace held = pulse<T>();
    EXPECT_EQ(held.which(), int{valueTypeIndex<T>});
    EXPECT_EQ(held.errorType().which(), held.which());
    EXPECT_EQ(held.getStartTime(), 0);
    EXPECT_EQ(held.getLastKnownTime(), 8);
    EXPECT_EQ(held.getInterpolation(), INTERPOLATION_METHOD::ZOH);
    EXPECT_FALSE(held.isConstantScalar());
    EXPECT_TRUE(same(held.get<T>(), trace<T>("0:0 2:1 5:0", 8)));
    EXPECT_EQ(held.visit([](const auto& typed) { return typed.points.size(); }), 3u);

    const TimedTrace empty(trace<T>(linear, "", 3));
    EXPECT_EQ(empty.getStartTime(), -infinity);
    EXPECT_FALSE(empty.isConstantScalar());
    EXPECT_EQ(empty.getInterpolation(), INTERPOLATION_METHOD::LINEAR);
    const TimedTrace constant((TimedTrace_T<T>(valueOf<T>(1))));
    EXPECT_EQ(constant.getStartTime(), -infinity);
    EXPECT_EQ(constant.getLastKnownTime(), infinity);
    EXPECT_TRUE(constant.isConstantScalar());
    EXPECT_EQ(constant.getInterpolation(), INTERPOLATION_METHOD::ZOH);
    EXPECT_TRUE(TimedTrace(trace<T>("3:1")).isConstantScalar());
}

TYPED_TEST(EveryType, MovesShiftsAndCuts) {
    using T = TypeParam;
    const TimedTrace held = pulse<T>();
    EXPECT_TRUE(same(held.Shift(2).get<T>(), trace<T>("0:1 3:0", 6)));
    EXPECT_TRUE(same(held.Shift(-2).get<T>(), trace<T>("2:0 4:1 7:0", 10)));
    EXPECT_EQ(held.EpsilonShift(-1).get<T>().points[1].time, std::nextafter(2, 0));
    EXPECT_TRUE(same(held.extractWindow(1, 4, 0).get<T>(), trace<T>("1:0 2:1", 4)));
    EXPECT_TRUE(same(held.get<T>(), pulse<T>().template get<T>()));
    EXPECT_THROW(held.Slope(), AssessmentInternalException);
    EXPECT_EQ(TimedTrace(trace<T>(linear, "0:1")).Slope().which(), 0);
}

TYPED_TEST(EveryType, LooksAheadThroughWindows) {
    using T = TypeParam;
    const TimedTrace held = pulse<T>();
    EXPECT_TRUE(same(held.Eventually(0, 1).get<T>(), trace<T>("0:0 1:1 5:0", 7)));
    EXPECT_TRUE(same(held.Globally(0, 1).get<T>(), trace<T>("0:0 2:1 4:0", 7)));
    EXPECT_TRUE(same(held.Eventually(1, 2).get<T>(), trace<T>("0:1 4:0", 6)));
    EXPECT_TRUE(
        same(held.Until(0, 1, held).get<T>(), held.Eventually(0, 1).And(held).template get<T>()));
}

TYPED_TEST(EveryType, CombinesPointwise) {
    using T = TypeParam;
    const TimedTrace a = pulse<T>();
    const TimedTrace b(trace<T>("1:1 3:0", 9));
    EXPECT_TRUE(same(a.And(b).template get<T>(), trace<T>("1:0 2:1 3:0", 8)));
    EXPECT_TRUE(same(a.Or(b).template get<T>(), trace<T>("1:1 5:0", 8)));
    if constexpr (std::is_same_v<T, bool>) {
        for (const auto& refused : {&TimedTrace::Plus, &TimedTrace::Minus, &TimedTrace::Scale}) {
            EXPECT_THROW((a.*refused)(b), AssessmentBinaryTypeException);
        }
    } else if constexpr (isVerdict<T>) {
        const auto constant = TimedTrace(TimedTrace_T<T>(valueOf<T>(1)));
        EXPECT_EQ(message<std::runtime_error>([&] { a.Plus(b); }),
                  "Unsupported operator '+' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([&] { a.Minus(b); }),
                  "Unsupported operator '-' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([&] { a.Scale(constant); }),
                  "Unsupported operator '*' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([] { ZERO<Verdict>(); }),
                  "Unsupported operator 'ZERO' for type resultType_t");
    } else {
        const TimedTrace two((TimedTrace_T<T>(valueOf<T>(2))));
        EXPECT_TRUE(same(a.Plus(b).template get<T>(), trace<T>("1:1 2:2 3:1 5:0", 8)));
        EXPECT_TRUE(same(a.Minus(a).template get<T>(), trace<T>("0:0", 8)));
        EXPECT_TRUE(same(a.Scale(two).template get<T>(), trace<T>("0:0 2:2 5:0", 8)));
    }
}

TYPED_TEST(EveryType, NegatesOrRefusesTo) {
    using T = TypeParam;
    const TimedTrace a = pulse<T>();
    if constexpr (std::is_unsigned_v<T>) {
        EXPECT_NE(message<AssessmentTypeException>([&] { a.UnaryMinus(); }).find(name<T>()),
                  std::string::npos);
    } else if constexpr (isVerdict<T>) {
        EXPECT_EQ(message<std::runtime_error>([&] { a.UnaryMinus(); }),
                  "Unsupported operator '-' for type resultType_t");
    } else {
        EXPECT_TRUE(same(a.UnaryMinus().template get<T>(), trace<T>("0:0 2:-1 5:0", 8)));
        EXPECT_TRUE(same(a.UnaryMinus().Abs().template get<T>(), trace<T>("0:0 2:1 5:0", 8)));
    }
    if constexpr (isVerdict<T>) {
        EXPECT_NE(message<AssessmentTypeException>([&] { a.Abs(); }).find("resultType_t"),
                  std::string::npos);
    } else {
        EXPECT_TRUE(same(a.Abs().template get<T>(), trace<T>("0:0 2:1 5:0", 8)));
    }
}

TYPED_TEST(EveryType, ListsFailuresOrRefusesTo) {
    using T = TypeParam;
    const TimedTrace a = pulse<T>();
    if constexpr (std::is_arithmetic_v<T>) {
        EXPECT_EQ(a.getErrorIntervalList(), (std::list<VORM_Interval>{{0, 2}, {5, 8}}));
        EXPECT_EQ(a.getErrorTimeList(), (std::vector<double>{0, 5}));
    } else {
        EXPECT_NE(
            message<AssessmentTypeException>([&] { a.getErrorIntervalList(); }).find(name<T>()),
            std::string::npos);
        EXPECT_THROW(a.getErrorTimeList(), AssessmentTypeException);
    }
}

TYPED_TEST(EveryType, TurnsAndConvertsToVerdictsOrRefusesTo) {
    using T = TypeParam;
    const TimedTrace a = pulse<T>();
    if constexpr (std::is_same_v<T, bool>) {
        EXPECT_TRUE(same(a.Not().get<bool>(), trace<bool>("0:1 2:0 5:1", 8)));
        EXPECT_TRUE(same(a.ConvertToResult().get<Verdict>(), trace<Verdict>("0:1 2:0 5:1", 8)));
        EXPECT_EQ(a.ConvertToResult(1, 9).which(), 13);
    } else {
        EXPECT_THROW(a.Not(), AssessmentTypeException);
        EXPECT_NE(
            message<AssessmentTypeException>([&] { a.ConvertToResult(0, 1); }).find(name<T>()),
            std::string::npos);
        if constexpr (!isVerdict<T>) {
            EXPECT_THROW(a.ConvertToResult(), AssessmentTypeException);
        }
    }
    if constexpr (isVerdict<T>) {
        EXPECT_TRUE(same(a.ConvertToResult().template get<Verdict>(), a.template get<Verdict>()));
        EXPECT_TRUE(same(a.If(a).template get<T>(), trace<T>("0:0 2:254 5:0", 8)));
    } else {
        EXPECT_THROW(a.If(a), AssessmentTypeException);
    }
}

// A constant of each value type, with the type's name.
std::vector<std::pair<std::string, TimedTrace>> constants() {
    std::vector<std::pair<std::string, TimedTrace>> all;
    boost::mp11::mp_for_each<boost::mp11::mp_transform<boost::mp11::mp_identity, ValueTypes>>(
        [&](auto type) {
            using T = typename decltype(type)::type;
            all.emplace_back(name<T>(), TimedTrace_T<T>(valueOf<T>(1)));
        });
    return all;
}

void expectRefused(const std::string& left, const std::string& right,
                   const std::function<TimedTrace()>& operation) {
    const auto failure = thrown<AssessmentBinaryTypeException>(operation);
    EXPECT_EQ(failure.getLHSTypeName(), left);
    EXPECT_EQ(failure.getRHSTypeName(), right);
    EXPECT_EQ(failure.getCause(), nullptr);
}

TYPED_TEST(EveryType, TakesNoOtherTypeForGranted) {
    using T = TypeParam;
    const TimedTrace a = pulse<T>();
    // A constant gets no special treatment.
    for (const auto& [other, b] : constants()) {
        if (other == name<T>()) {
            continue;
        }
        EXPECT_THROW(b.template get<T>(), boost::bad_get);
        for (const auto& binary :
             {&TimedTrace::Plus, &TimedTrace::Minus, &TimedTrace::Scale, &TimedTrace::And,
              &TimedTrace::Or, &TimedTrace::If, &TimedTrace::Greater, &TimedTrace::GreaterEqual,
              &TimedTrace::Less, &TimedTrace::LessEqual, &TimedTrace::Equal,
              &TimedTrace::NotEqual}) {
            expectRefused(name<T>(), other, [&, &b = b] { return (a.*binary)(b); });
        }
        expectRefused(name<T>(), other, [&, &b = b] { return a.Until(nan, -1, b); });
    }
}

TEST(Facade, TakesATypedTraceOverWithoutCopyingItsSamples) {
    auto typed = trace("0:1 1:2");
    const auto* sample = &typed.points[1];
    const TimedTrace erased(std::move(typed));
    EXPECT_EQ(&erased.get<double>().points[1], sample);
}

TEST(Facade, InterpolatesTheSpecialNumbers) {
    const TimedTrace half(trace<HalfFloat>(linear, "0:0 4:2"));
    EXPECT_EQ(half.get<HalfFloat>().valueAt(1), HalfFloat(0.5));
    EXPECT_EQ(half.Slope().get<double>().points[0].value, 0.5);
    const TimedTrace fixedPoint(trace<ValueType<FixedPoint>>(linear, "0:-2 4:2"));
    EXPECT_EQ(fixedPoint.get<ValueType<FixedPoint>>().valueAt(1)->get().text(), "-1");
    EXPECT_TRUE(same(fixedPoint.Abs().get<ValueType<FixedPoint>>(),
                     trace<ValueType<FixedPoint>>(linear, "0:2 2:0 4:2")));
    EXPECT_TRUE(
        same(half.Eventually(0, 1).get<HalfFloat>(), trace<HalfFloat>(linear, "0:0.5 3:2")));
}

}  // namespace
}  // namespace vorm::test
