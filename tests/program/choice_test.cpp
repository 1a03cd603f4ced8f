#include "program/program_runner.hpp"

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

namespace assess_tests {
namespace {

// Which assessments are run, and how bad it is where they fail.
class Choice : public ProgramTest {
protected:
    Choice() {
        write("c.csv", "time,x\n0,1\n10,9\n20,1\n");
        write("c.toml", R"toml(
assessment = [
    { name = "low", formula = "x < 5", severity = "warning", tags = ["limits", "release"] },
    { name = "lower", formula = "x < 3", severity = "info", tags = "limits" },
    { name = "l*", formula = "x < 9.5", tags = ["fast"] },
    { name = "ends", formula = "always[0, 5 s](x < 9.5)", severity = "warning" },
]
)toml");
    }

    std::string namesRun(const std::string& arguments) const {
        const nlohmann::json run = report("run c.toml c.csv " + arguments);
        std::string names;
        for (const auto& one : run["recordings"][0]["assessments"]) {
            names += (names.empty() ? "" : " ") + one["name"].get<std::string>();
        }
        return names;
    }
};

TEST_F(Choice, IsByNamesPatternsAndTags) {
    EXPECT_EQ(namesRun(""), "low lower l* ends");
    EXPECT_EQ(namesRun("--only 'l*'"), "l*") << "a name goes before what it may match";
    EXPECT_EQ(namesRun("--only 'lo*'"), "low lower");
    EXPECT_EQ(namesRun("--only '?nds' --only low"), "low ends") << "in the order of the file";
    EXPECT_EQ(namesRun("--only tag:limits --skip low"), "lower");
    EXPECT_EQ(namesRun("--skip 'tag:*'"), "ends");
}

TEST_F(Choice, PatternsCountCharactersAndNotBytes) {
    write("u.toml",
          "[[assessment]]\nname = 'Kühlung'\nformula = 'x < 50'\n"
          "[[assessment]]\nname = 'Köhler'\nformula = 'x < 50'\n");
    for (const char* pattern : {"K?hlung", "K[äü]hlung", "K[!ö]*"}) {
        const auto run =
            report("run u.toml c.csv --only '" + std::string(pattern) + "'")["recordings"][0];
        ASSERT_EQ(run["assessments"].size(), 1) << pattern;
        EXPECT_EQ(run["assessments"][0]["name"], "Kühlung");
    }
}

// Not taken apart as lists.
TEST_F(Choice, BracketsArePartOfNamesAndPatterns) {
    EXPECT_EQ(namesRun("--only 'l[ou]w'"), "low");
    EXPECT_EQ(namesRun("--skip '[a-k]*' --skip '[l]*r'"), "low l*");
    write("[c.csv]", "time,x\n0,1\n");
    const auto refused = assess("run c.toml '[c.csv]'");
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(has(refused.err, "'[c.csv]' would be taken for a list")) << refused.err;
    EXPECT_EQ(assess("run c.toml './[c.csv]'").exitCode, 0);
    write("n.toml", "[[assessment]]\nname = \"[low]\"\nformula = \"x < 5\"\n");
    EXPECT_EQ(assess("show n.toml '[low]' c.csv").exitCode, 1);
}

TEST_F(Choice, OfNothingIsRefused) {
    const auto errorOf = [this](const std::string& arguments) {
        const ProgramResult result = assess("run c.toml c.csv " + arguments);
        EXPECT_EQ(result.exitCode, 3) << arguments;
        EXPECT_EQ(result.out, "");
        return result.err;
    };
    EXPECT_TRUE(has(errorOf("--only lwo"), "there is no assessment 'lwo'"));
    EXPECT_TRUE(has(errorOf("--skip 'x*'"), "there is no assessment 'x*'"));
    EXPECT_TRUE(has(errorOf("--only tag:limit"),
                    "there is no assessment with the tag 'limit'\n  did you mean 'limits'?"));
    EXPECT_TRUE(has(errorOf("--only low --skip tag:limits"), "no assessment is left to be run"));
}

TEST_F(Choice, OnlyErrorsFailARun) {
    const ProgramResult result = assess("run c.toml c.csv");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(has(result.out, "WARNING  low"));
    EXPECT_TRUE(has(result.out, "INFO     lower"));
    EXPECT_TRUE(has(result.out, "2 passed, 0 failed, 1 failed as warnings, 1 failed as infos"));
    const ProgramResult shown = assess("show c.toml low c.csv");
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_TRUE(has(shown.out, "c.csv\nWARNING  low\n"));
    EXPECT_EQ(assess("show c.toml 'l*' c.csv").exitCode, 0);
    EXPECT_EQ(assess("run c.toml c.csv --strict").exitCode, 0) << "what is open is a warning, too";
    EXPECT_TRUE(matches(report("run c.toml c.csv")["summary"],
                        R"({"passed": 2, "failed": 0, "failed_warnings": 1, "failed_infos": 1})"));
    EXPECT_TRUE(matches(outcome("run c.toml c.csv"),
                        R"({"verdict": "FAIL", "severity": "warning",
                            "tags": ["limits", "release"]})"));
    write("e.csv", "time,x\n0,1\n10,9.7\n20,1\n");
    EXPECT_EQ(assess("run c.toml c.csv e.csv").exitCode, 1);
    EXPECT_EQ(assess("show c.toml 'l*' e.csv").exitCode, 1);
    EXPECT_TRUE(has(assess("run c.toml c.csv e.csv").out, "  e.csv  W i F"));
    const ProgramResult beside = assess("run c.toml c.csv none.csv --only ends");
    EXPECT_EQ(beside.exitCode, 3);
    EXPECT_FALSE(has(beside.out, "Worst first")) << "a matrix without columns";
}

TEST_F(Choice, ThePageHasSeveritiesAndTags) {
    const std::string page = assess("run c.toml c.csv -f html").out;
    EXPECT_TRUE(has(page, R"(<details class="assessment WARNING" id="r1a1")"));
    EXPECT_TRUE(has(page, R"(<details class="assessment INFO" id="r1a2")"));
    EXPECT_TRUE(has(page, R"(<p class="tags">tags: limits, release</p>)"));
}

TEST_F(Choice, JunitHasNoFailureForAWarning) {
    pugi::xml_document junit;
    junit.load_string(assess("run c.toml c.csv -f junit").out.c_str());
    const pugi::xml_node suites = junit.child("testsuites");
    EXPECT_STREQ(suites.attribute("tests").value(), "4");
    EXPECT_STREQ(suites.attribute("failures").value(), "0");
    const pugi::xml_node first = suites.child("testsuite").child("testcase");
    EXPECT_FALSE(first.child("failure"));
    EXPECT_TRUE(has(first.child("system-out").text().get(),
                    "fails, and is of the severity warning:\nx < 5\nfails from 10 s to 20 s\n"));
    EXPECT_STREQ(first.child("properties").first_child().attribute("value").value(), "warning");
}

TEST_F(Choice, TagsAndSeveritiesAreChecked) {
    const auto errorOf = [this](const std::string& key) {
        write("w.toml", "[[assessment]]\nname = 'a'\nformula = 'x < 5'\n" + key + "\n");
        return assess("check w.toml").err;
    };
    EXPECT_TRUE(has(errorOf("severity = 'fatal'"), "w.toml:4:12: 'fatal' is no severity"));
    EXPECT_TRUE(has(errorOf("tags = ['a', 'a']"), "w.toml:4:8: the tag 'a' is given twice"));
    EXPECT_TRUE(has(errorOf("tags = ''"), "w.toml:4:8: a tag is empty"));
    EXPECT_TRUE(has(errorOf("tags = 3"), "w.toml:4:8: 'tags' has to be a text in quotes"));
}

}  // namespace
}  // namespace assess_tests
