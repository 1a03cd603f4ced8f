#include "support/signals.hpp"

#include <vorm/assessments/errors/assessment_internal_exception.hpp>
#include <vorm/assessments/operators/comparison.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

namespace vorm::test {
namespace {

struct Pair {
    Signal phi;
    Signal psi;

    double start() const { return std::max(phi.start(), psi.start()); }
    double known() const { return std::min(phi.known, psi.known); }
    bool overlap() const { return start() <= known(); }
    std::vector<double> times() const {
        std::vector<double> all = phi.times;
        all.insert(all.end(), psi.times.begin(), psi.times.end());
        return withMiddles(all, start(), known());
    }
};

Pair anyPair(int low, int high) {
    const TimeBase base{true, *rc::gen::element(0.0, -5.0, 46408.5, 1.7e9)};
    Pair pair{anySignal(held, base, low, high), anySignal(held, base, low, high)};
    RC_LOG() << "phi " << pair.phi << "\npsi " << pair.psi << '\n';
    return pair;
}

// min(phi(t), sup over t' in [t, t + d] of min(psi(t'), inf of phi over [t, t'))), by scanning all
// sample times for t'. At the end of psi's knowledge phi alone decides, if it is known as long.
double untilAt(const Pair& pair, double t, double d) {
    std::vector<double> times = pair.phi.times;
    times.insert(times.end(), pair.psi.times.begin(), pair.psi.times.end());
    times.push_back(t);
    times.push_back(std::min(t + d, pair.known()));
    std::sort(times.begin(), times.end());
    double infimum = infinity;
    double best = -infinity;
    for (double time : times) {
        if (time < t || time > std::min(t + d, pair.known())) {
            continue;
        }
        best = std::max(best, std::min(pair.psi.at(time), infimum));
        infimum = std::min(infimum, pair.phi.at(time));
    }
    if (d == infinity && pair.phi.known >= pair.psi.known) {
        double whole = t == pair.psi.known ? infinity : pair.phi.at(t);
        for (double time : pair.phi.times) {
            whole = time >= t && time < pair.psi.known ? std::min(whole, pair.phi.at(time)) : whole;
        }
        best = std::max(best, whole);
    }
    return std::min(pair.phi.at(t), best);
}

RC_GTEST_PROP(QuantitativeUntil, AgreesWithItsDefinition, ()) {
    const Pair pair = anyPair(-3, 3);
    const double d = *rc::gen::element(infinity, 0.25 * *rc::gen::inRange(0, 40));
    const auto phi = pair.phi.toTrace();
    const auto psi = pair.psi.toTrace();
    const auto result = phi.Until(psi, d);
    RC_LOG() << "d " << d << ' ' << testing::PrintToString(result) << '\n';
    const double lastTime = d == infinity ? pair.known() : pair.known() - d;
    if (!pair.overlap() || pair.phi.start() > psi.points.back().time || lastTime < pair.start()) {
        RC_ASSERT(result.points.empty() && result.lastKnownTime == -infinity);
        return;
    }
    RC_ASSERT(result.lastKnownTime == lastTime);
    RC_ASSERT(strictlyIncreasing(result));
    for (double t : pair.times()) {
        if (t <= lastTime) {
            RC_ASSERT(*result.valueAt(t) == untilAt(pair, t, d));
        }
    }
}

RC_GTEST_PROP(UntimedUntil, IsTheQuantitativeUntilOfZeroAndOne, ()) {
    const Pair pair = anyPair(0, 1);
    const auto result = pair.phi.toTrace<bool>().UntimedUntil(pair.psi.toTrace<bool>());
    RC_LOG() << testing::PrintToString(result) << '\n';
    RC_ASSERT(result.points.empty() == !pair.overlap());
    RC_ASSERT(result.lastKnownTime == (pair.overlap() ? pair.known() : -infinity));
    for (double t : pair.overlap() ? pair.times() : std::vector<double>()) {
        RC_ASSERT(*result.valueAt(t) == (untilAt(pair, t, infinity) == 1));
    }
}

RC_GTEST_PROP(BoundedUntil, OfBoolsAgreesWithNumbersAndWithTheDefinition, ()) {
    const Pair pair = anyPair(0, 1);
    const double a = 0.25 * *rc::gen::inRange(0, 12);
    const double b = a + 0.25 * *rc::gen::inRange(0, 12);
    const auto flags = pair.phi.toTrace<bool>().Until(pair.psi.toTrace<bool>(), a, b);
    const auto phi = pair.phi.toTrace();
    const auto psi = pair.psi.toTrace();
    const auto numbers = phi.Until(psi, a, b);
    RC_LOG() << "a " << a << " b " << b << ' ' << testing::PrintToString(flags) << '\n';
    if (pair.phi.start() <= psi.points.back().time) {
        RC_ASSERT(numbers.lastKnownTime == flags.lastKnownTime);
        for (double t : pair.overlap() ? pair.times() : std::vector<double>()) {
            const std::optional<bool> flag = flags.valueAt(t);
            RC_ASSERT(numbers.valueAt(t) == (flag ? std::optional<double>(*flag) : std::nullopt));
        }
    }
    // psi at some time of [t + a, t + b], before which phi holds from t on. At times from which
    // the whole window is known to both.
    for (double t : pair.times()) {
        if (flags.points.empty() || t < pair.start() || t + b > pair.known()) {
            continue;
        }
        bool expected = false;
        for (double time : withMiddles(pair.psi.times, t + a, t + b)) {
            double infimum = pair.phi.at(t);
            for (double before : pair.phi.times) {
                infimum =
                    before > t && before < time ? std::min(infimum, pair.phi.at(before)) : infimum;
            }
            expected = expected || (pair.psi.at(time) == 1 && infimum == 1);
        }
        // The bounded form asks phi for [t, t + a] whole.
        for (double before : withMiddles(pair.phi.times, t, t + a)) {
            expected = expected && pair.phi.at(before) == 1;
        }
        RC_ASSERT(*flags.valueAt(t) == expected);
    }
}

TEST(UntimedUntil, LooksAtTheNextSamples) {
    const auto psi = trace<bool>("0:0 5:1", 20);
    EXPECT_TRUE(same(trace<bool>("0:1 10:0", 20).UntimedUntil(psi), trace<bool>("0:1 10:0", 20)));
    EXPECT_TRUE(same(trace<bool>("0:1 3:0", 20).UntimedUntil(psi), trace<bool>("0:0", 20)));
    EXPECT_TRUE(same(trace<bool>("0:0", 20).UntimedUntil(psi), trace<bool>("0:0", 20)));
    // Several samples before the other operand begins: the one in force there counts.
    EXPECT_TRUE(same(trace<bool>("-9:1 -7:0 -5:1", 20).UntimedUntil(psi), trace<bool>("0:1", 20)));
}

TEST(Until, OfAnEmptyOperandIsEmpty) {
    const auto some = trace<bool>("0:1", 5);
    const TimedTrace_T<bool> none(held, 7);
    const auto empty = trace<bool>("");
    EXPECT_TRUE(same(some.Until(none, 0, 1), empty));
    EXPECT_TRUE(same(none.Until(some, 0, 1), empty));
    EXPECT_TRUE(same(some.UntimedUntil(none), empty));
    EXPECT_TRUE(same(trace("").Until(trace("0:1", 5), infinity), trace("")));
}

TEST(Until, RefusesWhatItCannotMean) {
    const auto line = trace(linear, "0:1 1:2", 5);
    const auto step = trace("0:1 1:2", 5);
    auto mode = trace<std::int8_t>("0:1 1:2", 5);
    mode.enumTypeName = "Mode";
    const auto number = trace<std::int8_t>("0:1 1:2", 5);
    const std::string doubleName =
        AssessmentTypeException::getTypeName(AssessmentTypeException::typeTAG<double>());
    for (const auto* phi : {&line, &step}) {
        try {
            phi->Until(phi == &line ? step : line, 1);
            FAIL() << "a linear operand passed";
        } catch (const AssessmentTypeException& failure) {
            EXPECT_EQ(failure.getRHSTypeName(), doubleName);
        }
    }
    EXPECT_THROW(number.Until(mode, 0, 1), AssessmentTypeException);
    EXPECT_THROW(mode.Until(number, infinity), AssessmentTypeException);
    EXPECT_THROW(step.UntimedUntil(step), AssessmentTypeException);
    EXPECT_THROW(step.Until(step, -1), AssessmentInternalException);
    EXPECT_THROW(step.Until(step, nan), AssessmentInternalException);
}

TEST(WindowAdd, KeepsABufferMonotone) {
    auto buffer = trace("");
    for (const TimedPoint<double>& point : {TimedPoint<double>{0, 3}, {1, 1}, {2, 2}}) {
        buffer.windowAdd(ValueGreaterEq(), point);
    }
    EXPECT_TRUE(same(buffer, trace("0:3 1:2", 2)));
    buffer.windowAdd(ValueGreaterEq(), {3, 5});
    EXPECT_TRUE(same(buffer, trace("0:5", 3)));
    buffer.windowAdd(ValueLessEq(), {4, 7});
    EXPECT_TRUE(same(buffer, trace("0:5 4:7", 4)));
    EXPECT_THROW(buffer.windowAdd(ValueLessEq(), {4, 1}), AssessmentException);
    auto line = trace(linear, "0:1");
    EXPECT_THROW(line.windowAdd(ValueLessEq(), {4, 1}), AssessmentTypeException);
}

}  // namespace
}  // namespace vorm::test
