#include "support/choices.hpp"
#include "support/expressions.hpp"

#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/formula/syntax_tree.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace vorm::evaluation {
namespace {

using namespace assessments;
using vorm::test::anyIndex;
using vorm::test::anyOf;

FormulaNames namesWith(const std::map<std::string, std::string>& definitions) {
    FormulaNames names;
    names.signalType = [](const std::string& name) -> std::optional<SignalType> {
        return name == "on" || name == "off" ? SignalType::of<bool>() : SignalType::of<double>();
    };
    for (const auto& [name, text] : definitions) {
        names.definitions.emplace(name, ParsedFormula(text));
    }
    return names;
}

NamedFormula named(const std::string& text, const std::map<std::string, std::string>& definitions) {
    const Formula formula = buildFormula(ParsedFormula(text), namesWith(definitions));
    return namedFormula(formula.tree, formula.times, formula.names);
}

TEST(DefinitionNames, StandForTheirFormulas) {
    const std::map<std::string, std::string> definitions{
        {"excess", "speed - limit"}, {"too fast", "excess > 3"}, {"v", "speed"}};
    const NamedFormula whole =
        named("\"too fast\" -> always[0, 18 h](abs(excess) < 3)", definitions);
    EXPECT_EQ(whole.text, "\"too fast\" -> Globally[0, 18 h](abs(excess) < 3)");
    EXPECT_EQ(whole.definitions, (std::vector<DefinitionText>{{"too fast", "excess > 3"},
                                                              {"excess", "speed - limit"}}));
    EXPECT_EQ(named("v > speed", definitions).text, "speed > speed")
        << "else nobody could tell which was written";
    EXPECT_EQ(named("rise(excess > 3)", definitions).text, "rise(excess > 3)")
        << "what the formula does not name is not named";
    EXPECT_EQ(named("(speed - limit) * 2 > excess", definitions).text, "(excess * 2) > excess");
}

// A formula of that type, in which deeper definitions stand.
std::string anyFormula(bool isCondition, std::size_t depth) {
    const auto condition = [&] { return anyFormula(true, depth - 1); };
    const auto number = [&] { return anyFormula(false, depth - 1); };
    if (!isCondition) {
        if (depth == 0) {
            return anyOf<std::string>({"x", "y", "2"});
        }
        return anyOf<std::string>(
            {"sum", "(" + number() + " + " + number() + ")", "abs(" + number() + ")"});
    }
    if (depth == 0) {
        return anyOf<std::string>({"on", "off", "sum > 1"});
    }
    switch (anyIndex(6)) {
        case 0:
            return "both";
        case 1:
            return "(" + condition() + " & " + condition() + ")";
        case 2:
            return "(" + condition() + " -> " + condition() + ")";
        case 3:
            return "rise(" + condition() + ")";
        case 4:
            return "always[0, 3 min](" + condition() + ")";
        default:
            return "(" + number() + " < " + number() + ")";
    }
}

RC_GTEST_PROP(DefinitionNames, TheTextWithNamesIsTheSameFormula, ()) {
    const std::map<std::string, std::string> definitions{
        {"sum", "x + y"}, {"both", anyOf<std::string>({"on & off", "on -> sum < y", "rise(on)"})}};
    const FormulaNames names = namesWith(definitions);
    const Formula formula = buildFormula(ParsedFormula(anyFormula(true, 1 + anyIndex(4))), names);
    const NamedFormula text = namedFormula(formula.tree, formula.times, formula.names);
    RC_LOG() << text.text;
    const Formula again = buildFormula(ParsedFormula(text.text), names);
    RC_ASSERT(ExpressionEqual<ModuloAliases>()(again.tree, formula.tree));
    for (const DefinitionText& definition : text.definitions) {
        const Formula one = buildFormula(ParsedFormula(definition.formula), names);
        const Formula other = buildFormula(ParsedFormula(definitions.at(definition.name)), names);
        RC_ASSERT(ExpressionEqual<ModuloAliases>()(one.tree, other.tree));
    }
}

}  // namespace
}  // namespace vorm::evaluation
