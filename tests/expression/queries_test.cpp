#include "support/expressions.hpp"
#include "support/traces.hpp"

#include <rapidcheck/gtest.h>

#include <cmath>
#include <set>

namespace vorm::test {
namespace {

// Every node of a formula, parents first, by recursion; of aliases the bodies.
void collect(const Expression& tree, std::vector<Expression>& nodes) {
    nodes.push_back(tree);
    struct {
        std::vector<Expression>& nodes;
        void operator()(const nilClass&) const {}
        void operator()(const constantValue&) const {}
        void operator()(const variable&) const {}
        void operator()(const unary_op& node) const { collect(node.child, nodes); }
        void operator()(const binary_op& node) const {
            collect(node.lhs, nodes);
            collect(node.rhs, nodes);
        }
        void operator()(const alias& node) const { collect(node.body, nodes); }
    } const visitor{nodes};
    boost::apply_visitor(visitor, tree);
}

std::vector<Expression> nodesOf(const Expression& tree) {
    std::vector<Expression> nodes;
    collect(tree, nodes);
    return nodes;
}

Expression withoutTimes(const Expression& tree) {
    struct {
        Expression operator()(const timed_unary_op& node) const { return unary_op(node); }
        Expression operator()(const timedwindow_unary_op& node) const { return unary_op(node); }
        Expression operator()(const timedwindow_binary_op& node) const { return binary_op(node); }
        Expression operator()(const Expression& node) const { return node; }
    } const strip{};
    return boost::apply_visitor(strip, tree);
}

// Traces of some of the signals: constant, of one sample, empty, and of several samples.
ExpressionTraces someTraces() {
    ExpressionTraces traces;
    traces.insert_or_assign(signal(0), TimedTrace_T<double>(4));
    traces.insert_or_assign(signal(1), trace("3:1"));
    traces.insert_or_assign(signal(2), trace("2:1 5:2", 10));
    return traces;
}

RC_GTEST_PROP(ExpressionNodeSet, HoldsEveryNodeWithoutItsTimes, ()) {
    const Expression tree = anyFormula(1 + anyIndex(4));
    const Meaning meaning(true);
    std::set<std::string> expected;
    for (const Expression& node : nodesOf(tree)) {
        if (node.which() != 0) {
            expected.insert(meaning.of(withoutTimes(node)));
        }
    }
    const auto meanings = [&](const ExpressionNodeSetVisitor::NodeSet& nodes) {
        std::set<std::string> texts;
        for (const Expression& node : nodes) {
            texts.insert(meaning.of(node));
        }
        return texts;
    };
    ExpressionNodeSetVisitor visitor;
    RC_ASSERT(meanings(visitor.getNodes(tree)) == expected);
    boost::apply_visitor(visitor, tree);
    RC_ASSERT(meanings(visitor.getNodes(nilClass())) == expected);
}

TEST(ExpressionNodeSet, OfTheFactorysCompositions) {
    ExpressionFactory f;
    const Expression a = signal(1);
    const Expression b = signal(2);
    ExpressionNodeSetVisitor visitor;
    EXPECT_EQ(visitor.getNodes(f.Plus(a, a)).size(), 2U);
    EXPECT_EQ(visitor.getNodes(Expression()).size(), 0U);
    const auto nodes = visitor.getNodes(f.Implies(a, b));
    EXPECT_EQ(nodes.size(), 4U);
    EXPECT_EQ(nodes.count(f.Or(f.Not(a), b)), 1U);
    EXPECT_EQ(nodes.find(f.Implies(a, b))->which(), 9);
}

RC_GTEST_PROP(ExpressionAliasArgument, IsValidExactlyWhereItOccurs, ()) {
    const Expression tree = anyFormula(4);
    const Expression candidate = anyFormula(2);
    const Meaning meaning(true);
    bool occurs = false;
    for (const Expression& node : nodesOf(tree)) {
        occurs |= meaning.of(node) == meaning.of(candidate);
        RC_ASSERT(isValidAliasArgumentForExpression()(tree, node));
    }
    RC_CLASSIFY(occurs);
    RC_ASSERT(isValidAliasArgumentForExpression()(tree, candidate) == occurs);
    const isValidAliasArgumentForExpression::isASubExpression visitor(candidate);
    RC_ASSERT(boost::apply_visitor(visitor, tree) == occurs);
}

TEST(ExpressionAliasArgument, OfRiseAreAllValidForItsBody) {
    ExpressionFactory f;
    const Expression rise = f.Rise(1, 2, signal(1));
    const auto& node = boost::get<alias>(rise);
    for (const AliasArgument& argument : node.arguments) {
        EXPECT_TRUE(isValidAliasArgumentForExpression()(node.body, argument));
    }
    EXPECT_FALSE(isValidAliasArgumentForExpression()(node.body, signal(2)));
}

RC_GTEST_PROP(ExpressionScalarConstant, IsThatAllLeavesAreConstant, ()) {
    const ExpressionTraces traces = someTraces();
    const ExpressionIsScalarConstant isConstant(traces);
    const Expression tree = anyFormula(1 + anyIndex(3));
    bool expected = true;
    for (const Expression& node : nodesOf(tree)) {
        if (const auto* leaf = boost::get<variable>(&node)) {
            const int number = numberOf(*leaf);
            expected = expected && (number == 0 || number == 1);
        }
        expected = expected && node.which() != 0;
    }
    RC_CLASSIFY(expected);
    RC_ASSERT(isConstant(tree) == expected);
    RC_ASSERT(boost::apply_visitor(isConstant, tree) == expected);
}

RC_GTEST_PROP(ExpressionTimeExtent, IsThatOfTheSignalsWithTraces, ()) {
    const ExpressionTraces traces = someTraces();
    const Expression tree = anyFormula(1 + anyIndex(4));
    const double starts[] = {-infinity, 3, 2, infinity};
    const double knowns[] = {infinity, 3, 10, -infinity};
    double start = infinity;
    double known = -infinity;
    for (const Expression& node : nodesOf(tree)) {
        if (const auto* leaf = boost::get<variable>(&node)) {
            start = std::min(start, starts[numberOf(*leaf)]);
            known = std::max(known, knowns[numberOf(*leaf)]);
        }
    }
    const ExpressionFirstStartTimeVisitor first(traces);
    const ExpressionLastKnownTimeVisitor last(traces);
    RC_ASSERT(first.firstStartTime(tree) == start);
    RC_ASSERT(last.lastKnownTime(tree) == known);
    RC_ASSERT(boost::apply_visitor(first, tree) == start);
    RC_ASSERT(boost::apply_visitor(last, tree) == known);
}

TEST(ExpressionTimeExtent, LooksUpOnlySignalsAndIgnoresWindows) {
    ExpressionFactory f;
    const Expression x = f.Variable("x", trace("0:1", 10));
    const Expression none = f.Variable("none", trace(""));
    const Expression one = f.Constant(1.0);
    const Expression windowed = f.Globally(0, 3, x);
    ExpressionTraces traces = f.getTraces();
    traces.insert_or_assign(windowed, trace("4:1", 7));
    const ExpressionFirstStartTimeVisitor first(traces);
    const ExpressionLastKnownTimeVisitor last(traces);
    EXPECT_EQ(first.firstStartTime(windowed), 0);
    EXPECT_EQ(last.lastKnownTime(windowed), 10);
    EXPECT_EQ(first.expressionFirstStartTime(windowed), 4);
    EXPECT_EQ(last.expressionLastKnownTime(windowed), 7);
    EXPECT_EQ(first.firstStartTime(f.Plus(x, one)), 0);
    EXPECT_EQ(first.firstStartTime(f.Plus(x, none)), -infinity);
    EXPECT_EQ(first.firstStartTime(one), infinity);
    EXPECT_EQ(last.lastKnownTime(one), -infinity);
}

TEST(ExpressionTimeExtent, IsNanWhereASignalHasANanForATime) {
    ExpressionFactory f;
    auto timeless = trace("");
    timeless.push_back({nan, 1});
    const Expression unknown = f.Variable("unknown", timeless);
    const Expression x = f.Variable("x", trace("2:1", 10));
    const Expression none = f.Variable("none");
    const ExpressionFirstStartTimeVisitor first(f.getTraces());
    const ExpressionLastKnownTimeVisitor last(f.getTraces());
    for (const Expression& formula :
         {unknown, f.Not(unknown), f.Plus(unknown, x), f.Plus(x, unknown), f.Plus(unknown, none),
          f.Plus(f.Constant(1.0), unknown), f.Implies(x, f.Plus(unknown, x))}) {
        EXPECT_TRUE(std::isnan(first.firstStartTime(formula))) << formula;
        EXPECT_TRUE(std::isnan(last.lastKnownTime(formula))) << formula;
        EXPECT_TRUE(std::isnan(boost::apply_visitor(first, formula))) << formula;
        EXPECT_TRUE(std::isnan(boost::apply_visitor(last, formula))) << formula;
    }
}

TEST(ExpressionChildren, AreShownInEvaluationOrder) {
    ExpressionFactory f;
    const Expression x = f.Variable("x");
    const Expression y = f.Variable("y");
    const struct {
        Expression formula;
        std::vector<std::string> children;
    } rows[] = {
        {Expression(), {}},
        {x, {}},
        {f.Constant(1.0), {}},
        {f.Shift(1, f.Not(x)), {"~(x)"}},
        {f.Until(x, 0, 1, y), {"x", "y"}},
        {cast_op(y, cast_op::Target()), {"y"}},
        {f.Implies(x, f.Abs(y)), {"x", "abs(y)"}},
        {f.Rise(3, 2, x), {"x", "3"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> children;
        for (const auto& child : boost::apply_visitor(childListVisitor(), row.formula)) {
            EXPECT_EQ(child.text, to_string(child.expression));
            children.push_back(child.text);
        }
        EXPECT_EQ(children, row.children) << row.formula;
    }
}

}  // namespace
}  // namespace vorm::test
