// What a user can get wrong: each input gives one message that says what, where and what to do.
// Here is what the program makes of them; the tests of formulas and of reading have the rest.

#include "program_runner.hpp"

#include <vector>

namespace assess_tests {
namespace {

constexpr const char* drive =
    "time,speed,brake,mode\n0,10,0,N\n1,20,0,N\n2,30,1,D\n3,10,0,D\n4,5,0,D\n";

std::string fileWith(const std::string& formula) {
    return "[[assessment]]\nname = \"a\"\nformula = '" + formula + "'\n";
}

const std::string sound = fileWith("speed < 20");

struct BadInput {
    std::string input;
    std::vector<std::string> fragments;
};

class BadInputs : public ProgramTest {
protected:
    BadInputs() {
        write("a.toml", sound);
        write("d.csv", drive);
    }

    void expectMessage(const BadInput& bad, const std::string& arguments, int exitCode) const {
        SCOPED_TRACE(bad.input);
        const ProgramResult result = assess(arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        const std::string messages = result.out + result.err;
        for (const std::string& fragment : bad.fragments) {
            EXPECT_TRUE(has(messages, fragment));
        }
        EXPECT_FALSE(has(messages, "unexpected failure"));
    }
};

// The text of the formula begins in column 12 of line 3.
TEST_F(BadInputs, FormulasAreRefused) {
    for (const BadInput& bad : std::vector<BadInput>{
             {"sped < 20", {"a.toml:3:12:", "'sped'", "sped < 20", "^^^^", "mean 'speed'?"}},
             {"mode == \"P\"",
              {"a.toml:3:20:", "'P'", "mode", "the recording has 'N' and 'D'", "[enumerations]"}},
             {"speed + 1", {"a.toml:3:12:", "double", "compare"}},
             {"slope(speed) < 3",
              {"a.toml:3:18:", "`speed` is held", "slope(speed) < 3", "= \"linear\""}},
             {"int8(speed / 0) < 3",
              {"a.toml:3:12:", "cannot be evaluated", "in int8(speed / 0) < int8(3)"}},
         }) {
        write("a.toml", fileWith(bad.input));
        expectMessage(bad, "run a.toml d.csv", 3);
    }
}

TEST_F(BadInputs, AssessmentFilesAreRefused) {
    const std::string named = "[[assessment]]\nname = \"a\"\n";
    for (const BadInput& bad : std::vector<BadInput>{
             {"[[assessment]\nname = \"a\"\n", {"a.toml:1:", "[[assessment]", "TOML"}},
             {named + "formule = \"speed < 20\"\n", {"a.toml:1:1:", "no 'formula'"}},
             {sound + "form = 3\n", {"a.toml:4:8:", "unknown key 'form'", "did you mean 'from'"}},
             {"[recording]\ntime = \"t\"\nopen = 3\n" + sound,
              {"a.toml:3:8:", "'open' in [recording]",
               "it can have 'encoding', 'header', 'first_row', 'names', 'delimiter', "}},
             {"title = \"x\"\n", {"a.toml:", "no assessment", "[[assessment]]"}},
             {"[[assessments]]\nname = \"a\"\n",
              {"a.toml:1:1:", "unknown key 'assessments'", "did you mean 'assessment'?"}},
             {"[[assessment]]\nname = \"\"\nformula = \"speed < 20\"\n",
              {"a.toml:2:8:", "the assessment has no name"}},
             {sound + "from = \"2 days\"\n", {"a.toml:4:8:", "'from'", "min"}},
             {sound + sound, {"a.toml:5:8:", "two assessments 'a'"}},
             {"[definitions]\nx = \"y\"\ny = \"x\"\n" + fileWith("x > 3"),
              {"a.toml:3:", "x -> y -> x"}},
             {"[definitions]\nd = \"mode > 3 & 2\"\n" + sound, {"a.toml:2:"}},
         }) {
        write("a.toml", bad.input);
        expectMessage(bad, "check a.toml --against d.csv", 3);
    }
}

TEST_F(BadInputs, ARunTellsTheFirstErrorOfAFileAndHowManyMoreThereAre) {
    write("a.toml", fileWith("speed <") + "from = \"soon\"\nsverity = \"info\"\n");
    const ProgramResult run = assess("run a.toml d.csv");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(has(run.err, "a.toml:3:19: expected an operand"));
    EXPECT_TRUE(has(run.err, "  2 more errors are in the file: 'assess check a.toml' tells all\n"));
    EXPECT_FALSE(has(run.err, "a.toml:4"));
    EXPECT_TRUE(has(assess("check a.toml").err, "a.toml: 3 errors\n"));
}

TEST_F(BadInputs, RecordingsAreRefused) {
    for (const BadInput& bad : std::vector<BadInput>{
             {"time,speed\n0,1\n2,3\n1,3\n",
              {"d.csv:4:1:", "the time goes back by 1 s from '2' in line 3 to '1'"}},
             {"time,speed\n0,1\n1,fast\n", {"d.csv:3:3:", "'fast'", "'speed'", "number"}},
             {"", {"d.csv", "empty"}},
         }) {
        write("d.csv", bad.input);
        expectMessage(bad, "run a.toml d.csv", 3);
    }
}

TEST_F(BadInputs, PathsThatCannotBeUsedAreNamed) {
    for (const BadInput& bad : std::vector<BadInput>{
             {"run a.toml other.csv", {"other.csv", "No such file"}},
             {"run b.toml d.csv", {"'b.toml'", "No such file", "check the path"}},
             {"show a.toml b d.csv", {"a.toml:", "no assessment 'b'", "'a'"}},
             {"run a.toml d.csv -o none/out.txt", {"none/out.txt", "No such file"}},
             {"run a.toml d.csv >/dev/full",
              {"standard output: No space", "make room", "--output"}},
             {"run --help >/dev/full", {"cannot write", "standard output: No space"}},
             {"run a.toml d.csv >&-", {"standard output: Bad file"}},
             {"run a.toml --recordings - </", {"cannot read '-'", "Is a directory"}},
             {"run /proc/self/mem d.csv", {"cannot read '/proc/self/mem'", "Input/output"}},
             {"run $(printf '%5000s' x | tr ' ' x) d.csv", {"cannot read", "too long"}},
         }) {
        expectMessage(bad, bad.input, 3);
    }
}

// Else the table would be written over them.
TEST_F(BadInputs, AFileDoesNotTakeThePlaceOfClosedOutput) {
    const std::string lines = "run a.toml d.csv --quiet -f jsonl=lines";
    EXPECT_EQ(assess(lines).exitCode, 1);
    const std::string whole = contentOf(folder() / "lines");
    EXPECT_EQ(assess(lines + " >&-").exitCode, 3);
    EXPECT_EQ(contentOf(folder() / "lines"), whole);
}

TEST_F(BadInputs, CommandLinesAreRefused) {
    for (const BadInput& bad : std::vector<BadInput>{
             {"run a.toml d.csv --colour", {"--colour", "--help"}},
             {"runn a.toml", {"no command 'runn'", "did you mean 'run'?"}},
             {"run a.toml d.csv -f xml", {"xml", "junit"}},
             {"run a.toml d.csv -o ./d.csv", {"'./d.csv' is an input", "another path"}},
             {"run a.toml d.csv -o a.toml", {"'a.toml' is an input"}},
             {"run a.toml d.csv later.csv -f jsonl=./later.csv", {"'./later.csv' is an input"}},
             {"run a.toml d.csv -f jsonl=-", {"'jsonl=-' names no file", "--format jsonl"}},
             {"run a.toml d.csv -o ''", {"--output"}},
             {"run a.toml d.csv --intervals -1", {"--intervals"}},
             {"show a.toml a d.csv --margin nan", {"--margin", "nan"}},
             {"run - - <d.csv", {"standard input", "once"}},
             {"signals d.csv --unit ms --unit s", {"--unit"}},
             {"signals d.csv --unit parsec", {"--unit: 'parsec' is no unit", "'min'"}},
             {"signals d.csv --time-format %Z", {"--time-format: '%Z'", "%z"}},
             {"signals d.csv --name-column n", {"--name-column: ", "'form' to 'long'"}},
             {"signals d.csv --layout a.toml --max-gap 0", {"--max-gap: ", "above 0"}},
             {"signals d.csv --origin frist", {"--origin: 'frist'", "'first' or a number"}},
             {"run a.toml d.csv --set limit", {"--set: 'limit' has no value", "limit=..."}},
             {"check a.toml --set l=3", {"--set: there is no parameter 'l' in a.toml", "no table"}},
         }) {
        expectMessage(bad, bad.input, 2);
    }
}

TEST_F(BadInputs, ABareMemberIsToldToBeQuoted) {
    write("m.toml", fileWith("mode == D"));
    EXPECT_TRUE(has(assess("check m.toml --against d.csv").err,
                    "unknown signal 'D'\n    mode == D\n            ^\n"
                    "  write 'D' for the member of enumeration mode"));
}

TEST_F(BadInputs, ASummaryKeepsTheLinesOfAMessage) {
    write("b.toml", fileWith("rise(brake)"));
    write("e.csv", drive);
    EXPECT_TRUE(has(assess("run b.toml d.csv e.csv").out,
                    "could not be assessed on 2 recordings, the first d.csv:\n"
                    "     b.toml:3:17: `brake` is double, but 'rise' needs bool\n"
                    "         rise(brake)\n"
                    "              ^^^^^\n"));
}

TEST_F(BadInputs, FailuresBesideThemAreTold) {
    write("bad.csv", "time,speed\n0,1,2\n");
    const ProgramResult result = assess("run a.toml bad.csv d.csv");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(has(result.err,
                    "note: not all input could be used, and of what could be, "
                    "assessments failed on 'd.csv'"));
    EXPECT_FALSE(has(assess("run a.toml d.csv").err, "note:"));
}

}  // namespace
}  // namespace assess_tests
