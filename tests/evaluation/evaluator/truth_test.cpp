// All small truths in three values, and what windows, until and shifts make of them.

#include "support/traces.hpp"

#include <vorm/evaluation/evaluator/truth.hpp>

#include <array>
#include <cmath>
#include <functional>

namespace vorm::test {
namespace {

using evaluation::epsilonShifted;
using evaluation::knownPieces;
using evaluation::Truth;
using evaluation::truthOf;

// Values from minus infinity on and from each of four times one apart.
using Values = std::array<int, 5>;

constexpr double truthStart = 256;  // all times in one binade

Truth truthFrom(const Values& values) {
    Truth truth(static_cast<std::int8_t>(values[0]));
    for (std::size_t i = 1; i < values.size(); ++i) {
        truth.push_back({truthStart + static_cast<double>(i), static_cast<std::int8_t>(values[i])});
    }
    truth.lastKnownTime = infinity;
    return truth;
}

int at(const Values& values, double time) {
    const double index = std::clamp(std::floor(time - truthStart), 0.0, 4.0);
    return values[static_cast<std::size_t>(index)];
}

void forEachTruth(const std::function<void(const Values&)>& visit) {
    for (int number = 0; number < 243; ++number) {
        Values values;
        int rest = number;
        for (int& value : values) {
            value = rest % 3 - 1;
            rest /= 3;
        }
        visit(values);
    }
}

// Whether the until holds, what is open being taken for true or for false.
bool holds(const Values& condition, const Values& goal, double time, double a, double b,
           bool openIsTrue) {
    const auto isTrue = [openIsTrue](int value) { return value > 0 || (value == 0 && openIsTrue); };
    const auto throughout = [&](double from, double to) {
        bool all = true;
        for (double seen = from; seen < to; seen += 0.5) {
            all = all && isTrue(at(condition, seen));
        }
        return all;
    };
    for (double reached = time + a; reached <= time + b; reached += 0.5) {
        if (isTrue(at(goal, reached)) && throughout(time, reached) &&
            throughout(time, time + a + 0.25)) {
            return true;
        }
    }
    return false;
}

// The value that no filling of what is open changes.
int until(const Values& condition, const Values& goal, double time, double a, double b) {
    return holds(condition, goal, time, a, b, false)  ? 1
           : holds(condition, goal, time, a, b, true) ? 0
                                                      : -1;
}

constexpr Values always{1, 1, 1, 1, 1};

TEST(Truth, WindowsAreDecidedByWhatIsKnown) {
    forEachTruth([](const Values& values) {
        const Truth truth = truthFrom(values);
        Values negated;
        std::transform(values.begin(), values.end(), negated.begin(), std::negate());
        for (const auto& [a, b] : {std::pair{0.0, 1.0}, {1.0, 3.0}, {-2.0, 1.0}, {-3.0, -1.0}}) {
            const Truth eventually = truth.Eventually(a, b);
            const Truth globally = truth.Globally(a, b);
            for (double time = truthStart - 4; time <= truthStart + 8; time += 0.5) {
                // Seen from the window's begin on.
                const double from = time + a;
                ASSERT_EQ(*eventually.valueAt(time), until(always, values, from, 0, b - a));
                ASSERT_EQ(*globally.valueAt(time), -until(always, negated, from, 0, b - a));
            }
        }
    });
}

TEST(Truth, UntilIsDecidedByWhatIsKnown) {
    forEachTruth([](const Values& condition) {
        const Truth phi = truthFrom(condition);
        forEachTruth([&](const Values& goal) {
            const Truth psi = truthFrom(goal);
            for (const auto& [a, b] : {std::pair{0.0, 0.0}, {0.0, 2.0}, {1.0, 2.0}}) {
                const Truth actual = phi.Until(psi, a, b);
                for (double time = truthStart - 2; time <= truthStart + 5; time += 0.5) {
                    ASSERT_EQ(*actual.valueAt(time), until(condition, goal, time, a, b))
                        << testing::PrintToString(phi) << testing::PrintToString(psi) << time;
                }
            }
        });
    });
}

TEST(Truth, JustBeforeAndJustAfter) {
    forEachTruth([](const Values& values) {
        const Truth truth = truthFrom(values);
        const Truth before = epsilonShifted(truth, 1);
        const Truth after = epsilonShifted(truth, -1);
        bool hasBegun = values[0] != 0;
        for (std::size_t i = 1; i < values.size(); ++i) {
            const double time = truthStart + static_cast<double>(i);
            const bool isFirst = !hasBegun && values[i] != 0;
            ASSERT_EQ(*before.valueAt(time), isFirst          ? values[i]
                                             : values[i] == 0 ? 0
                                                              : values[i - 1]);
            ASSERT_EQ(*before.valueAt(std::nextafter(time, infinity)), values[i]);
            ASSERT_EQ(*after.valueAt(time), values[i]);
            ASSERT_EQ(*after.valueAt(std::nextafter(time, -infinity)),
                      values[i - 1] == 0 ? 0 : values[i]);
            hasBegun = hasBegun || values[i] != 0;
        }
    });
}

TEST(Truth, ComesFromItsKnownPieces) {
    forEachTruth([](const Values& values) {
        const Truth truth = truthFrom(values);
        ASSERT_TRUE(same(truthOf(knownPieces(truth)), truth));
    });
}

}  // namespace
}  // namespace vorm::test
