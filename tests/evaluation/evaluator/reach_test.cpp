#include "random_cases.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/evaluator/reach.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace vorm::test {
namespace {

using namespace vorm::evaluation;

TEST(Reach, IsWhatWindowsAndShiftsAddUpTo) {
    struct Row {
        const char* formula;
        double expected;
    };
    for (const Row& row : {
             Row{"x > 2 & ~(y == 1) -> abs(x + y) < 3", 0},
             Row{"always[0, 3](x > 2)", 3.5},
             Row{"Shift[-2](x > 2 | eventually[-3, 1](y > 2))", 6},
             Row{"x > 2 until[0, 1] y > 2", infinity},
             Row{"rise(x > 2)", infinity},
             Row{"slope(x) > 2", infinity},
             Row{"Shift[1](x) > 2", infinity},
             Row{"always[0, 3](x) > 2", infinity},
             Row{"Rise[1](x, 2)", infinity},
         }) {
        EXPECT_EQ(reachOf(expressionOf(ParsedFormula(row.formula)), 0.5), row.expected)
            << row.formula;
    }
}

bool isKnownAround(double time, double reach, const Expression& formula,
                   const Recording& recording) {
    bool isKnown = true;
    support::forEachNode(formula, [&](const Expression& node) {
        if (const auto* signal = boost::get<variable>(&node)) {
            const TracePieces& pieces = *recording.traces.at(signal->id);
            isKnown = isKnown && std::any_of(pieces.begin(), pieces.end(), [&](const auto& piece) {
                          return piece.getStartTime() <= time - reach &&
                                 time + reach <= piece.getLastKnownTime();
                      });
        }
    });
    return isKnown;
}

RC_GTEST_PROP(Reach, WhatIsKnownWithinItDecidesRobustness, ()) {
    const Recording recording = anyRecording();
    const Expression formula = FormulaGrower({}).truth(anyIndex(3));
    constexpr double step = 1e-9;
    const double reach = reachOf(formula, step);
    const auto results = evaluate({{&formula, evaluation::Meaning::LeastRobustness},
                                   {&formula, evaluation::Meaning::GreatestRobustness}},
                                  recording.lookup());
    const auto& least = results[0].pieces->front().get<double>();
    const auto& greatest = results[1].pieces->front().get<double>();
    for (int slot = firstSlot; slot <= lastSlot; ++slot) {
        const double time = timeOf(slot);
        if (isKnownAround(time, reach, formula, recording)) {
            const double from = *least.valueAt(time);
            const double to = *greatest.valueAt(time);
            // Lines are read from different samples.
            const bool isDecided = from == to || std::fabs(from - to) < 1e-9;
            if (!isDecided) {
                RC_LOG() << to_string(formula) << " at " << time << ": " << from << " to " << to
                         << '\n';
            }
            RC_ASSERT(isDecided);
        }
    }
}

}  // namespace
}  // namespace vorm::test
