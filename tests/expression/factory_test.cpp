#include "support/expressions.hpp"
#include "support/traces.hpp"

namespace vorm::test {
namespace {

TEST(ExpressionFactory, BuildsTheKindAndCodeOfEachOperation) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const struct {
        Expression formula;
        int kind;
        int code;
    } rows[] = {
        {f.Plus(x, x), 4, 2},
        {f.Minus(x, x), 4, 3},
        {f.UnaryMinus(x), 3, 4},
        {f.Multiply(x, x), 4, 5},
        {f.Abs(x), 3, 6},
        {f.Slope(x), 3, 7},
        {f.Eq(x, x), 4, 10},
        {f.Neq(x, x), 4, 11},
        {f.Lt(x, x), 4, 12},
        {f.Leq(x, x), 4, 13},
        {f.Gt(x, x), 4, 14},
        {f.Geq(x, x), 4, 15},
        {f.And(x, x), 4, 16},
        {f.Or(x, x), 4, 17},
        {f.Not(x), 3, 18},
        {f.Eventually(0, 1, x), 6, 19},
        {f.Globally(0, 1, x), 6, 20},
        {f.Until(x, 0, 1, x), 7, 21},
        {f.Shift(1, x), 5, 22},
        {f.EpsilonShift(1, x), 5, 23},
        {Expression(), 0, -1},
        {f.Constant(1.0), 1, -1},
        {x, 2, -1},
        {cast_op(x, cast_op::Target()), 8, 1},
        {f.Implies(x, x), 9, -1},
        {f.Rise(1, 2, x), 9, -1},
    };
    struct {
        int operator()(const unary_op& node) const { return static_cast<int>(node.op); }
        int operator()(const binary_op& node) const { return static_cast<int>(node.op); }
        int operator()(const nilClass&) const { return -1; }
        int operator()(const constantValue&) const { return -1; }
        int operator()(const variable&) const { return -1; }
        int operator()(const alias&) const { return -1; }
    } const codeOf{};
    for (const auto& row : rows) {
        EXPECT_EQ(row.formula.which(), row.kind) << row.formula;
        EXPECT_EQ(boost::apply_visitor(codeOf, row.formula), row.code) << row.formula;
    }
}

TEST(ExpressionFactory, KeepsOperandsAndBoundsInOrder) {
    const ExpressionFactory f;
    const auto until = boost::get<timedwindow_binary_op>(f.Until(signal(1), 3, 2, signal(2)));
    EXPECT_EQ(to_string(until.lhs) + to_string(until.rhs), "x1x2");
    EXPECT_EQ(until.a, 3);
    EXPECT_EQ(until.b, 2);
    const auto always = boost::get<timedwindow_unary_op>(f.Globally(5, 4, signal(3)));
    EXPECT_EQ(to_string(always.child), "x3");
    EXPECT_EQ(always.a, 5);
    EXPECT_EQ(always.b, 4);
}

TEST(ExpressionFactory, BuildsItsCompositionsFromItsOperations) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const Expression y = signal(2);
    const Expression three = f.Constant(3.0);
    const struct {
        Expression composition;
        Expression body;
        std::size_t arguments;
    } rows[] = {
        {f.Implies(x, y), f.Or(f.Not(x), y), 3},
        {f.Rise(3, 2, x), f.Gt(f.Minus(f.Shift(2, x), x), three), 8},
        {f.Fall(3, 2, x), f.Gt(f.Minus(x, f.Shift(2, x)), three), 8},
    };
    for (const auto& row : rows) {
        const auto& node = boost::get<alias>(row.composition);
        EXPECT_TRUE(ExpressionEqual<Inclusive>()(node.body, row.body)) << row.composition;
        EXPECT_EQ(node.arguments.size(), row.arguments);
    }
    const auto& arguments = boost::get<alias>(rows[1].composition).arguments;
    const int kinds[] = {3, 5, 3, 1, 2, 3, 5, 3};
    EXPECT_STREQ(boost::get<const char*>(arguments[2]), " Rise [");
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        EXPECT_EQ(arguments[i].which(), kinds[i]);
    }
}

TEST(ExpressionFactory, DrawsANewIdForEachSignalUnlessItIsGiven) {
    const ExpressionFactory f;
    const ExpressionEqual<Inclusive> same;
    EXPECT_FALSE(same(f.Variable("x"), f.Variable("x")));
    EXPECT_TRUE(same(f.Variable("x", idOf(1)), f.Variable("x", idOf(1))));
    EXPECT_TRUE(f.getTraces().empty());
}

TEST(ExpressionFactory, KeepsTheTracesOfItsLeaves) {
    ExpressionFactory f;
    const TimedTrace course = trace<float>("0:1 2:3", 5);
    const Expression x = f.Variable("x", course);
    const Expression two = f.Constant<double>(2, "two");
    f.Constant<double>(2, "again");
    f.Fall(7, 1, x);
    EXPECT_TRUE(same(f.getTraces().at(x).get<float>(), course.get<float>()));
    const auto& constant = f.getTraces().at(two).get<double>();
    EXPECT_TRUE(same(constant, TimedTrace_T<double>(2.0)));
    EXPECT_EQ(f.getTraces().at(f.Constant(7.0)).getLastKnownTime(), infinity);
    EXPECT_EQ(f.getTraces().size(), 3U);
    const auto& literal = boost::get<constantValue>(two);
    EXPECT_EQ(literal.tag, 1);
    EXPECT_EQ(literal.name, "two");
    EXPECT_EQ(boost::get<double>(literal.value), 2);
}

}  // namespace
}  // namespace vorm::test
