#include "support/expressions.hpp"
#include "support/traces.hpp"

namespace vorm::test {
namespace {

constexpr double step = std::numeric_limits<double>::denorm_min();

InfluenceSpan spanOf(const Expression& formula, const Expression& part) {
    return ExpressionInfluenceConeVisitor().getTree(formula).at(part);
}

TEST(ExpressionInfluenceCone, AddsOffsetsAndWindowsAndUnitesOccurrences) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const Expression y = signal(2);
    const Expression window = f.Globally(1, 4, x);
    const struct {
        Expression formula;
        InfluenceSpan ofX;
    } rows[] = {
        {x, {0, 0}},
        {f.Gt(f.Plus(y, f.Abs(x)), y), {0, 0}},
        {cast_op(x, cast_op::Target()), {0, 0}},
        {f.Shift(-2, x), {-2, -2}},
        {f.Globally(1, 4, f.Shift(-2, f.Eventually(0, 3, x))), {-1, 5}},
        {f.Or(f.Shift(3, x), f.Globally(-1, 1, x)), {-1, 3}},
        {f.Or(f.Shift(3, window), window), {1, 7}},
        {f.Eventually(-2, 1, f.Until(f.Shift(-3, x), 2, 5, f.Plus(y, x))), {-5, infinity}},
        {f.Rise(1, 2, x), {0, 2}},
        {f.Implies(y, f.Shift(1, x)), {1, 1}},
        {f.Until(f.Shift(1, x), 2, 5, y), {1, infinity}},
        {f.Until(y, 2, 5, f.Shift(1, x)), {1, infinity}},
        {f.Until(y, -2, 5, x), {-2, infinity}},
        {f.Slope(x), {0, step}},
        {f.EpsilonShift(0, x), {-step, 0}},
        {f.EpsilonShift(-1, x), {0, step}},
        {f.EpsilonShift(nan, x), {0, step}},
        {f.Shift(nan, x), {-infinity, infinity}},
        {f.Globally(0, nan, x), {0, infinity}},
        {f.Globally(-infinity, 0, f.Globally(infinity, infinity, x)), {-infinity, infinity}},
    };
    for (const auto& row : rows) {
        const InfluenceSpan found = spanOf(row.formula, x);
        EXPECT_EQ(found, row.ofX) << row.formula << ": " << found.lo << " to " << found.hi;
    }
}

TEST(ExpressionInfluenceCone, KnowsEverySubFormulaAndNoAliases) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const Expression implies = f.Implies(f.Shift(1, x), x);
    const auto cone = ExpressionInfluenceConeVisitor().getTree(f.Globally(0, 2, implies));
    EXPECT_EQ(cone.size(), 5U);
    EXPECT_EQ(cone.at(implies), cone.at(boost::get<alias>(implies).body));
    EXPECT_EQ(cone.at(f.Not(f.Shift(1, x))), (InfluenceSpan{0, 2}));
    EXPECT_EQ(cone.at(x), (InfluenceSpan{0, 3}));
}

}  // namespace
}  // namespace vorm::test
