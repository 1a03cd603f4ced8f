#include "support/signals.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/config_last_window.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace vorm::test {
namespace {

// ---- The slow, obvious reading ---------------------------------------------------------------

// Greatest (sign 1) or least (sign -1) value that the signal takes in [t, t + width].
double extremumIn(const Signal& signal, double sign, double t, double width) {
    const double end = std::min(t + width, signal.known);
    double best = std::max(sign * signal.at(t), sign * signal.at(end));
    for (std::size_t i = 0; i < signal.times.size(); ++i) {
        if (signal.times[i] >= t && signal.times[i] <= end) {
            best = std::max(best, sign * signal.values[i]);
        }
    }
    return sign * best;
}

std::vector<double> eventTimes(const Signal& signal, double width) {
    std::vector<double> times;
    for (double time : signal.times) {
        times.push_back(time);
        times.push_back(time - width);
    }
    return times;
}

double anyWidth(const Signal& signal, const TimeBase& base) {
    const double extent = signal.known - signal.start();
    const double random = base.grid ? 0.25 * *rc::gen::inRange(0, 60) : 3 * step(base);
    return std::max(
        0.0, *rc::gen::element(0.0, random, random, random, extent, after(extent), before(extent)));
}

template <class T>
void checkShape(const Signal& signal, double width, const TimedTrace_T<T>& result) {
    if (width > signal.known - signal.start()) {
        RC_ASSERT(result.points.empty());
        RC_ASSERT(result.lastKnownTime == -infinity);
    } else {
        RC_ASSERT(strictlyIncreasing(result));
        RC_ASSERT(result.points.back().time <= result.lastKnownTime);
        RC_ASSERT(result.points.front().time == signal.start());
        RC_ASSERT(result.lastKnownTime == std::max(signal.start(), signal.known - width));
    }
}

template <class T>
void checkHeldWindow(int low, int high) {
    const TimeBase base = anyTimeBase();
    const Signal signal = anySignal(held, base, low, high);
    const double width = anyWidth(signal, base);
    const double sign = *rc::gen::element(1.0, -1.0);
    RC_LOG() << signal << " width " << width << " sign " << sign << '\n';

    TimedTrace_T<T> result = signal.toTrace<T>();
    sign > 0 ? result.timedMax(width) : result.timedMin(width);
    RC_LOG() << testing::PrintToString(result) << '\n';
    checkShape(signal, width, result);
    if (result.points.empty()) {
        return;
    }
    for (double t : withMiddles(eventTimes(signal, width), signal.start(), result.lastKnownTime)) {
        const double value = static_cast<double>(*result.valueAt(t));
        if (base.grid && width == std::floor(4 * width) / 4) {
            RC_ASSERT(value == extremumIn(signal, sign, t, width));
        } else {
            // Within the rounding of t + width either window may be meant.
            const double slack = 2 * ulp(signal.known) + 2 * ulp(width);
            const double before = extremumIn(signal, sign, t, std::max(0.0, width - slack));
            const double after = extremumIn(signal, sign, t, width + slack);
            RC_ASSERT(value == before || value == after);
        }
    }
}

RC_GTEST_PROP(HeldWindow, IsTheExtremumAtEveryTimeDouble, ()) {
    checkHeldWindow<double>(-3, 3);
}
RC_GTEST_PROP(HeldWindow, IsTheExtremumAtEveryTimeInt8, ()) {
    checkHeldWindow<std::int8_t>(-128, 127);
}
RC_GTEST_PROP(HeldWindow, IsTheExtremumAtEveryTimeBool, ()) {
    checkHeldWindow<bool>(0, 1);
}

template <class T>
void checkLinearWindow(double valueTolerance) {
    const TimeBase base = anyTimeBase();
    const Signal signal = anySignal(linear, base, -3, 3);
    const double width = anyWidth(signal, base);
    const double sign = *rc::gen::element(1.0, -1.0);
    RC_LOG() << signal << " width " << width << " sign " << sign << '\n';

    TimedTrace_T<T> result = signal.toTrace<T>();
    sign > 0 ? result.timedMax(width) : result.timedMin(width);
    RC_LOG() << testing::PrintToString(result) << '\n';
    checkShape(signal, width, result);
    if (result.points.empty()) {
        return;
    }
    RC_ASSERT(result.interpolation == linear);
    RC_ASSERT(result.points.size() <= 3 * signal.times.size() + 3);
    std::vector<double> times = eventTimes(signal, width);
    for (int i = 0; i < 30; ++i) {
        const double fraction = *rc::gen::inRange(0, 1 << 20) / double(1 << 20);
        times.push_back(signal.start() + fraction * (result.lastKnownTime - signal.start()));
    }
    const double timeError = 8 * ulp(std::max(std::fabs(signal.known), std::fabs(signal.start())));
    const double tolerance = valueTolerance + 2 * signal.steepest() * timeError;
    for (double t : withMiddles(times, signal.start(), result.lastKnownTime)) {
        const double expected = extremumIn(signal, sign, t, width);
        RC_LOG() << "at " << t << " expected " << expected << '\n';
        RC_ASSERT(std::fabs(static_cast<double>(*result.valueAt(t)) - expected) <= tolerance);
    }
}

RC_GTEST_PROP(LinearWindow, IsTheExtremumAtEveryRealTimeDouble, ()) {
    checkLinearWindow<double>(1e-12);
}
RC_GTEST_PROP(LinearWindow, IsTheExtremumAtEveryRealTimeFloat, ()) {
    checkLinearWindow<float>(2e-6);
}

RC_GTEST_PROP(Window, AnyFunctionGivesWhatTheBuiltInOrderGives, (bool isLinear)) {
    const TimeBase base = anyTimeBase();
    const Signal signal = anySignal(isLinear ? linear : held, base, -3, 3);
    const double width = anyWidth(signal, base);
    auto built = signal.toTrace();
    auto general = built;
    built.timedMax(width);
    general.timedWindow(width, [](double a, double b) { return a >= b; });
    RC_ASSERT(same(general, built));
}

RC_GTEST_PROP(Window, BoundsShiftTheWindow, (bool isLinear)) {
    const TimeBase base{true, 0};
    const Signal signal = anySignal(isLinear ? linear : held, base, -3, 3);
    const double a = 0.25 * *rc::gen::inRange(-12, 12);
    const double width = 0.25 * *rc::gen::inRange(0, 12);
    const auto result = signal.toTrace().Eventually(a, a + width);
    RC_LOG() << signal << " a " << a << " width " << width << testing::PrintToString(result)
             << '\n';
    for (double t : withMiddles({}, signal.start() + std::max(0.0, -a), result.lastKnownTime)) {
        const double expected = extremumIn(signal, 1, t + a, width);
        RC_ASSERT(std::fabs(*result.valueAt(t) - expected) < 1e-12);
    }
}

// ---- Chosen cases ------------------------------------------------------------------------------

TEST(Window, EmptyAndConstantTracesStayAsTheyAre) {
    const TimedTrace_T<double> constant(4.0);
    EXPECT_TRUE(same(constant.Globally(1, 2), constant));
    EXPECT_TRUE(same(trace(linear, "", 3).Eventually(1, 2), trace(linear, "", 3)));
}

template <class T>
class NanInTheWindow : public testing::Test {};
using TypesWithNan = testing::Types<double, float, HalfFloat>;
TYPED_TEST_SUITE(NanInTheWindow, TypesWithNan);

template <class T>
bool isNanAt(const TimedTrace_T<T>& result, double time) {
    return support::isNan(*result.valueAt(time));
}

TYPED_TEST(NanInTheWindow, MakesItNanForAsLongAsItIsThere) {
    using T = TypeParam;
    auto steps = trace<T>("0:1 1:5 2:nan 3:7", 9);
    for (const auto& result : {steps.Eventually(0, 1), steps.Globally(0, 1)}) {
        EXPECT_FALSE(isNanAt(result, 0.9));
        EXPECT_TRUE(isNanAt(result, 1));
        EXPECT_TRUE(isNanAt(result, 2.9));
        EXPECT_EQ(*result.valueAt(3), T(7));
    }
    // A line is not known from the sample before the NaN to the one after it.
    const auto missed = trace<T>(linear, "0:20 3:-30 4:-10 6:nan").Eventually(0, 3);
    EXPECT_FALSE(isNanAt(missed, 0.9));
    EXPECT_TRUE(isNanAt(missed, 1.4));
    const auto invented = trace<T>(linear, "0:0 4:4 8:nan").Globally(0, 1);
    EXPECT_EQ(*invented.valueAt(2), T(2));
    EXPECT_TRUE(isNanAt(invented, 3.5));
    const auto rising = trace<T>(linear, "0:0 2:2 3:nan 4:4 9:9").Eventually(0, 1);
    EXPECT_EQ(*rising.valueAt(0.5), T(1.5));
    EXPECT_TRUE(isNanAt(rising, 1.5));
    EXPECT_TRUE(isNanAt(rising, 3.5));
    EXPECT_EQ(*rising.valueAt(5), T(6));
}

TEST(Window, KeepsTheEnumerationAndTheInterpolation) {
    auto modes = trace<std::int8_t>("0:1 1:2", 5);
    modes.enumTypeName = "Mode";
    EXPECT_EQ(modes.Eventually(0, 1).enumTypeName, "Mode");
    EXPECT_EQ(modes.Eventually(1, 2).enumTypeName, "Mode");
    EXPECT_EQ(modes.Eventually(0, 9).enumTypeName, "Mode");
    EXPECT_EQ(modes.Shift(1, true).enumTypeName, "Mode");
}

TEST(Window, RefusesAWidthThatIsNone) {
    auto signal = trace("0:1 2:5", 6);
    const auto before = signal;
    EXPECT_THROW(signal.timedMax(-1), AssessmentInternalException);
    EXPECT_THROW(signal.Globally(3, 1), AssessmentInternalException);
    EXPECT_THROW(signal.Globally(0, nan), AssessmentInternalException);
    EXPECT_THROW(signal.Eventually(-infinity, 0), AssessmentInternalException);
    EXPECT_THROW(TimedTrace_T<double>(1).Eventually(nan, 1), AssessmentInternalException);
    EXPECT_THROW(signal.timedWindow(1, {}), std::bad_function_call);
    EXPECT_TRUE(same(signal, before));
}

TEST(Window, EndlessKnowledgeAllowsEndlessWindows) {
    EXPECT_TRUE(
        same(trace("0:1 2:5 4:3", infinity).Eventually(0, infinity), trace("0:5 4:3", infinity)));
    const auto line = trace(linear, "0:1 2:5 4:3", infinity).Eventually(0, 1);
    EXPECT_EQ(line.lastKnownTime, infinity);
    EXPECT_EQ(*line.valueAt(0.5), 4);
    EXPECT_EQ(*line.valueAt(1e300), 3);

    auto endlessSlope = trace(linear, "0:0 4:0", infinity);
    endlessSlope.points.back().derivative = 1;
    EXPECT_EQ(*endlessSlope.Eventually(0, 2).valueAt(3), 1);
    EXPECT_EQ(*endlessSlope.Eventually(0, 2).valueAt(10), 8);
    EXPECT_EQ(*endlessSlope.Globally(0, 2).valueAt(10), 6);
}

// The setting is process-wide, so it goes back even if an assertion fails.
struct Minimize {
    Minimize() { configLastWindow::minimize = true; }
    ~Minimize() { configLastWindow::minimize = false; }
};

TEST(MinimizedLastWindow, StaysKnownWhereAValueDecides) {
    const Minimize on;
    EXPECT_TRUE(same(trace<bool>("0:0 5:1", 10).Eventually(0, 2), trace<bool>("0:0 3:1", 10)));
    EXPECT_TRUE(same(trace<bool>("0:1 9:0", 10).Eventually(0, 4), trace<bool>("0:1", before(9))));
    EXPECT_TRUE(same(trace<bool>("0:1 9:0", 10).Globally(0, 4), trace<bool>("0:1 5:0", 10)));
    EXPECT_TRUE(same(trace<bool>("0:0", 10).Eventually(0, 4), trace<bool>("0:0", 6)));
}

RC_GTEST_PROP(MinimizedLastWindow, ChangesNothingThatIsKnownWithoutIt, (bool globally)) {
    const TimeBase base = anyTimeBase();
    const Signal signal = anySignal(held, base, 0, 1);
    const auto flags = signal.toTrace<bool>();
    const double width = anyWidth(signal, base);
    const auto window = [&] {
        return globally ? flags.Globally(0, width) : flags.Eventually(0, width);
    };
    const auto usual = window();
    const Minimize on;
    const auto minimized = window();
    RC_ASSERT(minimized.lastKnownTime >= usual.lastKnownTime);
    for (double t : withMiddles({}, signal.start(), usual.lastKnownTime)) {
        RC_ASSERT(minimized.valueAt(t) == usual.valueAt(t));
    }
    // Where the setting adds knowledge, the part of the window that is known decides alone.
    for (double t :
         withMiddles(signal.times, after(usual.lastKnownTime), minimized.lastKnownTime)) {
        RC_ASSERT(extremumIn(signal, globally ? -1 : 1, t, infinity) == (globally ? 0 : 1));
        RC_ASSERT(*minimized.valueAt(t) == !globally);
    }
}

}  // namespace
}  // namespace vorm::test
