// What formulas read as the time of a recording.

#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/check.hpp>
#include <vorm/evaluation/assessment/evaluate_formula.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/recording/recording_in_memory.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

namespace vorm::evaluation {
namespace {

std::string falseOn(const Recording& recording, const std::string& formula) {
    std::string text;
    for (const auto& [span, truth] : evaluate(formula, recording).truth) {
        text += truth == certainlyFalse ? span.start.text() + " to " + span.end.text() + "; " : "";
    }
    return text;
}

/// What a run finds, of files in a folder of their own; all but the first are only beside it.
std::string runOf(const std::string& file, const std::vector<std::string>& contents) {
    const std::filesystem::path folder = testing::TempDir() + "/time_test";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    for (std::size_t i = 0; i < contents.size(); ++i) {
        std::ofstream(folder / (std::string(1, static_cast<char>('a' + i)) + ".csv"))
            << contents[i];
    }
    const RunOutcome outcome =
        run(parseAssessmentFile(file, "time.toml"),
            {{{contents.size() == 1 ? (folder / "a.csv").string() : folder.string()}}});
    const RecordingOutcome& recording = outcome.recordings.front();
    if (recording.error) {
        return recording.error->what();
    }
    std::string text;
    for (const AssessmentOutcome& each : recording.assessments) {
        text += each.error ? each.error->problem().message : "";
        text += "in " + each.from.text() + " to " + each.to.text() + " not";
        for (const TimeSpan& span : each.failures) {
            text += " " + span.start.text() + " to " + span.end.text();
        }
        text += "; ";
    }
    return text;
}

std::string assessing(const std::string& formula) {
    return "[[assessment]]\nname = \"a\"\nformula = \"" + formula + "\"\n";
}

// Doubles that are nearest to such times are as far from them as ten samples of a fast recording.
TEST(Time, IsExactWhereItIsCompared) {
    for (const std::string second : {"0", "9", "46408", "1700000000"}) {
        const auto filled = [&](const std::string& text) {
            return std::regex_replace(text, std::regex("@"), second);
        };
        for (const char* const resolution : {"ms", "ns", "fs"}) {
            RecordingLayout layout;
            layout.time.resolution = *timeUnitOf(resolution);
            const Recording recording = test::read(filled("t,x\n@.1,1\n@.3,2\n@.7,3\n"), layout);
            for (const char* const formula :
                 {"x == 2 -> time >= @.3", "x == 1 -> time < @.3", "x <= 1 | @.3 <= time"}) {
                EXPECT_EQ(falseOn(recording, filled(formula)), "") << formula << second;
            }
            for (const char* const formula :
                 {"rise(x == 2) -> time > @.3", "rise(x == 2) -> @.3 ~= time"}) {
                EXPECT_EQ(falseOn(recording, filled(formula)), filled("@.3 to @.3; "))
                    << resolution;
            }
        }
    }
}

TEST(Time, IsALine) {
    const Recording recording = test::read("t,x\n0,0\n2,2\n5,5\n6,1\n");
    EXPECT_EQ(falseOn(recording, "x <= time"), "");
    EXPECT_EQ(falseOn(recording, "abs(time - 3) < 1.7"), "0 to 1.3; 4.7 to 6; ");
    EXPECT_EQ(falseOn(recording, "min(time, 2) == max[-1, 0](time)"), "2 to 6; ");
    EXPECT_EQ(falseOn(recording, "slope(time) == 1"), "");
    const auto problemOf = [&](const std::string& formula) {
        try {
            evaluate(formula, recording);
        } catch (const FormulaError& error) {
            return error.problem().message + "; " + error.problem().advice;
        }
        return std::string();
    };
    EXPECT_EQ(problemOf("Time > 1"), "unknown signal 'Time'; did you mean 'time'?");
    EXPECT_EQ(problemOf("held(time) > 1"),
              "unknown signal 'time'; of that there are no samples that could be held");
    EXPECT_TRUE(problemOf("time * time > 1")
                    .starts_with("`time` is a line between samples, but '*' needs what is held"));
}

TEST(Time, GivesWayToWhatHasItsName) {
    const std::string formula = assessing("time > 1");
    const std::string rows = "t,x,time\n0,1,0\n1,2,2\n2,0,0\n";
    EXPECT_EQ(runOf(formula, {rows}), "in 0 to 2 not 0 to 1 2 to 2; ") << "the column";
    EXPECT_EQ(runOf("[signals]\ntime = { column = \"x\" }\n" + formula, {rows}),
              "in 0 to 2 not 0 to 1 2 to 2; ");
    EXPECT_EQ(runOf("[definitions]\ntime = \"x\"\n" + formula, {"t,x\n0,1\n1,2\n"}),
              "in 0 to 1 not 0 to 1; ");
    const std::string missing =
        runOf("[signals]\ntime = { column = \"y\" }\n" + formula, {"t,x\n0,1\n1,2\n"});
    EXPECT_NE(missing.find("has no column 'y' for the signal 'time'"), std::string::npos)
        << missing;
}

TEST(Time, IsKnownInAllRows) {
    EXPECT_EQ(runOf(assessing("time <= 1.5"), {"t,x,y\n0,1,\n1,,\n2,,\n"}),
              "in 0 to 2 not 1.5 to 2; ")
        << "alone, where no signal is read";
    EXPECT_EQ(runOf(assessing("time <= 0.5 & x > 0"), {"t,x,y\n0,1,\n1,1,\n2,,1\n"}),
              "in 0 to 1 not 0.5 to 1; ")
        << "assessed where the signals are known";
    EXPECT_EQ(
        runOf(assessing("x > 0 -> always[0, end](time <= 1.5)"), {"t,x,y\n0,1,\n1,1,\n2,,1\n"}),
        "in 0 to 1 not 0 to 1; ");
    EXPECT_EQ(runOf(assessing("time <= 3"), {"t,x\n1,1\n2,1\n", "t,y\n2,0\n5,0\n"}),
              "in 1 to 5 not 3 to 5; ")
        << "of all files";
    EXPECT_EQ(runOf(assessing("time <= 3") + "[[assessment]]\nname = 'y'\nformula = 'y >= 0'\n",
                    {"t,x\n1,1\n9,1\n", "t,y\n2,0\n5,0\n"}),
              "in 1 to 9 not 3 to 9; in 2 to 5 not; ")
        << "whatever others read";
    EXPECT_EQ(runOf("[recording]\nform = \"long\"\norigin = \"first\"\n" + assessing("time < 2"),
                    {"t,name,value\n5,x,1\n8,y,2\n"}),
              "in 0 to 3 not 2 to 3; ");
}

TEST(Time, OfColumnsInMemoryIsThatOfTheirRows) {
    const std::vector<double> seconds{1, 2, 4};
    const std::array<double, 3> values{1, 2, 3};
    const std::array<bool, 3> missing{false, false, true};
    SignalColumn x{"x", NumberTimes{seconds}, SampleView<double>(values)};
    x.missing = missing;
    EXPECT_EQ(falseOn(recordingOf("r", {x}), "time < 3"), "3 to 4; ");
    x.name = "time";
    EXPECT_EQ(falseOn(recordingOf("r", {x}), "time < 2"), "2 to 2; ") << "the signal";
    EXPECT_FALSE(recordingOf("r", {}).time);
}

TEST(Time, IsKnownToChecks) {
    const AssessmentFile file =
        parseAssessmentFile(assessing("time < 3 & sqrt(time) < 1"), "time.toml");
    EXPECT_TRUE(check(file).empty()) << "without data it may be any signal";
    const auto errors = check(file, test::read("t,x\n0,1\n1,2\n"));
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors.front().problem().message,
              "`time` is a line between samples, but 'sqrt' needs what is held");
}

}  // namespace
}  // namespace vorm::evaluation
