#include "support/expressions.hpp"

#include <rapidcheck/gtest.h>

#include <random>
#include <unordered_set>

namespace vorm::test {
namespace {

template <class Policy>
bool equal(const Expression& a, const Expression& b) {
    return ExpressionEqual<Policy>()(a, b);
}

template <class Policy>
std::size_t hashOf(const Expression& a) {
    return ExpressionHash<Policy>()(a);
}

template <class Policy>
class ExpressionEquality : public testing::Test {
protected:
    static std::string meaning(const Expression& tree) {
        return Meaning(std::is_same_v<Policy, ModuloAliases>).of(tree);
    }
};
using Policies = testing::Types<Inclusive, ModuloAliases>;
TYPED_TEST_SUITE(ExpressionEquality, Policies);

TYPED_TEST(ExpressionEquality, IsThatOfTheMeaningAndEqualFormulasHashAlike) {
    EXPECT_TRUE(rc::check([] {
        const std::size_t levels = 1 + anyIndex(4);
        const Expression a = anyFormula(levels);
        const Expression b = *rc::gen::arbitrary<bool>() ? anyFormula(levels) : Expression(a);
        const bool expected = TestFixture::meaning(a) == TestFixture::meaning(b);
        RC_CLASSIFY(expected);
        RC_ASSERT(equal<TypeParam>(a, b) == expected);
        RC_ASSERT((hashOf<TypeParam>(a) == hashOf<TypeParam>(b)) == expected);
    }));
}

TYPED_TEST(ExpressionEquality, OfNodesIsThatOfTheirFormulas) {
    EXPECT_TRUE(rc::check([] {
        const Expression a = anyFormula(3);
        const Expression b = *rc::gen::arbitrary<bool>() ? anyFormula(3) : Expression(a);
        const typename ExpressionEqual<TypeParam>::Visitor nodes;
        const typename ExpressionHash<TypeParam>::Visitor hash;
        RC_ASSERT(boost::apply_visitor(nodes, a, b) == equal<TypeParam>(a, b));
        RC_ASSERT(boost::apply_visitor(hash, a) == hashOf<TypeParam>(a));
    }));
}

TYPED_TEST(ExpressionEquality, ComparesWhatEachKindHoldsAndNoNames) {
    const ExpressionFactory factory;
    const Expression x = signal(1);
    const ValueType<FixedPoint> fixedOne(FixedPoint(1));
    const ValueType<FixedPoint> unsignedOne(FixedPoint(
        1, platform::NumericTypeDescriptor(platform::NumericScaling::BinaryPoint,
                                           platform::Signedness::Unsigned, 32, 1, 16, 0)));
    const struct {
        Expression a;
        Expression b;
        bool equal;
    } rows[] = {
        {signal(1, "speed"), signal(1, "weight"), true},
        {signal(1), signal(2), false},
        {factory.Plus(x, x), factory.Minus(x, x), false},
        {factory.Minus(x, signal(2)), factory.Minus(signal(2), x), false},
        {factory.Globally(0, nanOf(1), x), factory.Globally(-0.0, nanOf(7), x), true},
        {factory.Globally(0, 1, x), factory.Globally(1, 0, x), false},
        {factory.Globally(0, 1, x), factory.Eventually(0, 1, x), false},
        {factory.Shift(0.1, x), factory.Shift(0.1000000001, x), false},
        {factory.Shift(2, x), unary_op(VORM_OP::Shift, x, "Shift"), false},
        {constantValue(1, "1", 1.0), constantValue(1, "one", 1.0, "unit"), true},
        {constantValue(1, "1", 1.0), constantValue(1, "1", 1.0F), false},
        {constantValue(1, "1", 1.0), constantValue(2, "1", 1.0), false},
        {constantValue(1, "1", fixedOne), constantValue(1, "1", unsignedOne), false},
        {unary_op(VORM_OP::Not, x, "~"), unary_op(VORM_OP::Not, x, "not"), true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(equal<TypeParam>(row.a, row.b), row.equal) << row.a << " and " << row.b;
        EXPECT_EQ(hashOf<TypeParam>(row.a) == hashOf<TypeParam>(row.b), row.equal);
    }
}

Expression someFormula(std::mt19937& random, int levels) {
    const ExpressionFactory f;
    if (levels == 0) {
        return signal(static_cast<std::uint8_t>(random() % 20));
    }
    const auto child = [&] { return someFormula(random, levels - 1); };
    const auto offset = static_cast<double>(random() % 100);
    switch (random() % 5) {
        case 0:
            return f.Plus(child(), child());
        case 1:
            return f.Minus(child(), child());
        case 2:
            return f.Shift(offset, child());
        case 3:
            return f.Globally(-offset, offset, child());
        default:
            return f.Until(child(), offset, offset + 1, child());
    }
}

TYPED_TEST(ExpressionEquality, HashesOfManyDistinctFormulasAreAllDifferent) {
    // By chance 10^5 hashes of 64 bits collide with a probability of 3e-10.
    std::mt19937 random(1);
    std::unordered_set<std::string> meanings;
    std::unordered_set<std::size_t> hashes;
    while (meanings.size() < 100'000) {
        const Expression formula = someFormula(random, 2);
        meanings.insert(TestFixture::meaning(formula));
        hashes.insert(hashOf<TypeParam>(formula));
    }
    EXPECT_EQ(hashes.size(), meanings.size());
}

TEST(ExpressionAliases, StandForTheirBodiesOnlyModuloAliases) {
    ExpressionFactory factory;
    const Expression a = signal(1);
    const Expression b = signal(2);
    const Expression implies = factory.Implies(a, b);
    const Expression body = factory.Or(factory.Not(a), b);
    const Expression nested = alias(alias(implies, "outer"), "outermost");
    for (const Expression& other : {body, nested}) {
        EXPECT_TRUE(equal<ModuloAliases>(implies, other));
        EXPECT_EQ(hashOf<ModuloAliases>(implies), hashOf<ModuloAliases>(other));
        EXPECT_FALSE(equal<Inclusive>(implies, other));
        EXPECT_NE(hashOf<Inclusive>(implies), hashOf<Inclusive>(other));
    }
    const Expression rise = factory.Rise(1, nanOf(3), a);
    EXPECT_TRUE(equal<Inclusive>(rise, factory.Rise(1, nanOf(4), signal(1, "renamed"))));
}

TEST(ExpressionAliases, CompareTheirArgumentsKindForKind) {
    const Expression x = signal(1);
    const std::string copy("->");
    const AliasArgument arguments[] = {true, 1, 1.0, "->", std::string("->"), x};
    const ExpressionEqual<Inclusive>::AliasArgVisitor visitor;
    for (const AliasArgument& a : arguments) {
        for (const AliasArgument& b : arguments) {
            EXPECT_EQ(boost::apply_visitor(visitor, a, b), a.which() == b.which());
        }
    }
    EXPECT_TRUE(equal<Inclusive>(alias(x, "->"), alias(x, copy.c_str())));
    EXPECT_FALSE(equal<Inclusive>(alias(x, "->"), alias(x, "->", "->")));
    EXPECT_FALSE(equal<Inclusive>(alias(x, "->"), alias(x, x)));
    EXPECT_FALSE(equal<Inclusive>(alias(x, x), alias(x, "->")));
}

}  // namespace
}  // namespace vorm::test
