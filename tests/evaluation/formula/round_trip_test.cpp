#include "support/expressions.hpp"

#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <rapidcheck/gtest.h>

#include <limits>

namespace vorm::evaluation {
namespace {

using namespace assessments;
using test::anyIndex;
using test::anyNumber;
using test::anyOf;

bool isSame(const Expression& a, const Expression& b) {
    return ExpressionEqual<ModuloAliases>()(a, b);
}

// What a tree is made of; each is for use inside a property.
struct Leaves {
    std::function<std::string()> name;
    std::function<Expression()> literal;
    std::function<double()> number;
    bool hasAllNodes;  // also those whose printed form does not say what they are
};

Expression anySignal(const Leaves& leaves) {
    const std::string name = leaves.name();
    return variable(name, signalId(name));
}

Expression anyTree(const Leaves& leaves, std::size_t levels);

Expression anyOneOperand(const Leaves& leaves, std::size_t levels) {
    ExpressionFactory factory;
    const auto x = [&] { return anyTree(leaves, levels - 1); };
    const auto end = [&] { return test::orNoEnd(leaves.number()); };
    switch (anyIndex(leaves.hasAllNodes ? 15 : 10)) {
        case 0:
            return factory.UnaryMinus(x());
        case 1:
            return factory.Not(x());
        case 2:
            return factory.Abs(x());
        case 3:
            return factory.Slope(x());
        case 4:
            return factory.Globally(leaves.number(), leaves.number(), x());
        case 5:
            return factory.Eventually(leaves.number(), leaves.number(), x());
        case 6:
            return factory.Shift(leaves.number(), x());
        case 7:
            return factory.EpsilonShift(leaves.number(), x());
        case 8:
            return factory.Once(leaves.number(), leaves.hasAllNodes ? end() : leaves.number(), x());
        case 9:
            return factory.Historically(leaves.number(), leaves.number(), x());
        case 10:
            return cast_op(x(), cast_op::castFlag<HalfFloat>());
        case 11:
            return cast_op(x(), cast_op::castFlag<Verdict>());
        case 12:
            return unary_op(
                anyOf<VORM_OP>({VORM_OP::Rises, VORM_OP::Falls, VORM_OP::Changed,
                                VORM_OP::SquareRoot, VORM_OP::Exponential, VORM_OP::Logarithm,
                                VORM_OP::Sine, VORM_OP::Cosine, VORM_OP::Round, VORM_OP::Floor,
                                VORM_OP::Ceiling, VORM_OP::Sign}),
                x(), "label");
        case 13:
            return timedwindow_unary_op(
                anyOf<VORM_OP>({VORM_OP::Least, VORM_OP::Greatest, VORM_OP::Integral, VORM_OP::Mean,
                                VORM_OP::Duration, VORM_OP::Count}),
                x(), "label", leaves.number(), leaves.number());
        default:
            return cast_op(leaves.literal(), cast_op::castFlag<std::int8_t>());
    }
}

Expression anyTwoOperands(const Leaves& leaves, std::size_t levels) {
    ExpressionFactory factory;
    using Operation = Expression (ExpressionFactory::*)(const Expression&, const Expression&) const;
    std::vector<Operation> operations{
        &ExpressionFactory::Plus, &ExpressionFactory::Minus, &ExpressionFactory::Multiply,
        &ExpressionFactory::Eq,   &ExpressionFactory::Neq,   &ExpressionFactory::Lt,
        &ExpressionFactory::Leq,  &ExpressionFactory::Gt,    &ExpressionFactory::Geq,
        &ExpressionFactory::And,  &ExpressionFactory::Or};
    const Operation operation = anyOf(operations);
    const auto x = [&] { return anyTree(leaves, levels - 1); };
    switch (anyIndex(leaves.hasAllNodes ? 10 : 9)) {
        case 0:
            return factory.Until(x(), leaves.number(),
                                 leaves.hasAllNodes ? test::orNoEnd(0) : leaves.number(), x());
        case 9:
            return binary_op(anyOf<VORM_OP>({VORM_OP::Implies, VORM_OP::Minimum, VORM_OP::Maximum,
                                             VORM_OP::Power, VORM_OP::Divide}),
                             x(), x(), "label");
        case 8:
            return factory.Since(x(), leaves.number(), leaves.number(), x());
        case 1:
            return factory.Rise(leaves.number(), leaves.number(), x());
        case 2:
            return factory.Fall(leaves.number(), leaves.number(), x());
        default:
            return (factory.*operation)(x(), x());
    }
}

Expression anyTree(const Leaves& leaves, std::size_t levels) {
    switch (levels <= 1 ? anyIndex(2) : 2 + anyIndex(leaves.hasAllNodes ? 4 : 3)) {
        case 0:
            return leaves.literal();
        case 1:
            return anySignal(leaves);
        case 2:
            return anyOneOperand(leaves, levels);
        case 3:
        case 4:
            return anyTwoOperands(leaves, levels);
        default:
            return alias(anyTree(leaves, levels - 1), anySignal(leaves), "->", "other");
    }
}

std::string anyName() {
    const auto bytes = *rc::gen::container<std::string>(rc::gen::arbitrary<char>());
    return anyOf<std::string>({bytes, "x", "Volume Flow", "G", "until", "int8", "nan", "PASS", "",
                               "a.b", "1st", "x'\"\\", "Kühlung"});
}

// Every type, with its ends and with numbers of all their digits.
Expression anyLiteral() {
    using platform::NumericScaling;
    using platform::Signedness;
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    const auto wide = std::bit_cast<double>(bits);
    const auto narrow = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    const auto type = anyOf<platform::NumericTypeDescriptor>(
        {platform::NumericTypeDescriptor(),
         {NumericScaling::BinaryPoint, Signedness::Unsigned, 128, 1, 2048, 0},
         {NumericScaling::BinaryPoint, Signedness::Signed, 1, 1, -2048, 0},
         {NumericScaling::BinaryPoint, Signedness::Signed, 128, 1, 64, 0},
         {NumericScaling::SlopeAndBias, Signedness::Unsigned, 16, 0.1, 4, -1e20},
         {NumericScaling::SlopeAndBias, Signedness::Signed, 8, 1e-300, -2, 5}});
    const FixedPoint fixed(wide == wide ? wide : 0, type);
    const auto value = anyOf<constantValue::Value>(
        {wide, narrow, static_cast<std::int8_t>(bits), static_cast<std::uint8_t>(bits),
         static_cast<std::int16_t>(bits), static_cast<std::uint16_t>(bits),
         static_cast<std::int32_t>(bits), static_cast<std::uint32_t>(bits),
         static_cast<std::int64_t>(bits), bits, std::numeric_limits<std::int64_t>::min(),
         std::numeric_limits<std::uint64_t>::max(), bits % 2 == 0,
         HalfFloat::fromBits(static_cast<std::uint16_t>(bits)), ValueType<FixedPoint>(fixed),
         Verdict(anyOf<resultEnum_t>(
             {resultEnum_t::PASS, resultEnum_t::FAIL, resultEnum_t::NO_RESULT})),
         anyNumber()});
    return constantValue(1, "label", value);
}

RC_GTEST_PROP(RoundTrip, TheTextOfATreeIsTheTree, ()) {
    const Leaves leaves{anyName, anyLiteral, [] { return anyNumber(); }, true};
    const Expression tree = anyTree(leaves, 1 + anyIndex(5));
    const std::string text = formulaText(tree);
    RC_LOG() << text << '\n';
    RC_ASSERT(isSame(tree, expressionOf(ParsedFormula(text))));
}

RC_GTEST_PROP(RoundTrip, ThePrintedFormOfTheLibraryIsTheTree, ()) {
    const auto number = [] {
        return anyOf<double>({0, 1, -2, 0.5, 1e-7, 3e20, 12.25,
                              std::numeric_limits<double>::infinity(), test::nanOf(1)});
    };
    const auto literal = [number] { return ExpressionFactory().Constant(number()); };
    const auto name = [] { return anyOf<std::string>({"x", "y2", "a.b", "G", "rise"}); };
    const Leaves leaves{name, literal, number, false};
    Expression tree = anyTree(leaves, 1 + anyIndex(5));
    // The library prints no brackets around an implication, so that it is read back at the root.
    if (anyIndex(2) == 0) {
        tree = binary_op(VORM_OP::Implies, Expression(tree), anyTree(leaves, 3), "->");
    }
    RC_LOG() << to_string(tree) << '\n';
    RC_ASSERT(isSame(tree, expressionOf(ParsedFormula(to_string(tree)))));
}

// Formulas that are well typed by the way they are made.
std::string anyTyped(const std::string& type, std::size_t levels) {
    const auto x = [levels](const char* name) { return anyTyped(name, levels - 1); };
    const auto literal = [] { return std::to_string(anyIndex(100)); };
    if (type == "bool") {
        const std::string comparison = anyOf<std::string>({"==", "~=", "<", "<=", ">", ">="});
        switch (levels <= 1 ? 0 : anyIndex(8)) {
            case 0:
                return anyOf<std::string>({"p", "true", "(mode == 'on')", "(\"off\" ~= mode)"});
            case 1:
                return "(" + x("double") + " " + comparison + " " + x("double") + ")";
            case 2:
                return "(" + x("int8") + " " + comparison + " " + literal() + ")";
            case 3:
                return "G[0, 5 ms] (" + x("bool") + " until[0, 1] " + x("bool") + ")";
            case 4:
                return "(" + x("bool") + " -> rise(" + x("bool") + "))";
            case 5:
                return "Fall[1](" + x("int8") + ", " + literal() + ")";
            case 6:
                return "~" + x("bool");
            default:
                return "(" + x("bool") + " & " + x("bool") + " | " + x("bool") + ")";
        }
    }
    const bool isDouble = type == "double";
    switch (levels <= 1 ? 0 : anyIndex(5)) {
        case 0:
            return isDouble ? "x" : "n";
        case 1:
            return isDouble ? "double(" + x("int8") + ")" : "int8(" + x("bool") + ")";
        case 2:
            return "(" + literal() + " - " + x(type.c_str()) + ")";
        case 3:
            return "-(" + literal() + " * abs(" + x(type.c_str()) + "))";
        default:
            return "Shift[-1](" + x(type.c_str()) + ")";
    }
}

RC_GTEST_PROP(RoundTrip, TheTextOfATypedTreeIsTheTypedTree, ()) {
    const auto mode = std::make_shared<Enumeration>(Enumeration{"Mode", {"off", "on"}});
    FormulaNames names;
    names.signalType = [mode](const std::string& name) -> std::optional<SignalType> {
        return name == "x"      ? std::optional(SignalType::of<double>())
               : name == "n"    ? std::optional(SignalType::of<std::int8_t>())
               : name == "p"    ? std::optional(SignalType::of<bool>())
               : name == "mode" ? std::optional(SignalType::of(mode))
                                : std::nullopt;
    };
    const auto type = anyOf<std::string>({"bool", "double", "int8"});
    const std::string written = anyTyped(type, 1 + anyIndex(5));
    RC_LOG() << written << '\n';
    const Formula formula = buildFormula(ParsedFormula(written), names);
    RC_ASSERT(typeText(formula.type) == type);
    const std::string text = formulaText(formula.tree);
    RC_LOG() << text << '\n';
    RC_ASSERT(isSame(formula.tree, buildFormula(ParsedFormula(text), names).tree));
}

TEST(RoundTrip, TreesOfTheMostLevelsHaveAText) {
    const ExpressionFactory factory;
    const Expression deep = test::tower(maximumExpressionLevels / 2, [&factory](Expression x) {
        return factory.Minus(test::signal(1), factory.Abs(std::move(x)));
    });
    EXPECT_GT(formulaText(deep).size(), maximumExpressionLevels);
}

TEST(RoundTrip, TreesWithoutATextAreRefused) {
    EXPECT_THROW(formulaText(nilClass()), std::invalid_argument);
    EXPECT_THROW(formulaText(unary_op(VORM_OP::Plus, test::signal(0), "+")), std::invalid_argument);
}

}  // namespace
}  // namespace vorm::evaluation
