// Trees as values, and trees so deep that recursion would not get through them.

#include "support/expressions.hpp"
#include "support/thrown.hpp"

#include <rapidcheck/gtest.h>

#include <functional>

namespace vorm::test {
namespace {

bool sameTree(const Expression& a, const Expression& b) {
    return ExpressionEqual<Inclusive>()(a, b);
}

RC_GTEST_PROP(ExpressionTree, CopiesAreEqualAndIndependentAndMovesLeaveUsableTrees, ()) {
    const Expression source = anyFormula(5);
    const std::string meaning = Meaning(false).of(source);
    const std::string text = to_string(source);
    Expression target = anyFormula(4);
    {
        Expression copy(source);
        Expression moved(std::move(copy));
        copy = source;
        target = std::move(copy);
        RC_ASSERT(Meaning(false).of(moved) == meaning);
        Meaning(false).of(copy);  // NOLINT(bugprone-use-after-move): a moved-from tree can be read
        copy = anyFormula(2);
        const Expression& itself = copy;
        copy = itself;
    }
    RC_ASSERT(Meaning(false).of(target) == meaning);
    RC_ASSERT(to_string(target) == text);
    RC_ASSERT(Meaning(false).of(source) == meaning);
}

TEST(ExpressionTree, OperandsThatAreMovedInStayWhereTheyAreInMemory) {
    const ExpressionFactory f;
    Expression inner = f.Not(f.And(f.Not(signal(1)), f.Shift(2, signal(2))));
    const auto* conjunction = &boost::get<binary_op>(boost::get<unary_op>(inner).child);
    const auto* negation = &boost::get<unary_op>(conjunction->lhs);
    const auto* shift = &boost::get<timed_unary_op>(conjunction->rhs);

    Expression outer = f.Globally(0, 1, f.Implies(f.Or(std::move(inner), signal(3)), signal(4)));
    outer = cast_op(f.Until(signal(5), 0, 1, std::move(outer)), cast_op::Target());

    const auto& until = boost::get<timedwindow_binary_op>(boost::get<cast_op>(outer).child);
    const auto& implication = boost::get<alias>(boost::get<timedwindow_unary_op>(until.rhs).child);
    const auto& premise = boost::get<Expression>(implication.arguments.front());
    const auto& found = boost::get<unary_op>(boost::get<binary_op>(premise).lhs);
    EXPECT_EQ(&boost::get<binary_op>(found.child), conjunction);
    EXPECT_EQ(&boost::get<unary_op>(conjunction->lhs), negation);
    EXPECT_EQ(&boost::get<timed_unary_op>(conjunction->rhs), shift);
}

struct Shape {
    std::string name;
    std::function<Expression(Expression)> wrap;
};

void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.name;
}

class DeepExpression : public testing::TestWithParam<Shape> {
protected:
    static Expression build(std::size_t levels) { return tower(levels, GetParam().wrap); }
};

const ExpressionFactory shapeFactory;
INSTANTIATE_TEST_SUITE_P(
    Shapes, DeepExpression,
    testing::Values(
        Shape{"unary", [](Expression x) { return shapeFactory.Not(std::move(x)); }},
        Shape{"left", [](Expression x) { return shapeFactory.Plus(std::move(x), signal(1)); }},
        Shape{"right",
              [](Expression x) { return shapeFactory.Until(signal(1), 0, 1, std::move(x)); }},
        Shape{"cast", [](Expression x) { return cast_op(std::move(x), cast_op::Target()); }},
        Shape{"body", [](Expression x) { return alias(std::move(x), "body"); }},
        Shape{"argument", [](Expression x) { return alias(signal(1), "a ", std::move(x)); }}),
    [](const auto& shape) { return shape.param.name; });

TEST_P(DeepExpression, EveryOperationGetsThroughTheDeepestTree) {
    const Expression tree = build(maximumExpressionLevels);
    Expression copy(tree);
    EXPECT_TRUE(sameTree(copy, tree));
    EXPECT_TRUE(ExpressionEqual<ModuloAliases>()(copy, tree));
    EXPECT_EQ(ExpressionHash<Inclusive>()(copy), ExpressionHash<Inclusive>()(tree));
    EXPECT_EQ(ExpressionHash<ModuloAliases>()(copy), ExpressionHash<ModuloAliases>()(tree));
    EXPECT_EQ(to_string(copy), to_string(tree));

    const ExpressionTraces traces;
    EXPECT_EQ(ExpressionLastKnownTimeVisitor(traces).lastKnownTime(tree),
              -std::numeric_limits<double>::infinity());
    EXPECT_FALSE(ExpressionIsScalarConstant(traces)(tree));
    EXPECT_FALSE(isValidAliasArgumentForExpression()(tree, signal(9)));

    copy = signal(1);
    copy = tree;
    const Expression moved(std::move(copy));
    EXPECT_TRUE(sameTree(moved, tree));
}

TEST_P(DeepExpression, OneLevelMoreIsRefused) {
    Expression tree = build(maximumExpressionLevels);
    const auto failure =
        thrown<AssessmentInternalException>([&] { GetParam().wrap(std::move(tree)); });
    EXPECT_NE(std::string(failure.what()).find(std::to_string(maximumExpressionLevels)),
              std::string::npos);
}

TEST_P(DeepExpression, AnalysesThatCopyEverySubFormulaGetThroughHundredsOfLevels) {
    const Expression tree = build(200);
    ExpressionLabelTreeVisitor labels;
    EXPECT_EQ(labels.getTree(tree).at(tree), to_string(tree));
    EXPECT_EQ(ExpressionNodeSetVisitor().getNodes(tree).count(tree), tree.which() == 7 ? 0U : 1U);
    EXPECT_EQ(ExpressionInfluenceConeVisitor().getTree(tree).at(tree), (InfluenceSpan{0, 0}));
}

}  // namespace
}  // namespace vorm::test
