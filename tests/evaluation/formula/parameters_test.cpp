// Formulas with parameters are held to the same formulas with the values written in.

#include "support/choices.hpp"
#include "support/tries.hpp"

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace vorm::evaluation {
namespace {

using test::anyIndex;
using test::anyOf;

FormulaNames knownSignals() {
    FormulaNames known;
    known.signalType = [](const std::string& name) -> std::optional<SignalType> {
        static const auto mode =
            std::make_shared<Enumeration>(Enumeration{"Mode", {"it's \"on\" & p", "on"}});
        return name == "x"      ? std::optional(SignalType::of<double>())
               : name == "n"    ? std::optional(SignalType::of<std::int8_t>())
               : name == "p"    ? std::optional(SignalType::of<bool>())
               : name == "v"    ? std::optional(SignalType::of<assessments::Verdict>())
               : name == "mode" ? std::optional(SignalType::of(mode))
                                : std::nullopt;
    };
    return known;
}

// What a formula is, or why it is none.
struct Built {
    std::optional<Formula> formula;
    std::string refusal;
};

Built builtFrom(const std::string& text, const FormulaParameters& parameters = {}) {
    try {
        const ParsedFormula parsed(text, std::make_shared<const FormulaParameters>(parameters));
        return {buildFormula(parsed, knownSignals()), ""};
    } catch (const FormulaError& error) {
        return {std::nullopt, error.problem().message};
    }
}

// A formula in two forms. Each call of value or time declares a parameter for the first one.
struct Forms {
    std::string named;
    std::string written;
    FormulaParameters parameters;

    void text(const std::string& both) {
        named += both;
        written += both;
    }

    void value(ParameterKind kind, const std::string& value, const std::string& literal) {
        const std::string name = "v" + std::to_string(parameters.size());
        parameters.push_back({.name = name, .kind = kind, .value = value});
        named += "$" + name;
        written += literal;
    }
};

void addNumber(Forms& forms) {
    const auto number =
        anyOf<std::string>({"0", "5", "-3", "-128", "200", "0.1", "-27.80", "1e-3", "inf", "-inf",
                            "nan", "9007199254740993", "9223372036854775807"});
    forms.value(ParameterKind::Number, number, number);
}

void addBool(Forms& forms) {
    const auto flag = anyOf<std::string>({"true", "false"});
    forms.value(ParameterKind::Bool, flag, flag);
}

void addMember(Forms& forms) {
    const std::size_t chosen = anyIndex(3);
    const auto members = {"it's \"on\" & p", "on", "5"};
    const auto literals = {R"('it\'s "on" & p')", "'on'", "'5'"};
    forms.value(ParameterKind::Text, members.begin()[chosen], literals.begin()[chosen]);
}

// The sign in front turns that of the value round.
void addTime(Forms& forms) {
    const bool isTurned = anyIndex(3) == 0;
    const bool isBelowZero = anyIndex(2) == 0;
    const auto digits = anyOf<std::string>({"0.1", "2", "300", "inf"});
    const auto unit = anyOf<std::string>({"", " ms", " min"});
    const bool isText = !unit.empty() && digits != "inf" && anyIndex(2) == 0;
    const std::string value = (isBelowZero ? "-" : "") + digits + (isText ? unit : "");
    const std::string rest = isText ? "" : unit;
    forms.named += isTurned ? "-" : "";
    forms.value(isText ? ParameterKind::Text : ParameterKind::Number, value,
                (isTurned != isBelowZero ? "-" : "") + digits + (isText ? unit : ""));
    forms.text(rest);
}

void addCondition(Forms& forms);

void addComparison(Forms& forms) {
    forms.text(
        anyOf<std::string>({"x > ", "n == ", "2 - ", "x < 2 *", "double(n) >=", "n < int8("}));
    const bool isTyped = forms.named.ends_with('(');
    const bool isFirst = forms.named.ends_with("2 - ");
    addNumber(forms);
    forms.text(isTyped ? ")" : isFirst ? " == x" : "");
}

void addWindow(Forms& forms) {
    forms.text(anyOf<std::string>({"always[", "eventually["}));
    addTime(forms);
    forms.text(", ");
    addTime(forms);
    forms.text("](");
    addCondition(forms);
    forms.text(")");
}

void addCondition(Forms& forms) {
    switch (anyIndex(7)) {
        case 0:
            return addComparison(forms);
        case 1:
            forms.text("p & ");
            return addBool(forms);
        case 2:
            forms.text("mode ~= ");
            return addMember(forms);
        case 3:
            return addWindow(forms);
        case 4:
            forms.text("Rise[");
            addTime(forms);
            forms.text("](x, ");
            addNumber(forms);
            return forms.text(")");
        case 5:
            forms.text("v == verdict(");
            forms.value(ParameterKind::Text, "FAIL", "\"FAIL\"");
            return forms.text(")");
        default:
            forms.text("Shift[");
            addTime(forms);
            forms.text("](x) > double(fixed(");
            addNumber(forms);
            return forms.text("))");
    }
}

void checkForms() {
    Forms forms;
    addCondition(forms);
    forms.text(" | ");
    addCondition(forms);
    RC_LOG() << forms.named << '\n' << forms.written << '\n';
    const Built named = builtFrom(forms.named, forms.parameters);
    const Built written = builtFrom(forms.written);
    RC_ASSERT(named.formula.has_value() == written.formula.has_value());
    if (written.formula) {
        RC_ASSERT(assessments::ExpressionEqual<assessments::ModuloAliases>()(
            named.formula->tree, written.formula->tree));
        RC_ASSERT(formulaText(named.formula->tree, named.formula->times) ==
                  formulaText(written.formula->tree, written.formula->times));
    }
}

TEST(Parameters, MakeTheFormulaThatHasTheirValuesWrittenIn) {
    test::checkTimes(2000, checkForms);
}

TEST(Parameters, AreOperandsThatNoOperatorTouches) {
    const FormulaParameters three{{.name = "a", .kind = ParameterKind::Number, .value = "-3"},
                                  {.name = "t", .value = "3) | (p"}};
    const auto textOf = [&](const std::string& text) {
        const Built built = builtFrom(text, three);
        return built.formula ? formulaText(built.formula->tree) : built.refusal;
    };
    EXPECT_EQ(textOf("x == 2 - $a"), "x == (2 - -3)");
    EXPECT_EQ(textOf("x == 2 -$a"), "x == (2 - -3)");
    EXPECT_EQ(textOf("x == -$a"), "x == -(-3)");
    EXPECT_EQ(textOf("x == 2 $a"), "expected an operator, found '$a'");
    EXPECT_EQ(textOf("mode == $t"), "'3) | (p' is no member of enumeration Mode");
}

TEST(Parameters, RefusalsTellTheValueAndWhereItIsFrom) {
    const auto parameters = std::make_shared<const FormulaParameters>(FormulaParameters{
        {.name = "limit", .kind = ParameterKind::Number, .value = "300", .source = "a.toml:3"},
        {.name = "timeout", .value = "abc", .source = "--set"},
        {.name = "bare", .value = "5", .source = "--set"},
        {.name = "flag", .kind = ParameterKind::Bool, .value = "true", .source = "a.toml:4"}});
    const std::string time =
        "a time is a number of seconds, or a text of a number and one of the units "
        "fs, ps, ns, us, ms, s, min and h: \"500 ms\"\n  ";
    struct Row {
        std::string text;
        std::size_t marked;  // where it begins
        std::string message;
        std::string advice;
    };
    for (const Row& row : std::vector<Row>{
             {"n < $limit", 4, "300 is no value of int8 (-128 to 127)",
              "write double(n) < $limit\n  $limit is 300, from a.toml:3"},
             {"G[0, $timeout] p", 5, "\"abc\" is no time",
              time + "$timeout is \"abc\", from --set"},
             {"G[0, -$bare] p", 6, "\"5\" is no time", time + "$bare is \"5\", from --set"},
             {"G[0, $flag] p", 5, "true is no time", time + "$flag is true, from a.toml:4"},
             {"G[$limit, 2] p", 1, "the interval ends before it begins",
              "swap its ends\n  $limit is 300, from a.toml:3"},
             {"x < $limt", 4, "unknown parameter 'limt'", "did you mean 'limit'?"},
             {"x < $q", 4, "unknown parameter 'q'",
              "there is 'limit', 'timeout', 'bare' and 'flag'"},
             {"x < $", 4, "expected an operand, found the character '$'",
              "a parameter is written $name"},
             {"x < limit", 4, "unknown signal 'limit'",
              "write $limit for the value of the parameter"},
         }) {
        SCOPED_TRACE(row.text);
        try {
            buildFormula(ParsedFormula(row.text, parameters), knownSignals());
            ADD_FAILURE() << "taken";
        } catch (const FormulaError& error) {
            EXPECT_EQ(error.problem().message, row.message);
            EXPECT_EQ(error.problem().advice, row.advice);
            EXPECT_EQ(error.span().begin, row.marked);
        }
    }
}

TEST(Parameters, StandInAssessmentFilesOnly) {
    try {
        ParsedFormula("x < $limit");
        FAIL();
    } catch (const FormulaError& error) {
        EXPECT_EQ(error.problem().message,
                  "'$limit' is a parameter, and only assessment files have parameters");
        EXPECT_EQ(error.problem().caret, 4U);
    }
}

}  // namespace
}  // namespace vorm::evaluation
