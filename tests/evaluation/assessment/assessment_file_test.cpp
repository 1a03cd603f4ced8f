#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

InputProblem problemOf(const std::string& text) {
    try {
        const AssessmentFile file = parseAssessmentFile(text, "a.toml");
        for (const Assessment& assessment : file.assessments) {
            typedFormula(file, assessment, namesWithoutData(file));
        }
    } catch (const InputError& error) {
        return error.problem();
    }
    ADD_FAILURE() << "accepted: " << text;
    return {};
}

TEST(AssessmentFile, HoldsWhatItsKeysSay) {
    const AssessmentFile file = parseAssessmentFile(R"(
title = "T"
[recording]
encoding = "latin-1"
delimiter = ";"
time = ["Date", "Time"]
unit = "ms"
origin = { file = "x.csv" }
equal_times = "last"
form = "long"
value_column = "v"
interpolation = "linear"
max_gap = "500 ms"
[enumerations]
Gear = ["P", "D"]
[signals]
b = "B"
a = { column = "A", type = "Gear", interpolation = "held", max_gap = 2, unit = "m" }
c = { type = "enum" }
[definitions]
fast = "b > 3"
[[assessment]]
name = "second"
formula = "fast"
from = "2 min"
to = 200.000_000_000_000_000_01
[[assessment]]
name = "first"
formula = "a == 'P'"
)",
                                                    "a.toml");
    EXPECT_EQ(file.title, "T");
    EXPECT_EQ(file.layout.encoding, DeclaredEncoding::Latin1);
    EXPECT_EQ(file.layout.delimiter, ';');
    EXPECT_EQ(file.layout.time.columns, (std::vector<std::string>{"Date", "Time"}));
    EXPECT_EQ(file.layout.time.unit->name, "ms");
    EXPECT_EQ(std::get<TimeOrigin::FirstOf>(file.layout.time.origin).file, "x.csv");
    EXPECT_EQ(file.layout.time.equalTimes, EqualTimes::Last);
    EXPECT_EQ(file.layout.longForm->nameColumn, "name");
    EXPECT_EQ(file.layout.longForm->valueColumn, "v");
    EXPECT_EQ(file.layout.maxGap->text(), "0.5");
    ASSERT_EQ(file.layout.signals.size(), 3);
    EXPECT_EQ(file.layout.signals[0].column, "B") << "signals keep the order of the file";
    EXPECT_EQ(file.layout.signals[1].type->enumeration->members,
              (std::vector<std::string>{"P", "D"}));
    EXPECT_EQ(file.layout.signals[1].where.line, 18);
    EXPECT_EQ(file.layout.signals[2].type->enumeration->name, "c");
    EXPECT_EQ(file.assessments[0].name, "second");
    EXPECT_EQ(file.assessments[0].from->firstTimeIn(Recording()).text(), "120");
    EXPECT_EQ(file.assessments[0].to->lastTimeIn(Recording()).text(), "200.00000000000000001");
    EXPECT_FALSE(file.find("first").from);
}

TEST(AssessmentFile, OriginsAreNamedOrTimes) {
    const auto origin = [](const std::string& value) {
        return parseAssessmentFile("[recording]\norigin = " + value +
                                       "\n[[assessment]]\nname = 'a'\nformula = 'x > 3'\n",
                                   "a.toml")
            .layout.time.origin;
    };
    for (const auto& [value, time] : std::vector<std::pair<std::string, std::string>>{
             {"-3", "-3"}, {"'46408.60'", "46408.60"}, {"{ time = '09:39' }", "09:39"}}) {
        EXPECT_EQ(std::get<TimeOrigin::At>(origin(value)).time, time) << value;
    }
    EXPECT_TRUE(std::holds_alternative<TimeOrigin::AsRecorded>(origin("'recorded'")));
    for (const std::string value :
         {"'frist'", "''", "1.5", "{}", "['first']", "{ file = 'a', time = '3' }", "{ at = 3 }"}) {
        EXPECT_THROW(origin(value), InputError) << value;
    }
}

TEST(AssessmentFile, AssessmentsAreAListOfTables) {
    for (const std::string text :
         {"assessment = 5", "assessment = [5]", "[assessment]\nname = \"a\"", "assessment = {}"}) {
        const InputProblem problem = problemOf(text);
        EXPECT_EQ(problem.message, "'assessment' has to be a list of tables") << text;
        EXPECT_EQ(problem.where.line, 1U) << text;
    }
}

// Every text has the same mistake, a misspelt member at `'X'`.
TEST(AssessmentFile, FormulaErrorsArePlacedInTheFile) {
    const std::string head =
        "[enumerations]\nG = [\"P\"]\n[signals]\ng = { type = \"G\" }\n[[assessment]]\n"
        "name = \"a\"\n";
    struct Row {
        std::string formula;
        std::size_t line;
        std::size_t column;
        std::string excerpt;
        std::size_t caret;
    };
    for (const Row& row : std::vector<Row>{
             {"formula = \"g == 'X'\"", 7, 17, "g == 'X'", 5},
             {"formula   =   '''g == 'X' '''", 7, 23, "g == 'X' ", 5},
             {"formula = \"\"\"\n  g == 'P' or\n  g == 'X'\"\"\"", 9, 8, "  g == 'X'", 7},
             {"formula = '''\n# \xc3\xa4\n g == 'X'\n'''", 9, 7, " g == 'X'", 6},
             {"formula = \"'X' == g # \xc3\xa4\"", 7, 12, "'X' == g # \xc3\xa4", 0},
             {R"(formula = "g == 'X'\t")", 7, 11, "g == 'X'\t", 5}}) {
        SCOPED_TRACE(row.formula);
        const InputProblem problem = problemOf(head + row.formula + "\n");
        EXPECT_EQ(problem.where.file, "a.toml");
        EXPECT_EQ(problem.where.line, row.line);
        EXPECT_EQ(problem.where.column, row.column);
        EXPECT_EQ(problem.excerpt, row.excerpt);
        EXPECT_EQ(problem.caret, row.caret);
    }
}

TEST(AssessmentFile, ErrorsInDefinitionsArePlacedThere) {
    const InputProblem problem = problemOf(
        "[definitions]\nfine = \"x > 3\"\nwrong = \"fine + 3\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"fine & wrong > 2\"\n");
    EXPECT_EQ(problem.where.line, 3);
    EXPECT_EQ(problem.excerpt, "fine + 3");
}

TEST(AssessmentFile, OnlyTheNamesInUseAreRead) {
    const AssessmentFile file = parseAssessmentFile(
        "[definitions]\na = \"b & x > 1\"\nb = \"y > 2\"\nunused = \"z > 3\"\n"
        "[[assessment]]\nname = \"one\"\nformula = \"a\"\n"
        "[[assessment]]\nname = \"two\"\nformula = \"w > 1\"\n",
        "a.toml");
    EXPECT_EQ(namesToRead(file, {&file.find("one")}), (std::set<std::string>{"a", "b", "x", "y"}));
}

}  // namespace
}  // namespace vorm::evaluation
