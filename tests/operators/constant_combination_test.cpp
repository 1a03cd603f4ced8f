#include "support/signals.hpp"

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/extremum.hpp>
#include <vorm/assessments/operators/value_arithmetic.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <type_traits>

namespace vorm::test {
namespace {

// The merge of two traces is what a constant has to agree with, to the last bit: printed, a zero
// has its sign.
template <class R, class T, class F>
void checkAgainstMerge(const TimedTrace_T<R>& result, const TimedTrace_T<T>& left,
                       const TimedTrace_T<T>& right, F function) {
    const auto merged = detail::Combination<T, R, F>(left, right, function).run();
    RC_LOG() << testing::PrintToString(left) << '\n' << testing::PrintToString(right) << '\n';
    RC_ASSERT(testing::PrintToString(result) == testing::PrintToString(merged));
    RC_ASSERT(same(result, merged));
}

template <class T>
void checkOperators(const TimedTrace_T<T>& left, const TimedTrace_T<T>& right) {
    using Function = std::function<T(T, T)>;
    checkAgainstMerge(left.template combine<bool>(right, ValueGreater()), left, right,
                      ValueGreater());
    // Tells which operand is which also where the two are equal.
    const auto isNegative = [](const T& a, const T&) { return a < valueOf<T>(0); };
    checkAgainstMerge(left.template combine<bool>(right, isNegative), left, right, isNegative);
    checkAgainstMerge(left.And(right), left, right,
                      Function(support::Extremum<support::KeepSmaller>()));
    if constexpr (!support::isBool<T> && !support::isVerdict<T>) {
        checkAgainstMerge(left.Add(right), left, right, Function(support::sum<T>));
        checkAgainstMerge(left.Substract(right, std::false_type()), left, right,
                          Function(support::difference<T>));
        checkAgainstMerge(left.Substract(right, std::true_type()), left, right,
                          Function(support::differenceFromZeroUp<T>));
        if (left.points.size() == 1 || right.points.size() == 1) {
            checkAgainstMerge(left.Scale(right), left, right, Function(support::product<T>));
        }
    }
}

// A constant, or a trace of one sample that begins, ends or rises anywhere.
template <class T>
TimedTrace_T<T> anyConstant(const Signal& other, bool canBeLinear, bool isOfUnsigned) {
    const int value = *rc::gen::inRange(isOfUnsigned ? 0 : -1, 2);
    TimedTrace_T<T> constant(valueOf<T>(value));
    if (*rc::gen::arbitrary<bool>()) {
        return constant;
    }
    const double begin = other.start();
    constant.points.front().time = *rc::gen::element(-infinity, before(begin), begin, begin + 1);
    constant.lastKnownTime = *rc::gen::element(infinity, other.known, begin + 2, begin, begin - 1);
    if (canBeLinear) {
        constant.interpolation = *rc::gen::element(held, linear);
        constant.points.front().derivative =
            std::isfinite(constant.points.front().time) ? *rc::gen::element(0.0, 0.5) : 0.0;
    }
    return constant;
}

template <class T>
void checkConstants() {
    constexpr bool canBeLinear = IsFloatingPoint<T>::value;
    constexpr bool isOfUnsigned = std::is_unsigned_v<T>;
    const auto method = canBeLinear ? *rc::gen::element(held, linear) : held;
    const Signal signal = anySignal(method, anyTimeBase(), isOfUnsigned ? 0 : -1, 1);
    auto trace = signal.toTrace<T>();
    if constexpr (support::isReal<T> || support::isHalf<T>) {
        const auto size = trace.points.size();
        trace.points[*rc::gen::inRange<std::size_t>(0, size)].value =
            valueOf<T>(*rc::gen::element(nan, infinity, -0.0, 1.0));
    }
    const auto constant = anyConstant<T>(signal, canBeLinear, isOfUnsigned);
    checkOperators(trace, constant);
    checkOperators(constant, trace);
    checkOperators(constant, TimedTrace_T<T>(held, -infinity));
}

// Every value type, so that one is missed neither by a loop nor by what it computes.
RC_GTEST_PROP(ConstantCombination, IsWhatTheMergeOfTwoTracesGives, ()) {
#define VORM_VALUE_TYPE(T) checkConstants<T>();
#include <vorm/assessments/value_types.def>
}

TEST(ConstantCombination, TakesOnlyWhatHasOneValueBesideTheOther) {
    using OfDoubles = detail::ConstantCombination<double, double, std::plus<>>;
    const TimedTrace_T<double> two(2.0);
    const auto steps = trace("0:1 2:3");
    EXPECT_TRUE(OfDoubles::takes(steps, two));
    EXPECT_TRUE(OfDoubles::takes(two, steps));
    EXPECT_TRUE(OfDoubles::takes(trace("-1:5", 9), steps));
    EXPECT_FALSE(OfDoubles::takes(trace("0:5", 9), steps));
    EXPECT_FALSE(OfDoubles::takes(two, two));
    EXPECT_FALSE(OfDoubles::takes(two, trace("")));
    EXPECT_FALSE(OfDoubles::takes(steps, steps));
}

TEST(ConstantCombination, ThrowsAtATimeThatDoesNotIncrease) {
    auto steps = trace("0:1 2:3 4:5");
    steps.points.back().time = 1;
    EXPECT_THROW(steps.Add(TimedTrace_T<double>(1.0)), AssessmentException);
}

}  // namespace
}  // namespace vorm::test
