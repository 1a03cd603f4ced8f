// Comparisons of lines against exact integers, and where steps, rounding and NaN decide.

#include "support/signals.hpp"

#include <vorm/assessments.hpp>
#include <vorm/evaluation/evaluator/comparison.hpp>

#include <boost/multiprecision/cpp_int.hpp>
#include <rapidcheck/gtest.h>

#include <set>

namespace vorm::test {
namespace {

using evaluation::TracePieces;
using evaluation::Truth;

// The three orders of two operands as truth.
struct Orders {
    Truth less;
    Truth equal;
    Truth greater;

    // -1, 0, 1 as the left one is less, equal, greater; 2 where neither, 3 where it is open.
    int at(double time) const {
        return *less.valueAt(time) == 0     ? 3
               : *less.valueAt(time) > 0    ? -1
               : *equal.valueAt(time) > 0   ? 0
               : *greater.valueAt(time) > 0 ? 1
                                            : 2;
    }
};

Orders ordersOf(const TimedTrace_T<double>& left, const TimedTrace_T<double>& right,
                bool isComputed = false) {
    const TracePieces l{left};
    const TracePieces r{right};
    const auto compared = [&](VORM_OP op) {
        return evaluation::compare(op, {l, isComputed}, {r, false});
    };
    return {compared(VORM_OP::Lt), compared(VORM_OP::Eq), compared(VORM_OP::Gt)};
}

using Wide = boost::multiprecision::int128_t;

constexpr double firstTime = 1048576;  // 2^20, so that a step of time is 2^-32
constexpr double halfStep = 0x1p-33;   // the unit of exact times
const double lastTime = firstTime + 60;

Wide exactly(double time) {
    return static_cast<Wide>((time - firstTime) / halfStep);
}

// The sign of the difference of two lines through whole numbers at a number of half steps.
int exactSign(const Signal& left, const Signal& right, const Wide& time) {
    const auto fraction = [time](const Signal& line) {
        std::size_t i = 0;
        while (i + 2 < line.times.size() && exactly(line.times[i + 1]) <= time) {
            ++i;
        }
        const Wide length = exactly(line.times[i + 1]) - exactly(line.times[i]);
        const Wide rise = static_cast<Wide>(line.values[i + 1] - line.values[i]);
        return std::pair<Wide, Wide>(
            static_cast<Wide>(line.values[i]) * length + (time - exactly(line.times[i])) * rise,
            length);
    };
    const auto [l, lengthLeft] = fraction(left);
    const auto [r, lengthRight] = fraction(right);
    const Wide difference = l * lengthRight - r * lengthLeft;
    return int{difference > 0} - int{difference < 0};
}

Signal anyLine() {
    Signal line;
    line.method = linear;
    std::set<int> times{0, 60};
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
        times.insert(*rc::gen::inRange(1, 60));
    }
    for (const int time : times) {
        line.times.push_back(firstTime + time);
        line.values.push_back(*rc::gen::inRange(-9, 10));
    }
    line.known = lastTime;
    return line;
}

RC_GTEST_PROP(Comparison, OfLinesIsThatOfExactNumbers, ()) {
    const Signal left = anyLine();
    const Signal right = anyLine();
    RC_LOG() << left << '\n' << right << '\n';
    const Orders orders = ordersOf(left.toTrace(), right.toTrace());
    std::set<double> times;
    for (const Truth* truth : {&orders.less, &orders.equal, &orders.greater}) {
        for (const auto& point : truth->points) {
            times.insert({before(point.time), point.time, after(point.time)});
        }
    }
    for (double time = firstTime; time <= lastTime; time += 0.5) {
        times.insert(time);
    }
    for (const double time : times) {
        if (!(firstTime < time && time < lastTime)) {
            continue;
        }
        const auto isSample = [time](const Signal& line) {
            return std::binary_search(line.times.begin(), line.times.end(), time);
        };
        const Wide exact = exactly(time);
        const int sign = exactSign(left, right, exact);
        const int earlier = exactSign(left, right, exact - 1);
        const int later = exactSign(left, right, exact + 1);
        const bool isNearCrossing = sign != 0 && (earlier != sign || later != sign);
        const int order = orders.at(time);
        RC_LOG() << time - firstTime << ": " << order << " is " << sign << '\n';
        if (!isNearCrossing || (isSample(left) && isSample(right))) {
            RC_ASSERT(order == sign || (isNearCrossing && order == 0));
        } else {
            RC_ASSERT(order == 0 || earlier == 0 || later == 0);
        }
    }
}

TEST(Comparison, TellsStepsRoundingAndNanApart) {
    const TimedTrace_T<double> one(1);
    TimedTrace_T<double> step = trace(linear, "8:0");
    step.push_back({before(9), 0});
    step.push_back({9, 2});
    step.push_back({10, 2});
    struct Row {
        const char* what;
        TimedTrace_T<double> left;
        TimedTrace_T<double> right;
        bool isComputed;
        double time;
        int order;
    };
    const auto nearlyOne = trace(linear, "8:0.5 9:0.99999999999999989 10:0.5");
    const auto throughNan = trace(linear, "8:0 9:0.5 10:nan 11:3 12:3");
    const auto steps = trace("8:1 10:5 11:1", 12);
    const auto rising = trace(linear, "8:0 12:4");
    const std::vector<Row> rows{
        {"recorded", nearlyOne, one, false, 9, -1},
        {"computed, rounded", nearlyOne, one, true, 9, 0},
        {"a step crosses nothing", step, one, true, before(9), -1},
        {"a step crosses nothing", step, one, true, 9, 1},
        {"before a NaN", throughNan, one, false, 9, -1},
        {"on the way to a NaN", throughNan, one, false, after(9), 2},
        {"on the way from a NaN", throughNan, one, false, 10.5, 2},
        {"after a NaN", throughNan, one, false, 11, 1},
        {"a held one is crossed", rising, steps, false, 9, 0},
        {"a held one is crossed", rising, steps, false, after(9), 1},
        {"a held one jumps", rising, steps, false, before(10), 1},
        {"a held one jumps", rising, steps, false, 10, -1},
        {"a held one jumps back", rising, steps, false, 11, 1},
        {"equal infinities", trace(linear, "8:inf 9:inf"), trace("8:inf", 9), false, 8.5, 0},
        {"the end", rising, steps, false, 12, 1},
        {"after the end", rising, steps, false, after(12), 3},
        {"before the begin", rising, steps, false, before(8), 3},
        {"a slope that was cut",
         [] {
             auto cut = trace(linear, "8:0 12:4");
             cut.popBackAfter(10);
             return cut;
         }(),
         one, false, after(9), 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ordersOf(row.left, row.right, row.isComputed).at(row.time), row.order)
            << row.what;
    }
}

}  // namespace
}  // namespace vorm::test
