#include "evaluation/formula/refusals.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

std::string canonical(const std::string& text) {
    return formulaText(expressionOf(ParsedFormula(text)));
}

struct Reading {
    std::string text;
    std::string same;
};

void expectSame(const std::vector<Reading>& readings) {
    for (const Reading& reading : readings) {
        EXPECT_EQ(canonical(reading.text), reading.same) << reading.text;
        EXPECT_EQ(canonical(reading.same), reading.same) << reading.text;
    }
}

TEST(Parsing, SpellingsOfOneOperatorAreTheSame) {
    expectSame({
        {"G[0,1] p", "Globally[0, 1 s](p)"},
        {"always [ 0 , 1 ] (p)", "Globally[0, 1 s](p)"},
        {"F[0,1]p", "Eventually[0, 1 s](p)"},
        {"eventually[0,1](p)", "Eventually[0, 1 s](p)"},
        {"p U[0,2] q", "p Until[0, 2 s] q"},
        {"p until[0,2] q", "p Until[0, 2 s] q"},
        {"p implies q", "p -> q"},
        {"p or q", "p | q"},
        {"p||q", "p | q"},
        {"p and q", "p & q"},
        {"p&&q", "p & q"},
        {"not !~p", "~(~(~(p)))"},
        {"x != y", "x ~= y"},
        {"single(x) == logical(p)", "float(x) == bool(p)"},
        {"p # until the end\n & // more\n q", "p & q"},
    });
}

TEST(Parsing, TighterOperatorsComeFirst) {
    expectSame({
        {"p -> q -> r", "p -> (q -> r)"},
        {"p | q & r", "p | (q & r)"},
        {"p & q | r -> s", "((p & q) | r) -> s"},
        {"p U[0,1] q & r", "(p Until[0, 1 s] q) & r"},
        {"x < y U[0,1] p", "(x < y) Until[0, 1 s] p"},
        {"x - y - z + 1", "x - y - z + 1"},
        {"x - (y - z)", "x - (y - z)"},
        {"x + y * 2 > -z", "(x + (y * 2)) > -(z)"},
        {"~x == y", "~(x) == y"},
        {"G[0,1] p & q", "Globally[0, 1 s](p) & q"},
        {"p | (q | r) | s", "p | (q | r) | s"},
    });
}

TEST(Parsing, TimesAreInSecondsWhateverTheirUnit) {
    expectSame({
        {"G[0, 200 ms] p", "Globally[0, 200 ms](p)"},
        {"G[-1 min, 1 h] p", "Globally[-1 min, 1 h](p)"},
        {"F[1us, 3ns] p", "Eventually[1 us, 3 ns](p)"},
        {"Shift[1.5e3ms](x)", "Shift[1.5 s](x)"},
        {"G[-inf, nan] p", "Globally[-inf, nan](p)"},
    });
}

TEST(Parsing, WindowsMayHaveNoEnd) {
    expectSame({
        {"always(p)", "Globally(p)"},
        {"F[0, inf] p", "Eventually(p)"},
        {"G[2, inf] p", "Globally[2 s, inf](p)"},
        {"eventually[0, end](p)", "Eventually[0, end](p)"},
        {"once(p) & H(p)", "Once(p) & Historically(p)"},
        {"historically[1, begin] p", "Historically[1 s, begin](p)"},
        {"O[0, 5 ms](p)", "Once[0, 5 ms](p)"},
        {"p until q", "p Until q"},
        {"p until[0, end] q", "p Until[0, end] q"},
        {"p since q & r", "(p Since q) & r"},
        {"p S[0, 2] q since[1, inf] r", "(p Since[0, 2 s] q) Since[1 s, inf] r"},
        {"since since once", R"("since" Since "once")"},
    });
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

TEST(Parsing, ChainsAndMembershipStandForWhatTheySay) {
    expectSame({
        {"1 <= x <= 5", "(1 <= x) & (x <= 5)"},
        {"a + 1 < b < c <= d", "((a + 1) < b) & (b < c) & (c <= d)"},
        {"5 > abs(x - y) >= 0 | p", "((5 > abs(x - y)) & (abs(x - y) >= 0)) | p"},
        {"x in {1, -2, 3.5}", "(x == 1) | (x == -2) | (x == 3.5)"},
        {"mode in {'N', \"P p\"} -> p", "((mode == 'N') | (mode == \"P p\")) -> p"},
        {"rise(x in {1}) & in", "rise(x == 1) & in"},
    });
}

TEST(Parsing, FunctionsOfNumbers) {
    expectSame({
        {"x / y * 2 / (3 / z)", "x / y * 2 / (3 / z)"},
        {"min(x, y, 3) > max(x, -y)", "min(min(x, y), 3) > max(x, -(y))"},
        {"min[0, 5 s](x) + max[-1, 0](x)", "min[0, 5 s](x) + max[-1 s, 0](x)"},
        {"pow(x, 2) > sqrt(y)", "pow(x, 2) > sqrt(y)"},
        {"integral[0, 1](x) < mean[0, 1](x)", "integral[0, 1 s](x) < mean[0, 1 s](x)"},
        {"duration[0, 9](p) > 2", "duration[0, 9 s](p) > 2"},
        {"count[-9, 0](rise(p)) > 2", "count[-9 s, 0](rise(p)) > 2"},
        {"changed(x) | sign(x) == round(floor(ceil(y)))",
         "changed(x) | (sign(x) == round(floor(ceil(y))))"},
    });
}

TEST(Parsing, ChainsThatDoubleTooOftenAreNotRead) {
    const std::string open = repeated("(0 < ", 60);
    EXPECT_THROW(ParsedFormula(open + "x" + repeated(" < 1)", 60)), FormulaError);
}

TEST(Parsing, OperatorsAreNamesWhereTheirBracketDoesNotFollow) {
    expectSame({
        {"G & F", R"("G" & "F")"},
        {"U U[0,1] U", R"("U" Until[0, 1 s] "U")"},
        {"abs + double", R"("abs" + "double")"},
        {R"("Volume Flow" > "control[0]")", R"("Volume Flow" > "control[0]")"},
        {"\"speed\" > _a.b9", "speed > _a.b9"},
        {R"("a\"b\\\n\x7f")", R"("a\"b\\\n\x7f")"},
        {R"("" == "and")", R"("" == "and")"},
        {"Kühlung > 3", "Kühlung > 3"},
    });
}

TEST(Parsing, AMinusThatTouchesANumberIsPartOfIt) {
    expectSame({
        {"x - 5", "x - 5"},
        {"x -5", "x - 5"},
        {"x - -5", "x - -5"},
        {"- 5", "-(5)"},
        {"-(5)", "-(5)"},
        {"-5 == --inf", "-5 == -(-inf)"},
        {"007 == .5 + 1.", "7 == (0.5 + 1)"},
    });
}

TEST(Parsing, AValueTypeOfALiteralIsALiteral) {
    expectSame({
        {"int8(-128)", "int8(-128)"},
        {"int8((5))", "int8(double(5))"},
        {"double(5)", "5"},
        {"int8(true)", "int8(bool(true))"},
        {"bool(-5)", "bool(double(-5))"},
        {"bool(bool(true))", "bool(bool(true))"},
        {"verdict(\"PASS\") == verdict(PASS)", "verdict(\"PASS\") == verdict(PASS)"},
        {"verdict(\"other one\")", "verdict(\"other one\")"},
        {"half(0.1)", "half(0.0999755859375)"},
        {"fixed(1.5)", "fixed(1.5)"},
        {"fixed(98304, \"s32f16\")", "fixed(1.5)"},
        {"fixed(-3, \"s8f-2*0.1-5\")", "fixed(-3, \"s8f-2*0.1-5\")"},
        {"Mode == 'it\\'s'", "Mode == 'it\\'s'"},
    });
}

TEST(Parsing, RisesAndFallsKeepTheirForm) {
    expectSame({
        {"rise(p) & fall(p)", "rise(p) & fall(p)"},
        {"Rise[2 s](x, 5)", "Rise[2 s](x, 5)"},
        {"(x Rise [02] 5)", "Rise[2 s](x, 5)"},
        {"x Fall [00.5] 5 & p", "Fall[500 ms](x, 5) & p"},
        {"(x Fall [0-1e-07] nan)", "Fall[-100 ns](x, nan)"},
        {"(x Fall [0inf] 1)", "Fall[inf](x, 1)"},
    });
}

TEST(Parsing, LongChainsAreNotNested) {
    std::string chain = "p0";
    for (int i = 1; i < 20'000; ++i) {
        chain += " & p" + std::to_string(i);
    }
    EXPECT_EQ(canonical(chain), chain);
}

TEST(Parsing, NestingHasALimitInEveryForm) {
    struct Nested {
        std::string before;
        std::string after;
    };
    for (const Nested& form : {Nested{"(", ")"},
                               {"~", ""},
                               {"~(", ")"},
                               {"G[0,1]", ""},
                               {"int8(", ")"},
                               {"p -> ", ""},
                               {"Rise[1](", ",1)"},
                               {"Rise[1](1,", ")"},
                               {"p & (", ")"},
                               {"rise(", ")"}}) {
        const auto nested = [&form](std::size_t times) {
            return repeated(form.before, times) + "p" + repeated(form.after, times);
        };
        EXPECT_NO_THROW(ParsedFormula(nested(ParsedFormula::maximumNesting - 1))) << form.before;
        EXPECT_THROW(ParsedFormula(nested(ParsedFormula::maximumNesting + 1)), FormulaError)
            << form.before;
        EXPECT_THROW(ParsedFormula(nested(100'000)), FormulaError) << form.before;
    }
}

TEST(Parsing, NestedImplicationsRisesAndFallsAreAsLongAsTheirText) {
    const std::string nested = repeated("(p -> rise(", 240) + "q" + repeated("))", 240);
    std::string all = nested;
    for (int i = 0; i < 20; ++i) {
        all += " & " + nested;
    }
    const assessments::Expression tree = expressionOf(ParsedFormula(all));
    std::size_t nodes = 0;
    assessments::support::forEachNode(tree, [&nodes](const auto&) { ++nodes; });
    EXPECT_EQ(nodes, 21U * (3 * 240 + 1) + 20);
}

TEST(Parsing, NamesAreThoseThatMayBeSignals) {
    const ParsedFormula formula(R"(G[0, 1 s](x > limit) & Mode == "N" | Mode == 'R' | "q q")");
    EXPECT_EQ(formula.names(), (std::set<std::string>{"Mode", "N", "limit", "q q", "x"}));
}

TEST(Parsing, RefusalsSayWhereWhatAndWhatToDo) {
    expectRefusals(
        {
            {"", "", "expected an operand, found the end of the formula",
             "write a formula such as always[0, 5 s](speed < 20)"},
            {"x >", "", "expected an operand, found the end of the formula", ""},
            {"x y", "y", "expected an operator, found 'y'", ""},
            {"p adn q", "adn", "expected an operator, found 'adn'", "did you mean 'and'?"},
            {"x = 5", "=", "expected an operator, found the character '='", "write == to compare"},
            {"x \x01", "\x01", "expected an operator, found the character '\\x01'", ""},
            {"1 < x > 5", ">", "these comparisons do not chain",
             "write two, such as a < b & b == c"},
            {"x in 2", "2", "expected '{', found '2'", "write x in {1, 2, 3}"},
            {"x in {1, 2", "{", "this '{' is not closed", "add '}'"},
            {"min(x) > 1", ")", "expected ',' and another operand, found ')'", "write min(x, y)"},
            {"pow(x, 2, 3)", ",", "expected ')', found ','", "the '(' of `(x, 2` is not closed"},
            {"integral(x)", "integral", "'integral' needs an interval",
             "write integral[0, 5 s](...)"},
            {"p & (x > 5", "(", "this '(' is not closed", "add ')'"},
            {"(x > 5]", "]", "expected ')', found ']'", "the '(' of `(x > 5` is not closed"},
            {"x > 5)", ")", "expected an operator, found ')'", "nothing is open here"},
            {"always p", "always", "'always' needs an operand in brackets",
             "write always[0, 5 s](...), or always(...) for all of time"},
            {"G[0, begin] p", "begin", "expected a time, found 'begin'",
             "a window of the future goes to the end of the recording"},
            {"p since[0, end] q", "end", "expected a time, found 'end'",
             "a window of the past goes to the begin of the recording"},
            {"Shift(x)", "Shift", "'Shift' needs a distance in time", "write Shift[2 s](x)"},
            {"x Fall 5", "Fall", "'Fall' needs a distance in time", "write Fall[2 s](x, 5)"},
            {"until[0, 1] q", "until", "expected an operand before 'until', found 'until'", ""},
            {"allways[0, 5](x)", "allways", "unknown operator 'allways'", "did you mean 'always'?"},
            {"control[0] > 1", "control", "unknown operator 'control'",
             "names with brackets are quoted, for example \"control[0]\""},
            {"G[0] p", "]", "expected ',' and the end of the interval, found ']'",
             "an interval is written [0, 5 s]"},
            {"G[0, 5 sec] p", "sec", "expected a unit of time, found 'sec'",
             "the units are fs, ps, ns, us, ms, s, min and h"},
            {"p & and", "and", "expected an operand, found 'and'",
             "quote the name of a signal: \"and\""},
            {"x > \"a", "\"a", "this quote is not closed", "add \""},
            {R"("a\q")", R"("a\q")", "unknown escape after '\\' in quotes",
             "write \\\\ for a backslash"},
            {"x Rise [2] 5", "2", "expected the distance behind a 0, found '2'",
             "write Rise[2 s](x, 5) or Fall[2 s](x, 5)"},
            {"fixed(1, 2)", "2", "expected a fixed-point type, found '2'", "for example \"u16f4\""},
        },
        [](const std::string& text) { ParsedFormula{text}; });
}

TEST(Parsing, ErrorsAreInputErrorsWithTheirPlaceInTheText) {
    try {
        const ParsedFormula formula("x > 1 &\n  \"\xc3\xa4\" > (3");
        FAIL();
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(),
                     "2:9: this '(' is not closed\n      \"\xc3\xa4\" > (3\n"
                     "            ^\n  add ')'");
        EXPECT_EQ(error.problem().where.file, "");
    }
}

}  // namespace
}  // namespace vorm::evaluation
