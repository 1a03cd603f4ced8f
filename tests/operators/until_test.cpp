#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/trace/value_traits.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace vorm::test {
namespace {

struct Operands {
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

Operands anyOperands(int low, int high) {
    const TimeBase base{true, *rc::gen::element(0.0, -5.0, 46408.5, 1.7e9)};
    Operands operands{anySignal(held, base, low, high), anySignal(held, base, low, high)};
    RC_LOG() << "phi " << operands.phi << "\npsi " << operands.psi << '\n';
    return operands;
}

// The signal with a few values that are not known.
void loseValues(Signal& signal) {
    for (double& value : signal.values) {
        value = *rc::gen::inRange(0, 12) == 0 ? nan : value;
    }
}

double lesser(double a, double b) {
    return std::isnan(a) || a < b ? a : b;
}
double greater(double a, double b) {
    return std::isnan(a) || a > b ? a : b;
}

// Up to which time a trace says anything, its samples after lastKnownTime included.
template <class T>
double endOf(const TimedTrace_T<T>& trace) {
    return std::max(trace.lastKnownTime, trace.points.back().time);
}

// min(phi(t), sup over t' in [t, t + d] of min(psi(t'), inf of phi over [t, t'))), by scanning for
// t' all times at which it can be attained, t and the sample times. From psi's end on phi alone
// decides if it does not end before.
double untilAt(const Operands& operands, double t, double d) {
    const auto phi = operands.phi.toTrace();
    const auto psi = operands.psi.toTrace();
    const double phiEnd = endOf(phi);
    const double psiEnd = endOf(psi);
    std::set<double> samples;
    for (const auto* operand : {&phi, &psi}) {
        for (const auto& point : operand->points) {
            samples.insert(point.time);
        }
    }
    std::set<double> times = samples;
    times.insert(t);
    double infimum = infinity;
    double best = -infinity;
    for (double time : times) {
        if (time < t || time > std::min({t + d, phiEnd, psiEnd})) {
            continue;
        }
        const bool psiEnds =
            d == infinity && phiEnd >= psiEnd && time == psiEnd && samples.count(time) == 1;
        best = psiEnds ? best : greater(best, lesser(operands.psi.at(time), infimum));
        infimum = psiEnds ? infimum : lesser(infimum, operands.phi.at(time));
    }
    if (d == infinity && phiEnd >= psiEnd) {
        best = greater(best, infimum);
    }
    return lesser(operands.phi.at(t), best);
}

RC_GTEST_PROP(QuantitativeUntil, AgreesWithItsDefinition, ()) {
    Operands operands = anyOperands(-3, 3);
    if (*rc::gen::arbitrary<bool>()) {
        loseValues(operands.phi);
        loseValues(operands.psi);
        RC_LOG() << "with holes: phi " << operands.phi << "\npsi " << operands.psi << '\n';
    }
    const double d = *rc::gen::element(infinity, 0.25 * *rc::gen::inRange(0, 40));
    const auto phi = operands.phi.toTrace();
    const auto psi = operands.psi.toTrace();
    const auto result = phi.Until(psi, d);
    RC_LOG() << "d " << d << ' ' << testing::PrintToString(result) << '\n';
    const double lastTime = d == infinity ? operands.known() : operands.known() - d;
    if (!operands.overlap() || operands.phi.start() > psi.points.back().time ||
        lastTime < operands.start()) {
        RC_ASSERT(result.points.empty() && result.lastKnownTime == -infinity);
        return;
    }
    RC_ASSERT(result.lastKnownTime == lastTime);
    RC_ASSERT(strictlyIncreasing(result));
    for (double t : operands.times()) {
        if (t <= lastTime) {
            RC_ASSERT(support::sameValue(*result.valueAt(t), untilAt(operands, t, d)));
        }
    }
}

// What is in force at a time, and until when: the next sample, or the last known time.
struct InForce {
    bool value = false;
    double until;

    InForce(const TimedTrace_T<bool>& trace, double time) : until(trace.lastKnownTime) {
        for (const auto& point : trace.points) {
            if (point.time > time) {
                until = point.time;
                break;
            }
            value = point.value;
        }
    }
};

RC_GTEST_PROP(UntimedUntil, IsTheQuantitativeUntilOfZeroAndOne, ()) {
    const Operands operands = anyOperands(0, 1);
    const auto phi = operands.phi.toTrace<bool>();
    const auto psi = operands.psi.toTrace<bool>();
    const auto result = phi.UntimedUntil(psi);
    RC_LOG() << testing::PrintToString(result) << '\n';
    for (const auto* operand : {&phi, &psi}) {
        for (const auto& [time, value, derivative] : operand->points) {
            if (operands.overlap() && time >= operands.start()) {
                const InForce left(phi, time);
                const InForce right(psi, time);
                RC_ASSERT(InForce(result, time).value ==
                          (left.value && (right.value || left.until >= right.until)));
            }
        }
    }
    RC_ASSERT(result.points.empty() == !operands.overlap());
    RC_ASSERT(result.lastKnownTime == (operands.overlap() ? operands.known() : -infinity));
    for (double t : operands.overlap() ? operands.times() : std::vector<double>()) {
        RC_ASSERT(*result.valueAt(t) == (untilAt(operands, t, infinity) == 1));
    }
}

RC_GTEST_PROP(BoundedUntil, OfBoolsAgreesWithNumbersAndWithTheDefinition, ()) {
    const Operands operands = anyOperands(0, 1);
    const double a = 0.25 * *rc::gen::inRange(0, 12);
    const double b = a + 0.25 * *rc::gen::inRange(0, 12);
    const auto flags = operands.phi.toTrace<bool>().Until(operands.psi.toTrace<bool>(), a, b);
    const auto phi = operands.phi.toTrace();
    const auto psi = operands.psi.toTrace();
    const auto numbers = phi.Until(psi, a, b);
    RC_LOG() << "a " << a << " b " << b << ' ' << testing::PrintToString(flags) << '\n';
    if (operands.phi.start() <= psi.points.back().time) {
        RC_ASSERT(numbers.lastKnownTime == flags.lastKnownTime);
        for (double t : operands.overlap() ? operands.times() : std::vector<double>()) {
            const std::optional<bool> flag = flags.valueAt(t);
            RC_ASSERT(numbers.valueAt(t) == (flag ? std::optional<double>(*flag) : std::nullopt));
        }
    }
    // psi at some time of [t + a, t + b], before which phi holds from t on. At times from which
    // the whole window is known to both.
    for (double t : operands.times()) {
        if (flags.points.empty() || t < operands.start() || t + b > operands.known()) {
            continue;
        }
        bool expected = false;
        for (double time : withMiddles(operands.psi.times, t + a, t + b)) {
            double infimum = operands.phi.at(t);
            for (double before : operands.phi.times) {
                infimum = before > t && before < time ? std::min(infimum, operands.phi.at(before))
                                                      : infimum;
            }
            expected = expected || (operands.psi.at(time) == 1 && infimum == 1);
        }
        // The bounded form asks phi for [t, t + a] whole.
        for (double before : withMiddles(operands.phi.times, t, t + a)) {
            expected = expected && operands.phi.at(before) == 1;
        }
        RC_ASSERT(*flags.valueAt(t) == expected);
    }
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
    for (const auto* phi : {&line, &step}) {
        const auto failure =
            thrown<AssessmentTypeException>([&] { phi->Until(phi == &line ? step : line, 1); });
        EXPECT_EQ(failure.getRHSTypeName(), "double");
    }
    EXPECT_THROW(number.Until(mode, 0, 1), AssessmentTypeException);
    EXPECT_THROW(mode.Until(number, infinity), AssessmentTypeException);
    EXPECT_THROW(mode.Until(mode, 0, 1), AssessmentBinaryTypeException);
    EXPECT_THROW(step.UntimedUntil(step), AssessmentTypeException);
    auto flag = trace<bool>("0:1 1:0", 5);
    flag.enumTypeName = "Mode";
    EXPECT_THROW(flag.UntimedUntil(flag), AssessmentBinaryTypeException);
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
