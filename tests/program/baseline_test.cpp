#include "program/program_runner.hpp"

#include <nlohmann/json.hpp>

namespace assess_tests {
namespace {

// Yesterday's report against today's recordings.
class BaselineOfRuns : public ProgramTest {
protected:
    BaselineOfRuns() {
        // Each assessment looks at a stretch of its own, so that a value decides one of them.
        write("b.toml", R"toml(
assessment = [
    { name = "p", formula = "x < 5", from = 0, to = 1 },
    { name = "q", formula = "x < 5", from = 2, to = 3, severity = "warning" },
    { name = "r", formula = "x < 5", from = 4, to = 5 },
]
)toml");
        write("one.csv", "time,x\n0,1\n2,9\n4,1\n6,1\n");
        write("two.csv", "time,x\n0,9\n2,1\n4,1\n6,1\n");
        write("gone.csv", "time,x\n0,1\n2,1\n4,1\n6,1\n");
        EXPECT_EQ(assess("run b.toml one.csv two.csv gone.csv -f json -o old.json").exitCode, 1);
    }

    std::string changes(const std::string& arguments) const {
        std::string text;
        const nlohmann::json run = report("run " + arguments + " --baseline old.json");
        for (const auto& change : run["baseline"]["changes"]) {
            for (const char* key : {"kind", "recording", "assessment", "what"}) {
                text += (change[key].is_null() ? "" : change[key].get<std::string>()) + "|";
            }
            text += "\n";
        }
        return text;
    }
};

TEST_F(BaselineOfRuns, TheSameIsNoChange) {
    EXPECT_EQ(changes("b.toml one.csv two.csv gone.csv"), "");
    EXPECT_TRUE(has(assess("run b.toml one.csv two.csv gone.csv --baseline old.json").out,
                    "compared with old.json: nothing is otherwise\n"));
}

// What was open, or only a warning, or did not fail a run that was not strict, was not as bad.
TEST_F(BaselineOfRuns, WhatHasBecomeWorseIsNew) {
    const auto written = [this](const std::string& severity) {
        write("s.toml",
              "[[assessment]]\nname = \"p\"\nformula = \"eventually[0, 2](x < 5)\"\n"
              "severity = \"" +
                  severity + "\"\n");
    };
    const std::string today = "run s.toml r.csv --baseline s.json --fail-on new";
    write("r.csv", "time,x\n0,9\n2,9\n4,9\n");
    written("warning");
    EXPECT_EQ(assess("run s.toml r.csv -f json -o s.json").exitCode, 0);
    EXPECT_EQ(assess(today).exitCode, 0);
    written("error");
    EXPECT_EQ(assess(today).exitCode, 1);
    EXPECT_TRUE(has(assess(today).out, "new failure  r.csv  p  FAIL, was of the severity warning"));
    write("r.csv", "time,x\n0,9\n1,9\n");
    EXPECT_EQ(assess("run s.toml r.csv -f json -o s.json").exitCode, 0);
    EXPECT_EQ(assess(today).exitCode, 0);
    EXPECT_EQ(assess(today + " --strict").exitCode, 1) << "did not fail then";
    EXPECT_EQ(assess("run s.toml r.csv --strict -f json -o s.json").exitCode, 1);
    EXPECT_EQ(assess(today + " --strict").exitCode, 0);
    write("r.csv", "time,x\n0,9\n2,9\n4,9\n");
    EXPECT_EQ(assess(today + " --strict").exitCode, 1) << "was only open";
    EXPECT_EQ(assess(today).exitCode, 1);
}

TEST_F(BaselineOfRuns, TellsWhatIsNewFixedChangedAndGone) {
    write("one.csv", "time,x\n0,9\n2,1\n4,1\n6,1\n");
    write("two.csv", "time,x\n0,1\n0.5,9\n2,9\n3,9\n");
    write("new.csv", "time,x\n0,1\n2,1\n4,9\n6,1\n");
    EXPECT_EQ(changes("b.toml one.csv two.csv new.csv"),
              "new failure|one.csv|p|FAIL, was PASS|\n"
              "new failure|two.csv|q|FAIL, was PASS|\n"
              "new failure|new.csv|r|FAIL, was not there|\n"
              "fixed|one.csv|q|PASS, was FAIL|\n"
              "changed|two.csv|p|first fails at 0.5 s, was at 0 s|\n"
              "changed|two.csv|r|NO_RESULT, was PASS|\n"
              "new|new.csv||was not there|\n"
              "gone|gone.csv||is not there any more|\n");
    EXPECT_EQ(changes("b.toml one.csv gone.csv two.csv --only q"),
              "new failure|two.csv|q|FAIL, was PASS|\n"
              "fixed|one.csv|q|PASS, was FAIL|\n")
        << "what was not chosen is not gone";
    const std::string junit = assess("run b.toml one.csv --baseline old.json --format junit").out;
    EXPECT_TRUE(has(junit, "new failure compared with old.json: FAIL, was PASS"));
}

TEST_F(BaselineOfRuns, TellsOfAssessmentsAndRecordingsThatCannotBeUsed) {
    write("one.csv", "time,y\n0,1\n6,1\n");
    write("two.csv", "time,x\n0,1,1\n");
    write("c.toml",
          "[[assessment]]\nname = 'p'\nformula = 'x < 5'\n"
          "[[assessment]]\nname = 's'\nformula = 'x < 50'\n");
    EXPECT_EQ(changes("c.toml one.csv two.csv gone.csv"),
              "changed|one.csv|p|ERROR, was PASS|\n"
              "changed|two.csv||cannot be used any more|\n"
              "new|one.csv|s|ERROR|\n"
              "new|gone.csv|s|PASS|\n"
              "gone|gone.csv|q|was PASS|\n"
              "gone|gone.csv|r|was PASS|\n"
              "gone|one.csv|q|was FAIL|\n"
              "gone|one.csv|r|was PASS|\n"
              "gone|two.csv|q|was PASS|\n"
              "gone|two.csv|r|was PASS|\n");
}

TEST_F(BaselineOfRuns, OnlyNewErrorsCanFailARun) {
    const auto codeOf = [this](const std::string& arguments) {
        return assess("run b.toml " + arguments + " --baseline old.json --fail-on new").exitCode;
    };
    EXPECT_EQ(codeOf("one.csv two.csv"), 0) << "what failed before is nothing new";
    EXPECT_EQ(assess("run b.toml one.csv two.csv --baseline old.json").exitCode, 1);
    write("gone.csv", "time,x\n0,1\n2,9\n4,1\n6,1\n");
    EXPECT_EQ(codeOf("gone.csv"), 0) << "a warning";
    write("gone.csv", "time,x\n0,9\n2,1\n4,1\n6,1\n");
    EXPECT_EQ(codeOf("gone.csv"), 1);
    write("other.csv", "time,x\n0,9\n6,1\n");
    EXPECT_EQ(codeOf("other.csv"), 1);
    EXPECT_TRUE(has(assess("run b.toml other.csv --baseline old.json").err,
                    "warning: no recording of the run is in old.json"));
    EXPECT_EQ(assess("run b.toml one.csv --fail-on new").exitCode, 2);
}

TEST_F(BaselineOfRuns, AnotherFileIsRefused) {
    const auto errorOf = [this](const std::string& content) {
        write("bad.json", content);
        const ProgramResult result = assess("run b.toml one.csv --baseline bad.json");
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "");
        return result.err;
    };
    EXPECT_TRUE(has(errorOf("{\n\"recordings\": ]"), "bad.json:2: is no JSON"));
    EXPECT_TRUE(
        has(errorOf("{\"recordings\": 4e4443}"), "bad.json: has a number beyond the range"));
    EXPECT_TRUE(has(errorOf("[]"), "bad.json: is no report of a run"));
    EXPECT_TRUE(has(errorOf(R"({"recordings": [{"recording": "one.csv", "error": null,
        "assessments": [{"name": "p", "verdict": 3, "failures": []}]}]})"),
                    "bad.json: is no report of a run"));
    EXPECT_EQ(assess("run b.toml one.csv --baseline none.json").exitCode, 3);
    EXPECT_EQ(assess("run b.toml one.csv --baseline old.json -f json=old.json").exitCode, 2);
    // Of an earlier version, which told less.
    write("bad.json", R"({"recordings": [{"recording": "one.csv", "error": null, "assessments":
        [{"name": "p", "verdict": "PASS", "failures": []}]}]})");
    EXPECT_EQ(assess("run b.toml one.csv --only p --baseline bad.json --strict").exitCode, 0);
}

}  // namespace
}  // namespace assess_tests
