#include "evaluation/formula/refusals.hpp"

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/evaluation/formula/enumeration_literal.hpp>
#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

using assessments::HalfFloat;

const std::map<std::string, SignalType>& signals() {
    const auto gear = std::make_shared<Enumeration>(Enumeration{"Gear", {"N", "R", "P.1", "x"}});
    const auto door = std::make_shared<Enumeration>(Enumeration{"Door", {"open", "N"}});
    static const std::map<std::string, SignalType> types{
        {"x", SignalType::of<double>()},
        {"y", SignalType::of<float>()},
        {"n", SignalType::of<std::int8_t>()},
        {"i", SignalType::of<std::int64_t>()},
        {"u", SignalType::of<std::uint64_t>()},
        {"h", SignalType::of<HalfFloat>()},
        {"f", SignalType::of<assessments::ValueType<assessments::FixedPoint>>()},
        {"v", SignalType::of<assessments::Verdict>()},
        {"p", SignalType::of<bool>()},
        {"speed", SignalType::of<double>()},
        {"any", SignalType()},
        {"gear", SignalType::of(gear)},
        {"last gear", SignalType::of(gear)},
        {"door", SignalType::of(door)},
    };
    return types;
}

FormulaNames names(const std::map<std::string, std::string>& definitions = {}) {
    FormulaNames known;
    known.signalType = [](const std::string& name) {
        const auto signal = signals().find(name);
        return signal == signals().end() ? std::nullopt : std::optional(signal->second);
    };
    for (const auto& [name, text] : definitions) {
        known.definitions.emplace(name, ParsedFormula(text));
    }
    for (const auto& signal : signals()) {
        known.signalNames.push_back(signal.first);
    }
    return known;
}

std::string typed(const std::string& text,
                  const std::map<std::string, std::string>& definitions = {}) {
    try {
        const Formula formula = buildFormula(ParsedFormula(text), names(definitions));
        return formulaText(formula.tree, formula.times) + " : " + typeText(formula.type);
    } catch (const FormulaError& error) {
        return error.problem().message;
    }
}

TEST(Typing, LiteralsTakeTheTypeOfTheOperandThatTheyMeet) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"5", "5 : double"},
        {"x > 5", "x > 5 : bool"},
        {"n > -128", "n > int8(-128) : bool"},
        {"-(2 + 3) * 2 < n", "(-(int8(2) + int8(3)) * int8(2)) < n : bool"},
        {"y == 0.1", "y == float(0.1) : bool"},
        {"n + 1", "n + int8(1) : int8"},
        {"i == 9223372036854775807", "i == int64(9223372036854775807) : bool"},
        {"i == -9223372036854775808", "i == int64(-9223372036854775808) : bool"},
        {"u == 18446744073709551615", "u == uint64(18446744073709551615) : bool"},
        {"u == 1.8e1", "u == uint64(18) : bool"},
        {"f == 0.25", "f == fixed(0.25) : bool"},
        {"h == 65504", "h == half(65504) : bool"},
        {"Shift[1](5) == n", "Shift[1](int8(5)) == n : bool"},
        {"Rise[1](n, 5)", "Rise[1](n, int8(5)) : bool"},
        {"slope(y) > 5", "slope(y) > 5 : bool"},
        {"double(n) > 300", "double(n) > 300 : bool"},
        {"int8(2 * 3)", "int8(2 * 3) : int8"},
        {"p == true", "p == true : bool"},
        {"v ~= verdict(\"FAIL\")", "v ~= verdict(\"FAIL\") : bool"},
        {"any > 5 & any", "(any > 5) & any : bool"},
        {"any + n", "any + n : int8"},
        {"gear == \"R\"", "gear == 'R' : bool"},
        {"'R' ~= gear", "'R' ~= gear : bool"},
        {"gear == \"last gear\"", "gear == \"last gear\" : bool"},
        {"any == \"R\" | any == 'N'", "(any == 'R') | (any == 'N') : bool"},
        {"y / 3", "y / float(3) : float"},
        {"1 / 3", "1 / 3 : double"},
        {"x * y", "`x` is double, but `y` is float"},
        {"n * n", "n * n : int8"},
        {"max(n, 3)", "max(n, int8(3)) : int8"},
        {"min[0, 1](n)", "min[0, 1](n) : int8"},
        {"mean[0, 1](n)", "mean[0, 1](n) : double"},
        {"count[0, 1](p) <= 3", "count[0, 1](p) <= int32(3) : bool"},
        {"duration[0, 1](p)", "duration[0, 1](p) : double"},
        {"changed(gear) & changed(p)", "changed(gear) & changed(p) : bool"},
        {"gear in {'N', \"R\"}", "(gear == 'N') | (gear == 'R') : bool"},
        {"0 < n <= 5", "(int8(0) < n) & (n <= int8(5)) : bool"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(typed(text), expected) << text;
    }
}

TEST(Typing, MembersAreLiteralsOfTheirEnumeration) {
    const Formula formula = buildFormula(ParsedFormula("gear == 'R'"), names());
    const auto& comparison = boost::get<assessments::binary_op>(formula.tree);
    const auto& member = boost::get<assessments::constantValue>(comparison.rhs);
    EXPECT_EQ(member.tag, enumerationTag("Gear"));
    EXPECT_EQ(boost::get<std::int32_t>(member.value), 1);
    EXPECT_EQ(member.label, "R");
    EXPECT_EQ(member.name, "Gear");
    EXPECT_NE(enumerationTag("Gear"), enumerationTag("Door"));
    const auto& signal = boost::get<assessments::variable>(comparison.lhs);
    EXPECT_EQ(signal.name, "gear");
    EXPECT_EQ(signal.id, signalId("gear"));
}

TEST(Typing, DefinitionsStandForTheirText) {
    const std::map<std::string, std::string> definitions{
        {"limit", "100"}, {"fast", "n > limit"}, {"x", "p"}, {"both parts", "fast | x"}};
    EXPECT_EQ(typed("fast", definitions), "n > int8(100) : bool");
    EXPECT_EQ(typed("speed > limit", definitions), "speed > 100 : bool");
    EXPECT_EQ(typed("\"both parts\" & limit > 5", definitions),
              "((n > int8(100)) | p) & (100 > 5) : bool");
    const Formula formula = buildFormula(ParsedFormula("\"both parts\""), names(definitions));
    EXPECT_EQ(formula.signals, (std::set<std::string>{"n", "p"}));
}

TEST(Typing, WhatDoesNotFitIsRefusedWithAdvice) {
    expectRefusals(
        {
            {"n > 300", "300", "300 is no value of int8 (-128 to 127)", "write double(n) > 300"},
            {"-(300) < n", "300", "300 is no value of int8 (-128 to 127)",
             "write -(300) < double(n)"},
            {"n > 1.5", "1.5", "1.5 is no value of int8 (-128 to 127)", "write double(n) > 1.5"},
            {"n > nan", "nan", "nan is no value of int8 (-128 to 127)", "write double(n) > nan"},
            {"u > -1", "-1", "-1 is no value of uint64 (0 to 18446744073709551615)",
             "write double(u) > -1"},
            {"i > 9223372036854775808", "9223372036854775808",
             "9223372036854775808 is no value of int64 (-9223372036854775808 to "
             "9223372036854775807)",
             "write double(i) > 9223372036854775808"},
            {"x > 9007199254740993", "9007199254740993",
             "9007199254740993 is no value of double (the nearest is 9007199254740992)", ""},
            {"y > 16777217", "16777217", "16777217 is no value of float (the nearest is 16777216)",
             "write double(y) > 16777217"},
            {"h > 65520", "65520", "65520 is no value of half (past the largest one)",
             "write double(h) > 65520"},
            {"x > 1e400", "1e400", "1e400 is no value of double (past the largest one)", ""},
            {"f > 0.1", "0.1", "0.1 is no value of fixed (the nearest is 0.100006103515625)",
             "write double(f) > 0.1"},
            {"x > n", "x > n", "`x` is double, but `n` is int8", "write x > double(n)"},
            {"p == 5", "p == 5", "`p` is bool, but `5` is a number", ""},
            {"x + p", "p", "`p` is bool, but '+' needs a number", ""},
            {"p & x", "x", "`x` is double, but '&' needs bool", "compare it, for example `x > 0`"},
            {"always[0, 1] (x + 1)", "x + 1", "`x + 1` is double, but 'always' needs bool",
             "compare it, for example `x + 1 > 0`"},
            {"~5", "5", "`5` is a number, but '~' needs bool", "compare it, for example `5 > 0`"},
            {"n / 2", "n", "`n` is int8, but '/' needs a floating-point number", "write double(n)"},
            {"sqrt(i) > 2", "i", "`i` is int64, but 'sqrt' needs a floating-point number",
             "write double(i)"},
            {"n > 1 / 3", "n > 1 / 3", "`n` is int8, but `1 / 3` is double",
             "write double(n) > 1 / 3"},
            {"min(x, n) > 1", "min(x, n)", "`x` is double, but `n` is int8",
             "write x min double(n)"},
            {"min(p, p)", "p", "`p` is bool, but 'min' needs a number", ""},
            {"mean[2, 2](x) > 1", "[2, 2]", "a mean is over a time that has a length",
             "end the interval later than it begins"},
            {"integral[0, inf](x) > 1", "[0, inf]", "a time is finite",
             "end the interval with the longest time that matters"},
            {"duration[0, 1](x) > 1", "x", "`x` is double, but 'duration' needs bool",
             "compare it, for example `x > 0`"},
            {"gear < 'N'", "gear", "`gear` is enumeration Gear, but '<' needs an order",
             "compare it by == or ~="},
            {"gear == \"Q\"", "\"Q\"", "'Q' is no member of enumeration Gear",
             "its members are 'N', 'R', 'P.1' and 'x'"},
            {"gear == 'P_1'", "'P_1'", "'P_1' is no member of enumeration Gear",
             "did you mean 'P.1'?"},
            {"gear == \"x\"", "\"x\"", "\"x\" is a signal and also a member of enumeration Gear",
             "write 'x' for the member"},
            {"gear == door", "gear == door",
             "`gear` is enumeration Gear, but `door` is enumeration Door", ""},
            {"x == 'N'", "'N'", "'N' is a member of an enumeration, but double is none",
             "members are compared with signals of their enumeration"},
            {"5 ~= 'N'", "'N'", "'N' is a member of an enumeration, but a number is none",
             "members are compared with signals of their enumeration"},
            {"'N' & p", "'N'", "'N' is a member of an enumeration",
             "members are compared with signals of their enumeration"},
            {"int8(gear)", "gear",
             "`gear` is enumeration Gear, but 'int8' needs a number, a bool or a verdict",
             "compare it with a member by =="},
            {"sped > 5", "sped", "unknown signal 'sped'", "did you mean 'speed'?"},
            {"x == \"sped\"", "\"sped\"", "unknown signal 'sped'", "did you mean 'speed'?"},
            {"G[2, 1] p", "[2, 1]", "the interval ends before it begins", "swap its ends"},
            {"G[inf, inf] p", "[inf, inf]", "a time is finite",
             "only the end of an interval may be inf"},
            {"G[0, 1e99] p", "[0, 1e99]", "a time is finite",
             "only the end of an interval may be inf"},
            {"Shift[inf](x) > 1", "[inf]", "a time is finite", ""},
            {"p until[-1, 1] p", "[-1, 1]", "an until does not look back",
             "begin the interval at 0, or use since"},
            {"once[-5, 0](p)", "[-5, 0]", "'once' counts its times backwards",
             "write [0, 5 s] for the last 5 s"},
            {"p since[-1, begin] p", "[-1, begin]", "'since' counts its times backwards",
             "write [0, 5 s] for the last 5 s"},
            {"fixed(300, \"u8f0\") == f", "fixed(300, \"u8f0\")",
             "300 is no stored integer of u8f0",
             "write the stored integer and the type: fixed(24, \"u16f4\")"},
            {"fixed(3, \"\") == f", "fixed(3, \"\")",
             "Fixed-point type: the word length 0 cannot be used; give 1 to 128 bits",
             "write the stored integer and the type: fixed(24, \"u16f4\")"},
            {"fixed(3, \"u8f01\") == f", "fixed(3, \"u8f01\")", "'u8f01' is no fixed-point type",
             "write the stored integer and the type: fixed(24, \"u16f4\")"},
        },
        [](const std::string& text) { buildFormula(ParsedFormula(text), names()); });
}

TEST(Typing, FailuresOfDefinitionsSayWhichOne) {
    try {
        buildFormula(ParsedFormula("p & outer"),
                     names({{"outer", "p | inner"}, {"inner", "x > sped"}}));
        FAIL();
    } catch (const FormulaError& error) {
        EXPECT_EQ(error.definition(), "inner");
        EXPECT_EQ(error.span().begin, 4U);
        EXPECT_EQ(error.problem().excerpt, "x > sped");
        EXPECT_EQ(error.problem().caretWidth, 4U);
    }
}

TEST(Typing, CirclesNameTheirChain) {
    EXPECT_EQ(typed("p & a", {{"a", "b | p"}, {"b", "c"}, {"c", "p & a"}}),
              "definitions go in a circle: a -> b -> c -> a");
    EXPECT_EQ(typed("a", {{"a", "a"}}), "definitions go in a circle: a -> a");
}

TEST(Typing, DefinitionsThatMultiplyAreNotBuilt) {
    std::map<std::string, std::string> definitions{{"d0", "p"}};
    for (int i = 1; i <= 60; ++i) {
        const std::string before = "d" + std::to_string(i - 1);
        definitions["d" + std::to_string(i)] = std::string(before).append(" & ").append(before);
    }
    EXPECT_EQ(typed("d60", definitions), "the formula has more than 250000 operators and operands");
}

TEST(Typing, DefinitionsCountTowardsNesting) {
    std::map<std::string, std::string> definitions{{"d0", "p"}};
    for (std::size_t i = 1; i <= 100'000; ++i) {
        definitions["d" + std::to_string(i)] = "d" + std::to_string(i - 1);
    }
    EXPECT_EQ(typed("d400", definitions), "p : bool");
    EXPECT_NE(typed("d600", definitions), "p : bool");
    EXPECT_NE(typed("d100000", definitions), "p : bool");
}

}  // namespace
}  // namespace vorm::evaluation
