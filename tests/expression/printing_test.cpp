#include "support/expressions.hpp"

#include <rapidcheck/gtest.h>

#include <locale>
#include <set>

namespace vorm::test {
namespace {

// All that the text of a formula shows: the formulas whose texts it is made of.
void collectShown(const Expression& tree, std::vector<Expression>& shown) {
    shown.push_back(tree);
    struct {
        std::vector<Expression>& shown;
        void operator()(const nilClass&) const {}
        void operator()(const constantValue&) const {}
        void operator()(const variable&) const {}
        void operator()(const unary_op& node) const { collectShown(node.child, shown); }
        void operator()(const binary_op& node) const {
            collectShown(node.lhs, shown);
            collectShown(node.rhs, shown);
        }
        void operator()(const alias& node) const {
            for (const AliasArgument& argument : node.arguments) {
                if (const auto* formula = boost::get<Expression>(&argument)) {
                    collectShown(*formula, shown);
                }
            }
        }
    } const visitor{shown};
    boost::apply_visitor(visitor, tree);
}

RC_GTEST_PROP(ExpressionText, LabelTreeHasOneTextForEachFormulaThatIsShown, ()) {
    const Expression tree = anyFormula(1 + anyIndex(4));
    ExpressionLabelTreeVisitor visitor;
    const auto labels = visitor.getTree(tree);
    std::vector<Expression> shown;
    collectShown(tree, shown);
    std::set<std::string> distinct;
    for (const Expression& formula : shown) {
        distinct.insert(Meaning(false).of(formula));
        // Equal formulas can have different names and labels; then one of their texts stands.
        bool isTextOfAnEqualOne = false;
        for (const Expression& other : shown) {
            isTextOfAnEqualOne |= ExpressionEqual<Inclusive>()(formula, other) &&
                                  labels.at(formula) == to_string(other);
        }
        RC_ASSERT(isTextOfAnEqualOne);
    }
    RC_ASSERT(labels.size() == distinct.size());
    RC_ASSERT(visitor.getTree(nilClass()).size() == 1U);
}

TEST(ExpressionText, FollowsTheRulesOfEachKind) {
    ExpressionFactory f;
    const Expression x = f.Variable("x");
    const Expression y = f.Variable("y");
    const Expression p = f.Variable("p");
    const char* const nothing = nullptr;
    const struct {
        Expression formula;
        std::string text;
    } rows[] = {
        {Expression(), ""},
        {f.Not(Expression()), "~()"},
        {f.UnaryMinus(x), "-(x)"},
        {f.Abs(x), "abs(x)"},
        {f.Slope(x), "slope(x)"},
        {f.Plus(f.Plus(x, y), p), "((x + y) + p)"},
        {f.Multiply(f.Minus(x, y), p), "((x - y) * p)"},
        {f.And(f.Eq(x, y), f.Neq(x, y)), "((x == y) & (x ~= y))"},
        {f.Or(f.Lt(x, y), f.Leq(x, y)), "((x < y) | (x <= y))"},
        {f.Gt(x, f.Geq(x, y)), "(x > (x >= y))"},
        {f.Eventually(0, 1.5, x), "Eventually[0,1.5](x)"},
        {f.Globally(-1e-7, 1234567, x), "Globally[-1e-07,1.23457e+06](x)"},
        {f.Until(x, 0, 2, y), "(x Until[0,2] y)"},
        {f.Shift(0.5, x), "Shift[0.5](x)"},
        {f.EpsilonShift(-1, x), "EpsilonShift[-1](x)"},
        {f.Implies(p, y), "p->y"},
        {f.Rise(3, 0.25, x), "(x Rise [00.25] 3)"},
        {f.Fall(0.1, 2, x), "(x Fall [02] 0.1)"},
        {f.Constant<double>(1.0 / 3, ""), "0.333333"},
        {f.Constant(true), "true"},
        {f.Constant(std::int8_t{-7}), "-7"},
        {f.Constant(std::uint64_t{18446744073709551615U}), "18446744073709551615"},
        {f.Constant(HalfFloat(0.5)), "0.5"},
        {f.Constant(ValueType<FixedPoint>(FixedPoint(-0.0625))), "-0.0625"},
        {f.Constant(Verdict(resultEnum_t::NO_RESULT)), "NO_RESULT"},
        {cast_op(x, cast_op::castFlag<bool>()), "cast(x)"},
        {cast_op(x, cast_op::castFlag<bool>(), "bool"), "bool(x)"},
        {alias(y, true, alias(x, 1, 2.5, std::string(" s ")), nothing, "c", p), "true12.5 s cp"},
        {timed_unary_op(VORM_OP::Plus,
                        binary_op(VORM_OP::Or, x, unary_op(VORM_OP::Or, y, "u"), "b"), "t", 2),
         "t[2]((x b u(y)))"},
        {timedwindow_unary_op(VORM_OP::Or,
                              timedwindow_binary_op(VORM_OP::Or, x, y, "v", nanOf(1), -0.5), "w", 1,
                              std::numeric_limits<double>::infinity()),
         "w[1,inf]((x v[nan,-0.5] y))"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(to_string(row.formula), row.text);
        EXPECT_EQ(testing::PrintToString(row.formula), row.text);
    }
}

TEST(ExpressionText, DoesNotDependOnTheLocale) {
    struct Grouping : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
    ExpressionFactory f;
    const std::string text =
        to_string(alias(f.Shift(0.5, f.Constant(12345.5)), 1000, f.Constant(12345.5)));
    const std::string shifted = to_string(f.Shift(0.5, f.Constant<int>(12345)));
    std::locale::global(before);
    EXPECT_EQ(text, "100012345.5");
    EXPECT_EQ(shifted, "Shift[0.5](12345)");
}

}  // namespace
}  // namespace vorm::test
