#include "support/signals.hpp"
#include "support/thrown.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <vector>

namespace vorm::test {
namespace {

// Within this a shift rounds nothing.
const TimeBase oneBinade{true, 46408.5};

// The least value of a held signal from a time on up to another one.
double leastFrom(const Signal& signal, double first, double last) {
    double least = std::min(signal.at(first), signal.at(last));
    for (const double time : signal.times) {
        least = first <= time && time <= last ? std::min(least, signal.at(time)) : least;
    }
    return least;
}

// The best over what the window holds: its last time, and the last one before each sample.
double sinceAt(const Signal& phi, const Signal& psi, double t, double a, double b, double start) {
    const double earliest = std::max(start, t - b);
    std::vector<double> goals{t - a};
    for (const Signal* signal : {&phi, &psi}) {
        for (const double time : signal->times) {
            goals.push_back(before(time));
        }
    }
    double best = -infinity;
    for (const double goal : goals) {
        if (earliest <= goal && goal <= t - a) {
            const double kept = goal == t ? infinity : leastFrom(phi, after(goal), t);
            best = std::max(best, std::min(psi.at(goal), kept));
        }
    }
    return std::min(best, leastFrom(phi, t - a, t));
}

RC_GTEST_PROP(Since, AgreesWithItsDefinition, ()) {
    const Signal phi = anySignal(held, oneBinade, -3, 3);
    const Signal psi = anySignal(held, oneBinade, -3, 3);
    const double a = 0.25 * *rc::gen::inRange(0, 8);
    const double b = *rc::gen::element(infinity, a + 0.25 * *rc::gen::inRange(0, 20));
    const auto result = phi.toTrace().Since(psi.toTrace(), a, b);
    RC_LOG() << "phi " << phi << "\npsi " << psi << "\n[" << a << ", " << b << "] "
             << testing::PrintToString(result) << '\n';
    const double start = std::max(phi.start(), psi.start());
    const double first = start + (b == infinity ? a : b);
    const double last = std::min(phi.known, psi.known);
    if (first > last) {
        RC_ASSERT(result.points.empty() && result.lastKnownTime == -infinity);
        return;
    }
    RC_ASSERT(strictlyIncreasing(result));
    RC_ASSERT(result.points.front().time == first && result.lastKnownTime == last);
    std::vector<double> times = phi.times;
    times.insert(times.end(), psi.times.begin(), psi.times.end());
    for (const double t : withMiddles(times, first, last)) {
        RC_ASSERT(*result.valueAt(t) == sinceAt(phi, psi, t, a, b, start));
    }
}

// Booleans have a pass of their own.
RC_GTEST_PROP(Since, OfBoolsIsThatOfZeroAndOne, ()) {
    Signal phi = anySignal(held, oneBinade, 0, 1);
    Signal psi = anySignal(held, oneBinade, 0, 1);
    if (*rc::gen::arbitrary<bool>()) {
        phi.known = psi.known = infinity;
    }
    const double a = 0.25 * *rc::gen::element(0, 0, 1, 5);
    const double b = *rc::gen::element(infinity, a + 0.25 * *rc::gen::inRange(0, 20));
    const auto flags = phi.toTrace<bool>().Since(psi.toTrace<bool>(), a, b);
    const auto numbers = phi.toTrace().Since(psi.toTrace(), a, b);
    RC_LOG() << "phi " << phi << "\npsi " << psi << "\n[" << a << ", " << b << "] "
             << testing::PrintToString(flags) << '\n';
    RC_ASSERT(flags.lastKnownTime == numbers.lastKnownTime);
    RC_ASSERT(flags.points.size() == numbers.points.size());
    for (std::size_t i = 0; i < flags.points.size(); ++i) {
        RC_ASSERT(flags.points[i].time == numbers.points[i].time);
        RC_ASSERT(flags.points[i].value == (numbers.points[i].value == 1));
    }
}

TEST(Since, CountsAGoalThatEndsWhereTheConditionBegins) {
    const auto parked = trace<bool>("0:1 5:0", 20);
    const auto moving = trace<bool>("0:0 5:1 9:0", 20);
    EXPECT_TRUE(same(moving.Since(parked, 0, infinity), trace<bool>("0:0 5:1 9:0", 20)));
    EXPECT_TRUE(same(moving.Since(parked, 0, 2), trace<bool>("2:0 5:1 7:0", 20)));
    EXPECT_TRUE(same(moving.Since(parked, 1, 2), trace<bool>("2:0 6:1 7:0", 20)));
}

TEST(Since, OfAConstantConditionRemembersForEver) {
    const TimedTrace_T<bool> always(true);
    EXPECT_TRUE(
        same(always.Since(trace<bool>("0:0 3:1 4:0", 9), 1, infinity), trace<bool>("1:0 4:1", 9)));
}

TEST(Since, OfAnEmptyOperandIsEmpty) {
    const auto some = trace<bool>("0:1", 5);
    const TimedTrace_T<bool> none(held, 7);
    EXPECT_TRUE(same(some.Since(none, 0, 1), trace<bool>("")));
    EXPECT_TRUE(same(none.Since(some, 0, 1), trace<bool>("")));
    EXPECT_TRUE(same(some.Since(trace<bool>("6:1", 9), 0, 0), trace<bool>("")));
}

TEST(Since, RefusesWhatItCannotMean) {
    const auto line = trace(linear, "0:1 1:2", 5);
    const auto step = trace("0:1 1:2", 5);
    auto mode = trace<std::int8_t>("0:1 1:2", 5);
    mode.enumTypeName = "Mode";
    EXPECT_THROW(line.Since(step, 0, 1), AssessmentTypeException);
    EXPECT_THROW(step.Since(line, 0, 1), AssessmentTypeException);
    EXPECT_THROW(mode.Since(mode, 0, 1), AssessmentBinaryTypeException);
    for (const auto& [a, b] :
         {std::pair(-1.0, 1.0), {2.0, 1.0}, {infinity, infinity}, {nan, 1.0}, {0.0, nan}}) {
        EXPECT_THROW(step.Since(step, a, b), AssessmentInternalException) << a << ' ' << b;
    }
}

}  // namespace
}  // namespace vorm::test
