// Runs that go on after the lines that an interrupted run has written.

#include "program_runner.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace assess_tests {
namespace {

class Resume : public ProgramTest {
protected:
    Resume() {
        write("a.toml", R"toml(
[parameters]
limit = 20.0
[[assessment]]
name = "slow"
formula = "speed <= $limit"
[[assessment]]
name = "stops"
severity = "warning"
formula = "speed > 15 -> eventually[0, 2 s](speed < 5)"
)toml");
        write("bad.csv", "time,speed\n0,x\n");
        write("fails.csv", "time,speed\n0,10\n1,30\n2,10\n");
        write("warns.csv", "time,speed\n0,10\n1,16\n2,10\n9,10\n");
        write("open.csv", "time,speed\n0,10\n1,16\n2,10\n");
        write("passes.csv", "time,speed\n0,10\n1,12\n");
        write("list", "bad.csv\nfails.csv\nwarns.csv\nfails.csv\nopen.csv\npasses.csv\n");
    }

    ProgramResult resumed(const std::string& arguments) const {
        return assess("run a.toml " + arguments + " --resume -f jsonl=lines");
    }

    std::string lines() const { return contentOf(folder() / "lines"); }
};

std::ptrdiff_t lineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

// What stands below the list of recordings.
std::string summaryOf(const std::string& table) {
    return table.substr(std::min(table.find("Worst first"), table.size()));
}

// Wherever a run was interrupted: within a line, between two, before the first, after the last.
TEST_F(Resume, GivesWhatARunWithoutInterruptionGives) {
    const ProgramResult whole = assess("run a.toml --recordings list --strict -f jsonl=lines");
    const std::string wholeLines = lines();
    ASSERT_EQ(lineCount(wholeLines), 6);
    ASSERT_EQ(whole.exitCode, 3);
    for (std::size_t cut = 0; cut <= wholeLines.size() + 131; cut += 131) {
        write("lines", wholeLines.substr(0, cut));
        const ProgramResult result = resumed("--recordings list --strict --jobs 2");
        EXPECT_EQ(lines(), wholeLines) << cut;
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(summaryOf(result.out), summaryOf(whole.out)) << cut;
    }
    write("lines", wholeLines + R"({"file": "a.t)");
    EXPECT_EQ(resumed("--recordings list --strict").exitCode, 3);
    EXPECT_EQ(lines(), wholeLines) << "there was nothing left to do";
    EXPECT_EQ(shell("rm lines").exitCode, 0);
    EXPECT_EQ(resumed("--recordings list --strict").exitCode, 3);
    EXPECT_EQ(lines(), wholeLines) << "there is nothing to go on after yet";
}

TEST_F(Resume, RoundsTimesOfEarlierLinesAsThoseOfItsOwn) {
    write("a.toml", R"toml(
[recording]
interpolation = "linear"
[[assessment]]
name = "slow"
formula = "speed <= 20"
)toml");
    write("crosses.csv", "time,speed\n0,10\n0.25,31\n");
    const std::string table = assess("run a.toml crosses.csv passes.csv -f jsonl=lines").out;
    ASSERT_TRUE(has(table, "0.119 s")) << table;
    EXPECT_EQ(summaryOf(resumed("crosses.csv passes.csv").out), summaryOf(table));
}

TEST_F(Resume, CountsWhatIsDoneButDoesNotLookAtItAgain) {
    EXPECT_EQ(assess("run a.toml fails.csv -f jsonl=lines").exitCode, 1);
    write("fails.csv", "time,speed\n0,10\n");
    const ProgramResult result = resumed("fails.csv warns.csv");
    EXPECT_EQ(result.exitCode, 1) << "what was done fails";
    EXPECT_TRUE(has(result.out, "2 recordings: "));
    EXPECT_TRUE(has(result.err, "1 recording was done before"));
    EXPECT_EQ(resumed("warns.csv fails.csv fails.csv").exitCode, 1);
    EXPECT_EQ(lineCount(lines()), 3) << "one was not done yet";

    EXPECT_EQ(assess("run a.toml bad.csv -f jsonl=lines").exitCode, 3);
    EXPECT_EQ(resumed("bad.csv warns.csv").exitCode, 3);

    // Parts of one file are recordings.
    write("b.toml", "recording = { times_back = 'split' }\n" + contentOf(folder() / "a.toml"));
    write("parts.csv", "time,speed\n0,30\n1,30\n0,10\n1,10\n0,10\n1,10\n");
    EXPECT_EQ(assess("run b.toml parts.csv -f jsonl=lines").exitCode, 1);
    const std::string all = lines();
    write("lines", all.substr(0, all.find('\n') + 1));
    EXPECT_EQ(assess("run b.toml parts.csv --resume -f jsonl=lines").exitCode, 1);
    EXPECT_EQ(lines(), all);
}

TEST_F(Resume, RefusesLinesThatAreOfAnotherRun) {
    EXPECT_EQ(assess("run a.toml fails.csv warns.csv -f jsonl=lines").exitCode, 1);
    const std::string before = lines();
    const auto expectRefusal = [&](const std::string& arguments, const std::string& reason) {
        const std::string kept = lines();
        const ProgramResult result = resumed(arguments);
        EXPECT_EQ(result.exitCode, 3) << arguments;
        EXPECT_TRUE(has(result.err, reason)) << result.err;
        EXPECT_EQ(lines(), kept);
    };
    for (const char* const changed : {"--set limit=21.0", "--only slow", "--skip stops", "--strict",
                                      "--robustness", "--explain"}) {
        expectRefusal("fails.csv warns.csv open.csv " + std::string(changed),
                      "lines:1: tells of other requirements");
    }
    expectRefusal("fails.csv open.csv",
                  "tells of 'warns.csv', which is none of the recordings of this run");
    expectRefusal("fails.csv", "tells of 'warns.csv'");
    write("a.toml", contentOf(folder() / "a.toml") + "description = 'other words'\n");
    expectRefusal("fails.csv warns.csv open.csv", "lines:1: tells of other requirements");
    write("lines", "{}\n" + before);
    expectRefusal("fails.csv", "lines:1: is no line of results");
    write("lines", "time,speed\n");
    expectRefusal("fails.csv", "lines:1: is no line of results");

    // Both read alike in a line.
    write("b\350.csv", contentOf(folder() / "fails.csv"));
    write("b\351.csv", contentOf(folder() / "passes.csv"));
    write("list", "b\351.csv\n");
    EXPECT_EQ(assess("run a.toml --recordings list -f jsonl=lines").exitCode, 0);
    write("list", "b\350.csv\nb\351.csv\n");
    expectRefusal("--recordings list", "is not in UTF-8");

    // Lines of the same run that somebody has edited.
    EXPECT_EQ(assess("run a.toml fails.csv -f jsonl=lines").exitCode, 1);
    const std::string whole = lines();
    write("lines", whole.substr(0, whole.rfind(R"(,{"name":"stops")")) + "]}\n");
    expectRefusal("fails.csv warns.csv", "lines: tells of other assessments");

    for (const char* const usage :
         {"--resume", "--resume -f jsonl", "--resume -f jsonl=one -f jsonl=two",
          "--resume -f jsonl=lines -f html=page", "--resume -f jsonl=lines -o table",
          "--resume -f jsonl=lines -f jsonl", "--resume -f jsonl=lines --baseline lines",
          "- --resume -f jsonl=lines < fails.csv"}) {
        EXPECT_EQ(assess("run a.toml fails.csv " + std::string(usage)).exitCode, 2) << usage;
    }
    EXPECT_TRUE(
        has(assess("run a.toml fails.csv --resume -f jsonl=/dev/zero").err, "is no plain file"));
}

}  // namespace
}  // namespace assess_tests
