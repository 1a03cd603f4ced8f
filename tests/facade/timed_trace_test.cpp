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

// A value type by itself, so that what is checked of all fourteen is compiled once.
struct Kind {
    int index;
    TimedTrace (*held)(const std::string& samples, double known);
    TimedTrace (*linear)(const std::string& samples, double known);
    TimedTrace (*constant)(double value);
    bool (*isGivenBy)(const TimedTrace& trace);
    std::string name;
    bool isUnsigned;  // bool is, too
    bool isListed;    // whether its failures can be listed

    bool isBool() const { return index == int{valueTypeIndex<bool>}; }
    bool isVerdict() const { return index == int{valueTypeIndex<Verdict>}; }
};

template <class T>
Kind kindOf() {
    return {int{valueTypeIndex<T>},
            [](const std::string& samples, double known) {
                return TimedTrace(trace<T>(samples, known));
            },
            [](const std::string& samples, double known) {
                return TimedTrace(trace<T>(linear, samples, known));
            },
            [](double value) { return TimedTrace(TimedTrace_T<T>(valueOf<T>(value))); },
            [](const TimedTrace& trace) {
                try {
                    return trace.get<T>().points.size() > 0;
                } catch (const boost::bad_get&) {
                    return false;
                }
            },
            AssessmentTypeException::getTypeName(AssessmentTypeException::typeTAG<T>()),
            std::is_unsigned_v<T>,
            std::is_arithmetic_v<T>};
}

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = [] {
        std::vector<Kind> kinds;
        boost::mp11::mp_for_each<boost::mp11::mp_transform<boost::mp11::mp_identity, ValueTypes>>(
            [&](auto type) { kinds.push_back(kindOf<typename decltype(type)::type>()); });
        return kinds;
    }();
    return all;
}

testing::AssertionResult sameErased(const TimedTrace& actual, const TimedTrace& expected) {
    if (actual.which() != expected.which()) {
        return testing::AssertionFailure()
               << "type " << actual.which() << " instead of " << expected.which();
    }
    return actual.visit(
        [&]<class T>(const TimedTrace_T<T>& typed) { return same(typed, expected.get<T>()); });
}

class EveryType : public testing::TestWithParam<Kind> {
protected:
    TimedTrace held(const std::string& samples, double known = nan) const {
        return GetParam().held(samples, known);
    }

    // 0 at 0, 1 at 2, 0 at 5, known up to 8.
    TimedTrace pulse() const { return held("0:0 2:1 5:0", 8); }

    // That the operation refuses the type by its name.
    void expectRefusal(const std::function<void()>& operation) const {
        EXPECT_NE(message<AssessmentTypeException>(operation).find(GetParam().name),
                  std::string::npos);
    }

    template <class Failure>
    static std::string message(const std::function<void()>& operation) {
        return thrown<Failure>(operation).what();
    }
};

INSTANTIATE_TEST_SUITE_P(AllTypes, EveryType, testing::ValuesIn(kinds()),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(EveryType, TellsWhatItHolds) {
    const TimedTrace trace = pulse();
    EXPECT_EQ(trace.which(), GetParam().index);
    EXPECT_TRUE(GetParam().isGivenBy(trace));
    EXPECT_EQ(trace.errorType().which(), trace.which());
    EXPECT_EQ(trace.getStartTime(), 0);
    EXPECT_EQ(trace.getLastKnownTime(), 8);
    EXPECT_EQ(trace.getInterpolation(), INTERPOLATION_METHOD::ZOH);
    EXPECT_FALSE(trace.isConstantScalar());
    EXPECT_EQ(trace.visit([](const auto& typed) { return typed.points.size(); }), 3u);

    const TimedTrace empty = GetParam().linear("", 3);
    EXPECT_EQ(empty.getStartTime(), -infinity);
    EXPECT_FALSE(empty.isConstantScalar());
    EXPECT_EQ(empty.getInterpolation(), INTERPOLATION_METHOD::LINEAR);
    const TimedTrace constant = GetParam().constant(1);
    EXPECT_EQ(constant.getStartTime(), -infinity);
    EXPECT_EQ(constant.getLastKnownTime(), infinity);
    EXPECT_TRUE(constant.isConstantScalar());
    EXPECT_EQ(constant.getInterpolation(), INTERPOLATION_METHOD::ZOH);
    EXPECT_TRUE(held("3:1").isConstantScalar());
}

TEST_P(EveryType, MovesShiftsAndCuts) {
    const TimedTrace trace = pulse();
    EXPECT_TRUE(sameErased(trace.Shift(2), held("0:1 3:0", 6)));
    EXPECT_TRUE(sameErased(trace.Shift(-2), held("2:0 4:1 7:0", 10)));
    EXPECT_EQ(trace.EpsilonShift(-1).visit([](const auto& typed) { return typed.points[1].time; }),
              std::nextafter(2, 0));
    EXPECT_TRUE(sameErased(trace.extractWindow(1, 4, 0), held("1:0 2:1", 4)));
    EXPECT_TRUE(sameErased(trace, pulse()));
    EXPECT_THROW(trace.Slope(), AssessmentInternalException);
    EXPECT_EQ(GetParam().linear("0:1", nan).Slope().which(), 0);
}

TEST_P(EveryType, LooksAheadThroughWindows) {
    const TimedTrace trace = pulse();
    EXPECT_TRUE(sameErased(trace.Eventually(0, 1), held("0:0 1:1 5:0", 7)));
    EXPECT_TRUE(sameErased(trace.Globally(0, 1), held("0:0 2:1 4:0", 7)));
    EXPECT_TRUE(sameErased(trace.Eventually(1, 2), held("0:1 4:0", 6)));
    EXPECT_TRUE(sameErased(trace.Until(0, 1, trace), trace.Eventually(0, 1).And(trace)));
}

TEST_P(EveryType, CombinesPointwise) {
    const TimedTrace a = pulse();
    const TimedTrace b = held("1:1 3:0", 9);
    EXPECT_TRUE(sameErased(a.And(b), held("1:0 2:1 3:0", 8)));
    EXPECT_TRUE(sameErased(a.Or(b), held("1:1 5:0", 8)));
    if (GetParam().isBool()) {
        for (const auto& refused : {&TimedTrace::Plus, &TimedTrace::Minus, &TimedTrace::Scale}) {
            EXPECT_THROW((a.*refused)(b), AssessmentBinaryTypeException);
        }
    } else if (GetParam().isVerdict()) {
        EXPECT_EQ(message<std::runtime_error>([&] { a.Plus(b); }),
                  "Unsupported operator '+' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([&] { a.Minus(b); }),
                  "Unsupported operator '-' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([&] { a.Scale(GetParam().constant(1)); }),
                  "Unsupported operator '*' for type resultType_t");
        EXPECT_EQ(message<std::runtime_error>([] { ZERO<Verdict>(); }),
                  "Unsupported operator 'ZERO' for type resultType_t");
    } else {
        EXPECT_TRUE(sameErased(a.Plus(b), held("1:1 2:2 3:1 5:0", 8)));
        EXPECT_TRUE(sameErased(a.Minus(a), held("0:0", 8)));
        EXPECT_TRUE(sameErased(a.Scale(GetParam().constant(2)), held("0:0 2:2 5:0", 8)));
    }
}

TEST_P(EveryType, NegatesOrRefusesTo) {
    const TimedTrace a = pulse();
    if (GetParam().isUnsigned) {
        expectRefusal([&] { a.UnaryMinus(); });
    } else if (GetParam().isVerdict()) {
        EXPECT_EQ(message<std::runtime_error>([&] { a.UnaryMinus(); }),
                  "Unsupported operator '-' for type resultType_t");
    } else {
        EXPECT_TRUE(sameErased(a.UnaryMinus(), held("0:0 2:-1 5:0", 8)));
        EXPECT_TRUE(sameErased(a.UnaryMinus().Abs(), held("0:0 2:1 5:0", 8)));
    }
    if (GetParam().isVerdict()) {
        expectRefusal([&] { a.Abs(); });
    } else {
        EXPECT_TRUE(sameErased(a.Abs(), held("0:0 2:1 5:0", 8)));
    }
}

TEST_P(EveryType, ListsFailuresOrRefusesTo) {
    const TimedTrace a = pulse();
    if (GetParam().isListed) {
        EXPECT_EQ(a.getErrorIntervalList(), (std::list<VORM_Interval>{{0, 2}, {5, 8}}));
        EXPECT_EQ(a.getErrorTimeList(), (std::vector<double>{0, 5}));
    } else {
        expectRefusal([&] { a.getErrorIntervalList(); });
        EXPECT_THROW(a.getErrorTimeList(), AssessmentTypeException);
    }
}

TEST_P(EveryType, TurnsAndConvertsToVerdictsOrRefusesTo) {
    const TimedTrace a = pulse();
    if (GetParam().isBool()) {
        EXPECT_TRUE(sameErased(a.Not(), held("0:1 2:0 5:1", 8)));
        EXPECT_TRUE(sameErased(a.ConvertToResult(), trace<Verdict>("0:1 2:0 5:1", 8)));
        EXPECT_EQ(a.ConvertToResult(1, 9).which(), 13);
    } else {
        EXPECT_THROW(a.Not(), AssessmentTypeException);
        expectRefusal([&] { a.ConvertToResult(0, 1); });
    }
    if (GetParam().isVerdict()) {
        EXPECT_TRUE(sameErased(a.ConvertToResult(), a));
        EXPECT_TRUE(sameErased(a.If(a), held("0:0 2:254 5:0", 8)));
    } else {
        EXPECT_THROW(a.If(a), AssessmentTypeException);
    }
    if (!GetParam().isVerdict() && !GetParam().isBool()) {
        EXPECT_THROW(a.ConvertToResult(), AssessmentTypeException);
    }
}

TEST_P(EveryType, TakesNoOtherTypeForGranted) {
    const TimedTrace a = pulse();
    for (const Kind& other : kinds()) {
        if (other.index == GetParam().index) {
            continue;
        }
        // A constant gets no special treatment.
        const TimedTrace b = other.constant(1);
        EXPECT_FALSE(GetParam().isGivenBy(b));
        const auto expectRefused = [&](const std::function<void()>& operation) {
            const auto failure = thrown<AssessmentBinaryTypeException>(operation);
            EXPECT_EQ(failure.getLHSTypeName(), GetParam().name);
            EXPECT_EQ(failure.getRHSTypeName(), other.name);
            EXPECT_EQ(failure.getCause(), nullptr);
        };
        for (const auto& binary :
             {&TimedTrace::Plus, &TimedTrace::Minus, &TimedTrace::Scale, &TimedTrace::And,
              &TimedTrace::Or, &TimedTrace::If, &TimedTrace::Greater, &TimedTrace::GreaterEqual,
              &TimedTrace::Less, &TimedTrace::LessEqual, &TimedTrace::Equal,
              &TimedTrace::NotEqual}) {
            expectRefused([&] { (a.*binary)(b); });
        }
        expectRefused([&] { a.Until(nan, -1, b); });
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
