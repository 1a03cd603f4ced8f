// The program as a whole: what it prints, writes and returns.

#include "program_runner.hpp"

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include <sstream>

namespace assess_tests {
namespace {

class Assess : public ProgramTest {
protected:
    Assess() {
        write("a.toml", R"toml(title = "A drive"
[signals]
speed = { interpolation = "linear" }
[[assessment]]
name = "slow"
description = "never above 20"
formula = "speed <= 20"
[[assessment]]
name = "brakes"
formula = "speed > 20 -> eventually[0, 2 s](brake == 1)"
[[assessment]]
name = "later"
formula = "speed < 3"
from = 10
to = 12
)toml");
        write("d.csv", "time,speed,brake\n0,10,0\n1,30,0\n2,30,1\n3,10,0\n4,10,0\n");
        write("ok.csv", "time,speed,brake\n0,10,0\n1,12,0\n2,11,1\n3,10,0\n4,10,0\n");
    }
};

// The lines below the only verdict of a table.
std::string notesIn(const std::string& table) {
    std::istringstream lines(table);
    std::string notes;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("         ")) {
            notes += line.substr(line.find_first_not_of(' ')) + "\n";
        }
    }
    return notes;
}

TEST_F(Assess, TableTellsVerdictsTimesAndIntervals) {
    const ProgramResult result = assess("run a.toml d.csv");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, R"(A drive

d.csv, from 0 s to 12 s
  verdict    assessment  passed  failed  no result  first failure
  FAIL       slow           2.0     2.0          0            0.5
             fails from 0.5 s to 2.5 s
  PASS       brakes         4.0       0          0              -
  NO_RESULT  later            0       0        2.0              -
             nothing is known in the range from 10 s to 12 s: its signals are known from 0 s to 4 s

1 passed, 1 failed, 1 without result
)");
}

// In t.csv p is true in [2, 4[ and false in the rest of [0, 10]; nothing else is known.
TEST_F(Assess, WhatWasNeverTriggeredIsSaid) {
    write("t.csv",
          "time,p,q,late\n0,false,false,\n2,true,true,\n4,false,false,\n"
          "6,false,false,false\n10,false,false,false\n");
    struct Row {
        const char* formula;
        const char* range;
        bool isNever;
    };
    for (const Row& row : {
             Row{"p -> q", "", false},
             Row{"p -> q", "from = 5", true},
             Row{"not p or q", "from = 5", true},
             Row{"always[0, 2 s](p -> q)", "from = 4", true},
             Row{"always[-2 s, 0](p -> q)", "from = 5", false},
             Row{"always[0, 2 s](p -> q)", "to = 1", false},
             Row{"always[1 s, 2 s](p -> q)", "from = 3", true},
             Row{"p -> q", "from = 5\nto = 12", false},
             Row{"late -> q", "", false},
             Row{"p -> p", "from = 3\nto = 3", false},
             Row{"q & p -> q", "to = 1", true},
             Row{"always[0, 20 s](p -> q)", "from = 5", false},
             Row{"p & q", "from = 5", false},
             Row{"p -> eventually[1 s, 2 s](q)", "from = 5", true},
         }) {
        write("t.toml", std::string("[[assessment]]\nname = \"never\"\nformula = \"") +
                            row.formula + "\"\n" + row.range + "\n");
        EXPECT_EQ(outcome("run t.toml t.csv")["never_triggered"], row.isNever)
            << row.formula << ' ' << row.range;
        EXPECT_EQ(assess("run t.toml t.csv -f json").err,
                  row.isNever ? "note: 1 assessment was never triggered: 'never'\n" : "");
    }
}

TEST_F(Assess, WhatWasNeverTriggeredIsInEveryReport) {
    write("b.toml",
          "[[assessment]]\nname = \"brakes\"\nformula = \"speed > 20 -> brake == 1\"\n"
          "[[assessment]]\nname = \"flies\"\nformula = \"speed > 50 -> brake == 1\"\n");
    const std::string said = "never triggered: its condition 'speed > 50' is false throughout";
    const ProgramResult table = assess("run b.toml ok.csv");
    EXPECT_TRUE(has(table.out, "           " + said + "\n"));
    EXPECT_EQ(table.err, "note: 2 assessments were never triggered: 'brakes', 'flies'\n");
    EXPECT_EQ(assess("run b.toml ok.csv --quiet").err, "");
    const ProgramResult junit = assess("run b.toml ok.csv none.csv d.csv --format junit");
    EXPECT_EQ(
        junit.err,
        "note: 2 assessments were never triggered: 'brakes' (in 1 of 2 recordings), 'flies'\n"
        "note: not all input could be used, and of what could be, assessments failed on 'd.csv'\n");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(junit.out.c_str()));
    const auto flies = document.child("testsuites").child("testsuite").last_child();
    EXPECT_EQ(flies.child("system-out").text().as_string(), said + "\n");
}

TEST_F(Assess, TheShareWithoutResultIsToldWithItsIntervals) {
    write("h.csv", "time,x,y\n0,1,1\n40,1,0\n");
    struct Row {
        const char* assessment;
        const char* options;
        const char* notes;
        double share;
    };
    for (const Row& row : {
             Row{"formula = 'always[0, 3 s](x > 0)'", "",
                 "no result for 8 % of the range: from 37 s to 40 s\n", 0.075},
             Row{"formula = 'always[-3 s, 3 s](x > 0)'", "",
                 "no result for 15 % of the range, first from 0 s to 3 s\nno result from 37 s to "
                 "40 s\n",
                 0.15},
             Row{"formula = 'always[-3 s, 3 s](x > 0)'", " --intervals 1",
                 "no result for 15 % of the range, first from 0 s to 3 s\nand in 1 more interval\n",
                 0.15},
             Row{"formula = 'always[-3 s, 3 s](x > 0)'", " --intervals 0",
                 "no result for 15 % of the range\n", 0.15},
             Row{"formula = 'always[-3 s, 0](y > 0)'", "",
                 "fails at 40 s\nno result for 8 % of the range: from 0 s to 3 s\n", 0.075},
             Row{"formula = 'always[0, 1 ms](x > 0)'", "",
                 "no result for less than 1 % of the range: from 39.999 s to 40 s\n", 0.000025},
             Row{"formula = 'EpsilonShift[-1](x > 0)'", "",
                 "no result for less than 1 % of the range: at 40 s\n", 0},
             Row{"formula = 'always[-39999 ms, 0](x > 0)'", "",
                 "no result for more than 99 % of the range: from 0 s to 39.999 s\n", 0.999975},
             Row{"formula = 'x > 0'\nfrom = 40\nto = 1000000", "",
                 "no result for more than 99 % of the range: from 40 s to 1000000 s\n", 1},
             Row{"formula = 'x > 0'\nto = 80", "",
                 "no result for 50 % of the range: from 40 s to 80 s\n", 0.5},
             Row{"formula = 'x > 0'\nfrom = 60\nto = 80", "",
                 "nothing is known in the range from 60 s to 80 s: its signals are known from 0 s "
                 "to 40 s\n",
                 1},
             Row{"formula = 'x > 0'\nfrom = 60", "",
                 "nothing is known in the range from 60 s on: its signals are known from 0 s to 40 "
                 "s\n",
                 1},
             Row{"formula = 'x > 0'\nto = -1", "",
                 "nothing is known in the range up to -1 s: its signals are known from 0 s to 40 "
                 "s\n",
                 1},
             Row{"formula = 'always[0, 30 s](x > 0)'\nfrom = 20\nto = 30", "",
                 "nothing is known in the range from 20 s to 30 s: its signals have holes there, "
                 "or "
                 "its formula looks beyond what is known of them\n",
                 1},
             Row{"formula = 'x > 0'\nfrom = 60\nto = 60", "",
                 "nothing is known in the range from 60 s to 60 s: its signals are known from 0 s "
                 "to 40 s\n",
                 1},
             Row{"formula = 'x > 0'", "", "", 0},
         }) {
        write("h.toml", "[[assessment]]\nname = 'n'\n" + std::string(row.assessment) + "\n");
        const std::string table = assess("run h.toml h.csv" + std::string(row.options)).out;
        EXPECT_EQ(notesIn(table), row.notes) << row.assessment << row.options;
        const auto share = outcome("run h.toml h.csv")["no_result_share"].get<double>();
        EXPECT_DOUBLE_EQ(share, row.share) << row.assessment;
    }
}

TEST_F(Assess, JsonGivesErrorsAsFields) {
    write("e.toml",
          "assessment = [{ name = \"e\", formula = \"abs(sped) > 3\" },\n"
          "              { name = \"u\", formula = \"slope(speed) > 3\" }]\n");
    write("e.csv", "time,speed\n0,1\n1,2\n");
    write("bad.csv", "time,speed\n0,1\n1,2,3\n");
    const auto recordings = report("run e.toml e.csv bad.csv")["recordings"];
    EXPECT_TRUE(matches(recordings, R"json([
        {"problem": null, "assessments": [
            {"problem": {"message": "unknown signal 'sped'", "file": "e.toml", "line": 1,
                         "column": 44, "excerpt": "abs(sped) > 3",
                         "advice": "did you mean 'speed'?"},
             "error": "e.toml:1:44: unknown signal 'sped'\n    abs(sped) > 3\n        ^^^^\n  did you mean 'speed'?"},
            {"problem": {"line": 2, "excerpt": "slope(speed) > 3"}}]},
        {"problem": {"file": "bad.csv", "line": 3, "column": null}}])json"));
    EXPECT_EQ(recordings[0]["assessments"][0]["problem"].size(), 6);
}

class StrictAssess : public ProgramTest {
protected:
    StrictAssess() {
        write("s.csv", "time,x\n0,1\n10,1\n");
        write("s.toml", R"toml(
assessment = [
    { name = "holds", formula = "x > 0" },
    { name = "ends", formula = "always[0, 2 s](x > 0)" },
    { name = "instant", formula = "EpsilonShift[-1](x > 0)" },
    { name = "after", formula = "x > 0", from = 20, to = 21 },
    { name = "fails", formula = "eventually[0, 2 s](x < 0)" },
    { name = "wrong", formula = "y > 0" },
]
)toml");
    }
};

TEST_F(StrictAssess, OnlyWhatHoldsThroughoutHasPassed) {
    struct Row {
        const char* name;
        int exitCode;
        int strictExitCode;
    };
    for (const Row& row : {Row{"holds", 0, 0}, Row{"ends", 0, 1}, Row{"instant", 0, 1},
                           Row{"after", 0, 1}, Row{"fails", 1, 1}, Row{"wrong", 3, 3}}) {
        const std::string arguments = std::string("run s.toml s.csv --only ") + row.name;
        EXPECT_EQ(assess(arguments).exitCode, row.exitCode) << row.name;
        EXPECT_EQ(assess(arguments + " --strict").exitCode, row.strictExitCode) << row.name;
    }
    EXPECT_EQ(assess("run s.toml s.csv --strict").exitCode, 3);
}

TEST_F(StrictAssess, EveryReportMarksWhatIsOpen) {
    const std::string table = assess("run s.toml s.csv --strict").out;
    EXPECT_TRUE(has(table, "  PASS (open)  ends "));
    EXPECT_TRUE(has(table, "  PASS (open)  instant "));
    EXPECT_TRUE(has(table, "  PASS         holds "));
    EXPECT_TRUE(has(table, "  FAIL         fails "));
    EXPECT_TRUE(has(table, "\n1 passed, 1 failed, 2 open, 1 without result, 1 could not"));

    EXPECT_TRUE(matches(report("run s.toml s.csv --strict"), R"({
        "strict": true, "summary": {"open": 2, "passed": 1}, "recordings": [{"assessments": [
            {"name": "holds", "passed_strictly": true}, {"passed_strictly": false},
            {"passed_strictly": false}, {"passed_strictly": false}, {"passed_strictly": false},
            {"passed_strictly": false}]}]})"));

    pugi::xml_document document;
    const std::string junit = assess("run s.toml s.csv --strict -f junit").out;
    ASSERT_TRUE(document.load_string(junit.c_str()));
    const auto suite = document.child("testsuites").child("testsuite");
    EXPECT_TRUE(has(junit, R"("s.csv" tests="6" failures="4" errors="1" skipped="0">)"));
    const auto message = [&](const char* name) -> std::string {
        const auto failure = suite.find_child_by_attribute("name", name).child("failure");
        return failure.attribute("message").as_string();
    };
    EXPECT_EQ(message("holds"), "");
    EXPECT_EQ(message("ends"), "no result from 8 s to 10 s, and --strict is on");
    EXPECT_EQ(message("after"),
              "no result, and --strict is on: nothing is known in the range from 20 s to 21 s: its "
              "signals are known from 0 s to 10 s");
}

TEST_F(StrictAssess, WithoutItNothingIsMarked) {
    const std::string table = assess("run s.toml s.csv").out;
    EXPECT_FALSE(has(table, "open"));
    EXPECT_TRUE(has(table, "\n3 passed, 1 failed, 1 without result, 1 could not"));
    EXPECT_TRUE(matches(report("run s.toml s.csv"),
                        R"({"strict": false, "summary": {"open": 0, "passed": 3}})"));
    const std::string junit = assess("run s.toml s.csv -f junit").out;
    EXPECT_TRUE(has(junit, ">no result for 20 % of the range: from 8 s to 10 s\n</system-out>"));
    EXPECT_TRUE(has(junit, "tests=\"6\" failures=\"1\" errors=\"1\" skipped=\"1\""));
}

TEST_F(Assess, ExitCodesTellTheOutcome) {
    EXPECT_EQ(assess("run a.toml ok.csv").exitCode, 0);
    EXPECT_EQ(assess("run a.toml ok.csv d.csv").exitCode, 1);
    EXPECT_EQ(assess("run a.toml d.csv none.csv").exitCode, 3);
    EXPECT_EQ(assess("check a.toml").exitCode, 0);
    EXPECT_EQ(assess("").exitCode, 2);
}

TEST_F(Assess, OutputDoesNotDependOnTheNumberOfJobs) {
    for (const std::string format : {"table", "json", "junit"}) {
        const std::string arguments =
            "run a.toml d.csv ok.csv none.csv d.csv --robustness --format " + format;
        const ProgramResult one = assess(arguments + " --jobs 1");
        const ProgramResult four = assess(arguments + " --jobs 4");
        EXPECT_EQ(one.out, four.out);
        EXPECT_EQ(one.err, four.err);
    }
}

TEST_F(Assess, JsonHoldsEveryNumberExactly) {
    write("third.csv", "time,speed,brake\n0,0,0\n3,70,0\n4,70,1\n");
    const auto json = report("run a.toml third.csv --robustness");
    EXPECT_TRUE(matches(json, R"({"summary": {"failed": 2}, "recordings": [{"assessments": [
        {"verdict": "FAIL", "failures": [{"end": 4}], "robustness": -50}, {},
        {"robustness": null}]}]})"));
    // The speed passes 20 at 60/70 s, and the first time after that fails.
    const auto& slow = json["recordings"][0]["assessments"][0];
    EXPECT_NEAR(slow["first_failure"].get<double>(), 60.0 / 70, 2e-14);
}

TEST_F(Assess, RobustnessLiesBetweenWhatTheOpenAllows) {
    // x is known throughout, y is not between 2 and 6, n is NaN from 8 on.
    write(
        "r.csv",
        "time,x,y,n,line\n0,1,3,1,1\n2,1,3,1,1\n4,1,,1,1\n6,1,3,1,1\n8,1,3,nan,1\n10,1,3,nan,1\n");
    struct Row {
        const char* formula;
        const char* range;
        const char* bounds;
    };
    for (const Row& row : {
             Row{"x > 0", "", "1.0 to 1.0"},
             Row{"x > 0 | y > 0", "", "1.0 to 3.0"},
             Row{"x > 0 | y > 0", "from = 6", "3.0 to 3.0"},
             Row{"x > 0 | y > 0", "to = 3", "1.0 to 3.0"},
             Row{"x > 0 | eventually[0, 1 s](y > 0)", "to = 1", "3.0 to 3.0"},
             Row{"x > 0 | always[0, 2 s](y > 0)", "to = 1", "1.0 to 3.0"},
             Row{"x > 0 | Shift[-1 s](y > 0)", "from = 6", "1.0 to 3.0"},
             Row{"always[0, 2 s](x > 0)", "", "null to 1.0"},
             Row{"always[0, 2 s](x > 0)", "to = 7", "1.0 to 1.0"},
             Row{"x > 0 until[0, 2 s] y > 0", "from = 7\nto = 7", "1.0 to 1.0"},
             Row{"n + line > 0", "to = 7", "2.0 to 2.0"},
             Row{"n + line > 0", "", "null to null"},
         }) {
        write("r.toml",
              "[signals]\ny = { max_gap = '3 s' }\nline = { interpolation = 'linear' }\n"
              "[[assessment]]\nname = 'r'\nformula = '" +
                  std::string(row.formula) + "'\n" + row.range + "\n");
        const auto json = outcome("run r.toml r.csv --robustness");
        EXPECT_EQ(json["robustness_least"].dump() + " to " + json["robustness_greatest"].dump(),
                  row.bounds)
            << row.formula << ' ' << row.range << json["error"];
    }
}

TEST_F(Assess, JunitTellsFailuresErrorsAndSkips) {
    const std::string junit = assess("run a.toml d.csv none.csv --format junit").out;
    EXPECT_TRUE(has(junit, R"(
<testsuites name="A drive" tests="4" failures="1" errors="1" skipped="1">
  <testsuite name="d.csv" tests="3" failures="1" errors="0" skipped="1">
    <testcase classname="a.toml" name="slow">
      <failure message="fails from 0.5 s to 2.5 s">)"));
}

TEST_F(Assess, ParametersAreSetForTheRunAndEveryReportTellsThem) {
    write("p.toml", R"toml(parameters = { limit = 30, delay = "500 ms" }
definitions = { fast = "speed > $limit" }
[[assessment]]
name = "slow"
formula = "~fast & always[0, $delay](true)"
)toml");
    EXPECT_EQ(assess("run p.toml d.csv").out.rfind("d.csv, from", 0), 0U) << "nothing was set";
    const ProgramResult table = assess("run p.toml d.csv --set limit=20 --set 'delay=1 s'");
    EXPECT_EQ(table.exitCode, 1);
    EXPECT_EQ(table.out.substr(0, table.out.find("d.csv")),
              "with limit = 20 (30), delay = \"1 s\" (\"500 ms\")\n\n");
    for (const char* command : {"run p.toml d.csv", "show p.toml slow d.csv"}) {
        const nlohmann::json json = report(std::string(command) + " --set limit=20");
        EXPECT_EQ(json.at("parameters").dump(), R"({"delay":"500 ms","limit":20})");
    }
    EXPECT_TRUE(has(assess("show p.toml slow d.csv --set limit=20").out, "with limit = 20 (30)\n"));
    EXPECT_TRUE(has(assess("run p.toml d.csv --set limit=20 -f junit").out, R"(
    <properties>
      <property name="limit" value="20" />
      <property name="delay" value="500 ms" />
    </properties>
    <testcase )"));
    EXPECT_TRUE(has(assess("run p.toml d.csv --set limit=20 -f html").out,
                    "parameters: limit = 20 (30), delay = &quot;500 ms&quot;</p>"));
    EXPECT_EQ(assess("check p.toml --set limit=inf").exitCode, 0);
    EXPECT_TRUE(has(assess("check p.toml --set delay=abc").err, "p.toml:5:30: \"abc\" is no time"));
}

TEST_F(Assess, StandardInputIsARecordingOrAnAssessmentFile) {
    EXPECT_EQ(assess("run a.toml - <d.csv").exitCode, 1);
    EXPECT_EQ(assess("run - d.csv <a.toml").exitCode, 1);
}

TEST_F(Assess, OutputIsWrittenWholeOrNotAtAll) {
    EXPECT_EQ(assess("run a.toml ok.csv --output out.txt").exitCode, 0);
    EXPECT_TRUE(has(contentOf(folder() / "out.txt"), "0 failed"));
    write("kept.txt", "old");
    EXPECT_EQ(assess("run none.toml ok.csv --output kept.txt").exitCode, 3);
    EXPECT_EQ(contentOf(folder() / "kept.txt"), "old");
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        EXPECT_NE(entry.path().extension(), ".part");
    }
}

TEST_F(Assess, ReportsGoToTheirFilesBesidesTheTable) {
    const std::string table = assess("run a.toml d.csv --explain").out;
    const std::string page = "SOURCE_DATE_EPOCH=86400 " VORM_ASSESS " run a.toml d.csv -f html";
    const ProgramResult result = shell(page + "=p.html -f json=r.json");
    EXPECT_EQ(result.out, table);
    EXPECT_TRUE(has(contentOf(folder() / "p.html"), ", 1970-01-02</p>"));
    EXPECT_EQ(shell(page).out, contentOf(folder() / "p.html"));
    EXPECT_EQ(contentOf(folder() / "r.json"), assess("run a.toml d.csv --explain -f json").out);
    EXPECT_EQ(assess("show a.toml slow d.csv -f svg").exitCode, 1);
    EXPECT_EQ(assess("show a.toml slow none.csv -f svg").exitCode, 3);
    for (const char* wrong :
         {"run a.toml d.csv -f html -f json",
          "run a.toml d.csv -f html=", "run a.toml d.csv -f pdf", "run a.toml d.csv -f html=d.csv",
          "run a.toml d.csv -f html=x -f json=x", "run a.toml d.csv -f html=x -o x",
          "show a.toml slow d.csv ok.csv -f svg"}) {
        const ProgramResult refused = assess(wrong);
        EXPECT_EQ(refused.exitCode, 2) << wrong << refused.out << refused.err;
    }
    EXPECT_FALSE(std::filesystem::exists(folder() / "x"));
    for (const char* date : {"abc", "99999999999999999999", "9223372036854775807"}) {
        EXPECT_EQ(shell("SOURCE_DATE_EPOCH=" + (date + (" " + std::string(VORM_ASSESS))) +
                        " run a.toml d.csv -f html")
                      .exitCode,
                  2)
            << date;
    }
}

TEST_F(Assess, OnlyAndTogetherSelect) {
    const ProgramResult one = assess("run a.toml d.csv --only brakes");
    EXPECT_EQ(one.exitCode, 0);
    EXPECT_FALSE(has(one.out, "slow"));
    write("speed.csv", "time,speed\n0,10\n4,10\n");
    write("brake.csv", "time,brake\n0,0\n4,1\n");
    EXPECT_EQ(assess("run a.toml speed.csv brake.csv").exitCode, 3);
    EXPECT_EQ(assess("run a.toml speed.csv brake.csv --together").exitCode, 0);
}

TEST_F(Assess, FoldersWithoutATableDoNotKeepOthersFromBeingAssessed) {
    EXPECT_EQ(shell("mkdir empty && : > empty/a.csv && : > empty/b.csv").exitCode, 0);
    const auto recordings = report("run a.toml d.csv empty")["recordings"];
    ASSERT_EQ(recordings.size(), 2U);
    EXPECT_TRUE(recordings[0]["error"].is_null());
    EXPECT_TRUE(has(recordings[1].dump(), "is empty")) << recordings[1];
}

TEST_F(Assess, ListsNameRecordings) {
    EXPECT_EQ(shell("cp d.csv run10.csv && cp d.csv run2.csv && cp d.csv 'a\nb c.csv'").exitCode,
              0);
    const auto recordings = [&](const std::string& arguments) {
        std::string names;
        const auto all = report("run a.toml " + arguments)["recordings"];
        for (const auto& recording : all) {
            names += recording["recording"].get<std::string>() + ";";
        }
        return names;
    };
    EXPECT_EQ(recordings("run10.csv run2.csv"), "run2.csv;run10.csv;");
    write("list.txt", "\xEF\xBB\xBFrun10.csv\r\nrun2.csv");
    EXPECT_EQ(recordings("--recordings list.txt"), "run10.csv;run2.csv;") << "as they are listed";
    EXPECT_EQ(recordings("d.csv --recordings list.txt"), "d.csv;run10.csv;run2.csv;");
    EXPECT_EQ(recordings("--recordings - < list.txt"), "run10.csv;run2.csv;");
    EXPECT_EQ(shell("printf 'a\nb c.csv\\0d.csv\\0' > zeros").exitCode, 0);
    EXPECT_EQ(recordings("--recordings zeros"), "a\nb c.csv;d.csv;");
}

TEST_F(Assess, WritesALineForEachRecording) {
    write("bad.csv", "time,speed\n0,x\n");
    const std::string run = "run a.toml d.csv bad.csv ok.csv --explain --strict";
    const auto whole = report(run);
    const auto linesOf = [](const std::string& text) {
        std::istringstream in(text);
        std::vector<nlohmann::json> lines;
        for (std::string line; std::getline(in, line);) {
            lines.push_back(nlohmann::json::parse(line));
        }
        return lines;
    };
    for (const char* const form : {"-f jsonl", "-f jsonl -o lines", "-f jsonl=lines"}) {
        write("lines", "old");
        const ProgramResult result = assess(run + " " + form);
        EXPECT_EQ(result.exitCode, 3) << "one recording is bad";
        const bool isShown = std::string(form) == "-f jsonl";
        const auto lines = linesOf(isShown ? result.out : contentOf(folder() / "lines"));
        ASSERT_EQ(lines.size(), 3U) << form;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            EXPECT_TRUE(matches(lines[i], whole["recordings"][i].dump()));
            EXPECT_TRUE(matches(lines[i], R"({"file": "a.toml", "strict": true})"));
        }
    }
    EXPECT_EQ(assess("run a.toml d.csv -f jsonl -o -").out,
              assess("run a.toml d.csv -f jsonl").out);
    EXPECT_EQ(shell("mkdir drive && cp d.csv drive").exitCode, 0);
    EXPECT_EQ(assess("run a.toml drive -f jsonl=drive/lines.jsonl").exitCode, 2)
        << "it would be a file of the recording";
    EXPECT_EQ(assess("run a.toml d.csv -f json -o new -f jsonl=./new").exitCode, 2)
        << "they are one file";
    write("lines", "old");
    EXPECT_EQ(assess("run a.toml d.csv --only nothing -f jsonl=lines").exitCode, 3);
    EXPECT_EQ(contentOf(folder() / "lines"), "old") << "nothing has taken its place";
    EXPECT_TRUE(has(assess("run a.toml d.csv -f jsonl=/dev/full").err, "cannot write '/dev/full'"));
}

TEST_F(Assess, RefusesListsThatNameNoRecording) {
    const auto refusal = [&](const std::string& list) {
        write("list.txt", list);
        const ProgramResult refused = assess("run a.toml --recordings list.txt");
        EXPECT_EQ(refused.exitCode, 3) << list;
        return refused.err;
    };
    EXPECT_TRUE(has(refusal("d.csv\n\nd.csv\n"), "list.txt:2: names no recording"));
    EXPECT_TRUE(has(refusal(""), "list.txt: names no recording"));
    EXPECT_TRUE(has(refusal("d.csv\n-\n"), "list.txt:2: names standard input"));
    EXPECT_TRUE(has(refusal(std::string("d.csv\0\0", 7)), "list.txt: path 2 names no recording"));
    EXPECT_TRUE(has(refusal(std::string("\xFF\xFE"
                                        "d\0",
                                        4)),
                    "is in UTF-16"));
    EXPECT_TRUE(has(assess("run a.toml --recordings nowhere").err, "cannot read 'nowhere'"));
    EXPECT_EQ(assess("run a.toml").exitCode, 2);
    EXPECT_EQ(assess("run - --recordings - < a.toml").exitCode, 2);
    EXPECT_EQ(assess("run a.toml --recordings list.txt -o list.txt").exitCode, 3);
    write("list.txt", "d.csv\n");
    EXPECT_EQ(assess("run a.toml --recordings list.txt -o list.txt").exitCode, 2);
    EXPECT_EQ(assess("run a.toml --recordings list.txt -f json=d.csv").exitCode, 2);
    EXPECT_EQ(contentOf(folder() / "list.txt"), "d.csv\n");
}

TEST_F(Assess, OutputReplacesWhatALinkPointsAtAndKeepsItsRights) {
    EXPECT_EQ(shell("touch real.txt && chmod 600 real.txt && ln -s real.txt link.txt").exitCode, 0);
    EXPECT_EQ(assess("run a.toml ok.csv -o link.txt").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder() / "link.txt"));
    EXPECT_NE(contentOf(folder() / "real.txt"), "");
    EXPECT_EQ(std::filesystem::status(folder() / "real.txt").permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(Assess, ReportsAreWellFormedWhateverNamesAre) {
    const std::string odd = "$(printf 'n\\351\\001.csv')";
    EXPECT_EQ(shell("cp d.csv " + odd).exitCode, 0);
    pugi::xml_document document;
    const std::string junit = assess("run a.toml " + odd + " -f junit").out;
    EXPECT_TRUE(document.load_string(junit.c_str()));
    EXPECT_FALSE(has(junit, "\351")) << "UTF-8 has no such byte alone";
    EXPECT_FALSE(has(junit, "\001"));
    EXPECT_TRUE(nlohmann::json::accept(assess("run a.toml " + odd + " -f json").out));
}

TEST_F(Assess, FilesOfAFolderThatAreLeftOutAreNamedWhereASignalIsMissing) {
    write("folder/speed.csv", "time,speed\n0,1\n4,2\n");
    write("folder/brake.csv", "");
    const ProgramResult result = assess("run a.toml folder");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(has(result.out, "unknown signal 'brake'"));
    EXPECT_TRUE(has(result.out, "not read: folder/brake.csv"));
}

TEST_F(Assess, ShowSaysWhatItCanOfTheOtherRecordings) {
    const ProgramResult result = assess("show a.toml slow none.csv d.csv");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(has(result.err, "none.csv"));
    EXPECT_TRUE(has(result.out, "because speed <= 20 is false"));
}

TEST_F(Assess, ShowNamesThePartThatFails) {
    write("late.csv", "time,speed,brake\n0,10,0\n1,30,0\n2,30,0\n3,30,0\n3.5,30,1\n6,10,0\n");
    const ProgramResult result = assess("show a.toml brakes late.csv");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(has(result.out, "because brake == 1 is false from 0.5 s to 3.5 s"));
    EXPECT_TRUE(has(result.out, "(1 other set of conditions accounts for it as well)"));
}

TEST_F(Assess, SignalsTellsWhatARecordingHolds) {
    write("ugly.csv",
          "time,x,text,id\n0,1,a,9007199254740993\n1,nan,b,3\n1,2,,4\n0.5,3.5,a,5\n"
          "60,inf,b,6\n61,5,a,7\n");
    const auto signals = report("signals ugly.csv")["recordings"][0]["signals"];
    EXPECT_TRUE(matches(signals, R"([
        {"samples": 6, "nans": 1, "infinities": 1, "least": 1, "mean": 2.875, "greatest": 5,
         "equal_times": 1, "times_back": 1, "longest_distance": 59.5},
        {"empty": 1, "least": null, "members": ["a", "b"]}, {"greatest": 9007199254740993}])"));
    const ProgramResult table = assess("signals ugly.csv");
    EXPECT_EQ(table.exitCode, 0) << table.err;
    EXPECT_EQ(table.out, R"(ugly.csv
  signal  type              least            mean          greatest  samples  first [s]  last [s]  median step [s]  longest step [s]  holes  empty  NaN  infinite  equal times  times back
  x       double                1           2.875                 5        6          0        61                1       59.5 at 0.5      1      -    1         1            1           1
  text    enumeration text      -               -                 -        5          0        61                1       59.5 at 0.5      1      1    -         -            -           1
          members: 'a' and 'b'
  id      int64                 3  1.50119988e+15  9007199254740993        6          0        61                1       59.5 at 0.5      1      -    -         -            1           1
)");
}

TEST_F(Assess, OptionsTellSignalsHowToReadAndGoBeforeTheFile) {
    write("l.toml",
          "[recording]\nunit = 'min'\ntime = 'other'\n"
          "[[assessment]]\nname = 'a'\nformula = 'x > 0'\n");
    write("l.csv", "Day|Clock|x\n06/30/2021|09:39:19|1\n06/30/2021|09:40:19|2\n");
    write("n.csv", "T,name,v\n0,x,1\n2,x,3\n");
    struct Row {
        const char* arguments;
        double last;
    };
    for (const Row& row : {
             Row{"l.csv --time Day --time Clock --time-format '%m/%d/%Y %H:%M:%S' --origin first "
                 "--delimiter '|'",
                 60},
             Row{"n.csv --time T --form long --value-column v", 2},
             Row{"n.csv --layout l.toml --time T", 120},
             Row{"n.csv --layout l.toml --time T --unit ms", 0.002},
         }) {
        EXPECT_EQ(assess(std::string("signals ") + row.arguments).exitCode, 0) << row.arguments;
        const auto read = report(std::string("signals ") + row.arguments)["recordings"][0];
        EXPECT_EQ(read["signals"][0]["last"], row.last) << row.arguments;
    }
}

// A column of the table is there where it tells of some signal.
TEST_F(Assess, SignalsLeavesOutWhatTellsNothing) {
    write("one.csv", "time,p\n0,true\n1,false\n");
    write("two/a.csv", "time,n\n0,1.5\n1,x?\n");
    EXPECT_EQ(assess("signals one.csv").out, R"(one.csv
  signal  type  samples  first [s]  last [s]  median step [s]  longest step [s]
  p       bool        2          0         1                1            1 at 0
)");
    EXPECT_EQ(assess("signals two").out, R"(two
  file       signal  type   least  mean  greatest  samples  first [s]  last [s]  median step [s]  longest step [s]
  two/a.csv  n       mixed    1.5   1.5       1.5        2          0         1                1            1 at 0
             texts: 'x?'
)");
}

TEST_F(Assess, CheckAcceptsOpenNamesAndTestsThemAgainstARecording) {
    EXPECT_EQ(assess("check a.toml").out, "a.toml: 3 assessments fit\n");
    EXPECT_EQ(assess("check a.toml --against d.csv").out, "a.toml: 3 assessments fit d.csv\n");
    write("other.csv", "time,sped\n0,1\n");
    EXPECT_EQ(assess("check a.toml --against other.csv").exitCode, 3);
}

TEST_F(Assess, CheckTellsAllErrorsOnceInTheOrderOfTheFile) {
    write("wrong.toml",
          "[[assessment]]\nname = \"a\"\nformula = \"speed & 5\"\n"
          "[[assessment]]\nname = \"b\"\nformula = \"speed >\"\n"
          "[[assessment]]\nname = \"c\"\nformula = \"slope(speed) > 5\"\n");
    const auto placesOf = [](const std::string& messages) {
        std::string places;
        std::istringstream lines(messages);
        for (std::string line; std::getline(lines, line);) {
            places += line.starts_with(' ') ? "" : line.substr(0, line.find(": ")) + " ";
        }
        return places;
    };
    const ProgramResult alone = assess("check wrong.toml");
    EXPECT_EQ(alone.exitCode, 3);
    EXPECT_EQ(placesOf(alone.err), "wrong.toml:3:20 wrong.toml:6:19 wrong.toml ");
    EXPECT_TRUE(has(alone.err, "\nwrong.toml: 2 errors\n"));
    const ProgramResult against = assess("check wrong.toml --against d.csv d.csv missing.csv");
    EXPECT_EQ(placesOf(against.err),
              "wrong.toml:3:12 wrong.toml:6:19 wrong.toml:9:18 assess wrong.toml ");
    EXPECT_TRUE(has(against.err, "\nwrong.toml: 4 errors\n"));
    EXPECT_EQ(placesOf(assess("check wrong.toml --quiet").err), "wrong.toml:3:20 wrong.toml:6:19 ");
}

TEST_F(Assess, QuietLeavesOutNotes) {
    EXPECT_TRUE(has(assess("check a.toml").err, "note:"));
    EXPECT_EQ(assess("check a.toml --quiet").err, "");
    EXPECT_EQ(assess("check a.toml --quiet").out, "a.toml: 3 assessments fit\n");
}

TEST_F(Assess, ColoursAreOnRequestAndHeedNoColor) {
    EXPECT_TRUE(has(assess("run a.toml d.csv --color always").out, "\033["));
    EXPECT_FALSE(has(assess("run a.toml d.csv --color never").out, "\033["));
    // `script` gives the program a terminal.
    const std::string onTerminal = "script -qec '" VORM_ASSESS " run a.toml d.csv' /dev/null";
    if (shell("command -v script").exitCode == 0) {
        EXPECT_TRUE(has(shell(onTerminal).out, "\033[1;31m"));
        EXPECT_FALSE(has(shell("NO_COLOR=1 " + onTerminal).out, "\033[1;31m"));
    }
}

}  // namespace
}  // namespace assess_tests
