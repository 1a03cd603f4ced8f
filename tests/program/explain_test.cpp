// Why assessments fail or have no result, in every report.

#include "program_runner.hpp"

#include <nlohmann/json.hpp>

namespace assess_tests {
namespace {

class Explain : public ProgramTest {
protected:
    Explain() {
        write("e.toml", R"toml([signals]
late = { type = "double", max_gap = "1 s" }
[[assessment]]
name = "goes on"
formula = "brake == 1 -> always[0, 3 s](lamp == 1)"
[[assessment]]
name = "calm"
formula = "eventually[0, 2 s](always[0, 2 s](abs(speed) < 3))"
to = 6
[[assessment]]
name = "known"
formula = "late >= 0 & (brake == 0 | lamp == 1)"
)toml");
        write("e.csv",
              "time,brake,lamp,speed,late\n0,0,0,0,\n1,0,0,9,\n1.5,0,0,0,\n3,1,1,7,1\n3.5,0,1,0,1\n"
              "4,0,0,0,\n5,0,0,8,\n5.5,0,0,0,\n6,0,0,0,1\n7,0,0,0,1\n8,1,1,0,\n10,1,1,0,\n");
    }
};

TEST_F(Explain, TableTellsCausesAndReasons) {
    const ProgramResult result = assess("run e.toml e.csv --explain");
    EXPECT_EQ(result.out, R"(e.csv, from 0 s to 10 s
  verdict  assessment  passed  failed  no result  first failure
  FAIL     goes on        7.5     0.5        2.0            3.0
           fails from 3 s to 3.5 s
             because lamp == 1 is false from 4 s to 6.5 s
             (1 other set of conditions accounts for it as well)
           no result for 20 % of the range: from 8 s to 10 s
             since the window reaches beyond the recording's end at 10 s
  FAIL     calm           2.5     3.5          0            0.0
           fails from 0 s to 3.5 s
             because abs(speed) < 3 is false from 3 s to 3.5 s
             and abs(speed) < 3 is false from 5 s to 5.5 s
  PASS     known          1.5       0        8.5              -
           no result for 85 % of the range, first from 0 s to 3 s
             since 'late' begins at 3 s
           no result from 3.5 s to 6 s
             since 'late' has a hole from 3.5 s to 6 s
           no result from 7 s to 10 s
             since 'late' ends at 7 s

1 passed, 2 failed
)");
    const std::string junit = assess("run e.toml e.csv --explain -f junit").out;
    EXPECT_TRUE(has(junit, "because lamp == 1 is false from 4 s to 6.5 s"));
    EXPECT_TRUE(has(junit, "since 'late' begins at 3 s"));
}

TEST_F(Explain, JsonHoldsExplanationsAsData) {
    const auto run = report("run e.toml e.csv --explain")["recordings"][0]["assessments"];
    const auto failure = run[1]["failures"][0];
    EXPECT_EQ(failure["explanation"], nlohmann::json::parse(R"({"extent": "whole", "causes": [
        {"formula": "abs(speed) < 3", "named": "abs(speed) < 3", "definitions": {},
         "signals": ["speed"], "value": false, "when": "from 3 s to 3.5 s", "start": 3, "end": 3.5},
        {"formula": "abs(speed) < 3", "named": "abs(speed) < 3", "definitions": {},
         "signals": ["speed"], "value": false, "when": "from 5 s to 5.5 s", "start": 5, "end": 5.5}
        ], "other_sets": 0, "has_more_sets": false})"));
    EXPECT_EQ(run[0]["failures"][0]["explanation"]["other_sets"], 1);
    EXPECT_EQ(run[2]["no_result_spans"][2]["reasons"], nlohmann::json({"'late' ends at 7 s"}));
    EXPECT_EQ(outcome("show e.toml calm e.csv"), run[1]);
    EXPECT_FALSE(outcome("run e.toml e.csv --only calm")["failures"][0].contains("explanation"));
}

// Windows three times as long as the recording move an instant there and back.
TEST_F(Explain, LongWindowsKeepInstants) {
    write("w.csv", "time,p,ok\n0,false,true\n5,true,true\n10,true,true\n");
    write("w.toml",
          "[[assessment]]\nname = 'long'\n"
          "formula = 'rise(p) -> always[0, 30 s](eventually[-30 s, -20 s](~ok))'\n");
    const ProgramResult result = assess("run w.toml w.csv");
    EXPECT_TRUE(has(result.out, "fails at 5 s"));
}

// A comparison with NaN is false throughout it, also that of a slope.
TEST_F(Explain, SlopesAreNanBesideNan) {
    write("n.csv", "time,x\n0,10\n1,20\n2,nan\n3,30\n4,31\n");
    write("n.toml",
          "[signals]\nx = { interpolation = 'linear' }\n[[assessment]]\n"
          "name = 'gentle'\nformula = 'slope(x) <= 150'\n");
    const ProgramResult result = assess("run n.toml n.csv --explain");
    EXPECT_TRUE(has(result.out, "because slope(x) <= 150 is false from 1 s to 3 s"));
    EXPECT_TRUE(has(result.out, "no result for less than 1 % of the range, first at 1 s"));
}

TEST_F(Explain, ShowMarksWhatItLeavesOut) {
    const std::string all = assess("show e.toml calm e.csv --values 50").out;
    EXPECT_FALSE(has(all, "..."));
    EXPECT_TRUE(
        has(assess("show e.toml known e.csv").out, "1 at 3, no result from just after 3.5"));
    write("long.toml", R"([signals]
x = { interpolation = "linear" }
[[assessment]]
name = "low"
formula = "x < 3.25"
)");
    std::string content = "time,x\n";
    for (int i = 0; i < 100; ++i) {
        content += std::to_string(i) + "," + std::to_string(i % 5) + "\n";
    }
    write("long.csv", content);
    const std::string thinned = assess("show long.toml low long.csv --margin 10 --values 4").out;
    EXPECT_TRUE(has(thinned, "0 at 0, 4 at 4, ..., 3.25 at 8.25, ..., 0 at 10"));
}

}  // namespace
}  // namespace assess_tests
