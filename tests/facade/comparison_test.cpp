#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/facade/timed_trace.hpp>

#include <boost/mp11/algorithm.hpp>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace vorm::test {
namespace {

struct Comparison {
    std::string name;
    TimedTrace (TimedTrace::*member)(const TimedTrace&) const;
    std::function<bool(double, double)> holds;
};

const std::vector<Comparison> comparisons{
    {"Greater", &TimedTrace::Greater, [](double a, double b) { return a > b; }},
    {"GreaterEqual", &TimedTrace::GreaterEqual, [](double a, double b) { return a >= b; }},
    {"Less", &TimedTrace::Less, [](double a, double b) { return a < b; }},
    {"LessEqual", &TimedTrace::LessEqual, [](double a, double b) { return a <= b; }},
    {"Equal", &TimedTrace::Equal, [](double a, double b) { return a == b; }},
    {"NotEqual", &TimedTrace::NotEqual, [](double a, double b) { return a != b; }},
};

TEST(FacadeComparison, OrdersTheValuesOfEveryType) {
    boost::mp11::mp_for_each<boost::mp11::mp_transform<boost::mp11::mp_identity, ValueTypes>>(
        [](auto type) {
            using T = typename decltype(type)::type;
            // Less, equal and greater in turn.
            const TimedTrace left(trace<T>("0:0 1:1 2:1", 3));
            const TimedTrace right(trace<T>("0:1 2:0", 4));
            for (const Comparison& comparison : comparisons) {
                const auto result = (left.*comparison.member)(right).template get<bool>();
                EXPECT_EQ(result.lastKnownTime, 3);
                EXPECT_EQ(*result.valueAt(0), comparison.holds(0, 1)) << comparison.name;
                EXPECT_EQ(*result.valueAt(1), comparison.holds(1, 1)) << comparison.name;
                EXPECT_EQ(*result.valueAt(2), comparison.holds(1, 0)) << comparison.name;
            }
        });
}

TEST(FacadeComparison, OfNaNIsFalseButNotEqual) {
    TimedTrace_T<double> typed(held, 0);
    typed.push_back({0, nan});
    for (const Comparison& comparison : comparisons) {
        const TimedTrace one((TimedTrace_T<double>(1.0)));
        const TimedTrace none(typed);
        for (const auto& result : {(none.*comparison.member)(one), (one.*comparison.member)(none),
                                   (none.*comparison.member)(none)}) {
            EXPECT_TRUE(same(result.get<bool>(),
                             trace<bool>(comparison.name == "NotEqual" ? "0:1" : "0:0")))
                << comparison.name;
        }
    }
}

TEST(FacadeComparison, HoldsOrNotAtTheVeryCrossing) {
    const TimedTrace line(trace(linear, "0:0 10:10"));
    const TimedTrace five((TimedTrace_T<double>(5.0)));
    for (const Comparison& comparison : comparisons) {
        const auto result = (line.*comparison.member)(five).get<bool>();
        EXPECT_EQ(*result.valueAt(std::nextafter(5, 0)), comparison.holds(4, 5)) << comparison.name;
        EXPECT_EQ(*result.valueAt(5), comparison.holds(5, 5)) << comparison.name;
        EXPECT_EQ(*result.valueAt(std::nextafter(5, 6)), comparison.holds(6, 5)) << comparison.name;
    }
}

RC_GTEST_PROP(FacadeComparison, IsThatOfTheValuesAtEveryTime,
              (bool leftIsLinear, bool rightIsLinear)) {
    const TimeBase base = anyTimeBase();
    const Signal a = anySignal(leftIsLinear ? linear : held, base, -2, 2);
    const Signal b = anySignal(rightIsLinear ? linear : held, base, -2, 2);
    RC_LOG() << a << '\n' << b << '\n';
    const double start = std::max(a.start(), b.start());
    const double known = std::min(a.known, b.known);
    RC_PRE(start <= known);
    std::vector<double> times = a.times;
    times.insert(times.end(), b.times.begin(), b.times.end());
    const TimedTrace left(a.toTrace());
    const TimedTrace right(b.toTrace());
    for (const Comparison& comparison : comparisons) {
        const auto result = (left.*comparison.member)(right).get<bool>();
        RC_LOG() << comparison.name << ' ' << testing::PrintToString(result) << '\n';
        RC_ASSERT(strictlyIncreasing(result));
        for (const double time : withMiddles(times, start, known)) {
            const double difference = a.at(time) - b.at(time);
            // Beside a crossing rounding decides, but for samples that stand on it.
            const double slack = 1e-12 + 32 * ulp(std::max(std::fabs(start), std::fabs(known))) *
                                             (a.steepest() + b.steepest());
            if (difference == 0 ? !leftIsLinear && !rightIsLinear : std::fabs(difference) > slack) {
                RC_ASSERT(*result.valueAt(time) == comparison.holds(difference, 0));
            }
        }
    }
    RC_ASSERT(same(left.Less(right).Not().get<bool>(), left.GreaterEqual(right).get<bool>()));
    RC_ASSERT(same(left.Greater(right).Not().get<bool>(), left.LessEqual(right).get<bool>()));
    RC_ASSERT(same(left.Equal(right).Not().get<bool>(), left.NotEqual(right).get<bool>()));
    RC_ASSERT(same(left.LessEqual(right).And(left.GreaterEqual(right)).get<bool>(),
                   left.Equal(right).get<bool>()));
}

TEST(FacadeComparison, IsOfOneEnumeration) {
    auto typed = trace<std::int32_t>("0:1", 5);
    const TimedTrace number(typed);
    typed.enumTypeName = "Gear";
    const TimedTrace gear(typed);
    for (const Comparison& comparison : comparisons) {
        EXPECT_TRUE(same((gear.*comparison.member)(gear).get<bool>(),
                         (number.*comparison.member)(number).get<bool>()));
        const auto failure =
            thrown<AssessmentBinaryTypeException>([&] { (gear.*comparison.member)(number); });
        EXPECT_EQ(failure.getLHSTypeName() + ' ' + failure.getRHSTypeName(), "Gear int32");
        EXPECT_THROW((number.*comparison.member)(gear), AssessmentBinaryTypeException);
    }
}

TEST(FacadeNot, TurnsTruthsAndKeepsTheirTimes) {
    auto truth = trace<bool>("0:0 2:1 5:0", 8);
    truth.lastKnownTime = 3;
    EXPECT_TRUE(same(TimedTrace(truth).Not().get<bool>(), trace<bool>("0:1 2:0 5:1", 3)));
    EXPECT_TRUE(same(TimedTrace(trace<bool>("", 3)).Not().get<bool>(), trace<bool>("", 3)));
    truth.enumTypeName = "OnOff";
    EXPECT_THROW(TimedTrace(truth).Not(), AssessmentTypeException);
}

}  // namespace
}  // namespace vorm::test
