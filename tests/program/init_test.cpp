// What `assess init` writes is an assessment file for the recordings that it was made from.

#include "program_runner.hpp"

#include <nlohmann/json.hpp>

#include <vector>

namespace assess_tests {
namespace {

class Init : public ProgramTest {
protected:
    /// The draft, after it was checked against and run on what it was made from.
    std::string usableDraft(const std::string& recordings, const std::string& options = "") const {
        const std::string subject = recordings + " " + options;
        const ProgramResult init = assess("init " + subject + " -o draft.toml");
        EXPECT_EQ(init.exitCode, 0) << subject << init.err;
        const std::string together = has(options, "--together") ? " --together" : "";
        const ProgramResult run = assess("run draft.toml " + recordings + together + " -f json");
        const std::string draft = contentOf(folder() / "draft.toml");
        EXPECT_LE(run.exitCode, 1) << subject << run.err << run.out << draft;
        const ProgramResult check = assess("check draft.toml --against " + recordings + together);
        EXPECT_EQ(check.exitCode, 0) << subject << check.err << draft;
        return draft;
    }

    static testing::AssertionResult holds(const std::string& draft, const std::string& line) {
        return has("\n" + draft, "\n" + line + "\n");
    }
};

TEST_F(Init, TellsHowAnUglyFileIsReadAndGivesThreeExamples) {
    write("bench.txt",
          "Test bench\t2\nCell\t7\n\nDate\tTime\tVolts\tT_Cell\tState\tBroken\n\t\tV\t°C\t\t\n"
          "30.06.2026\t14:05:00\t3,25\t---\trest\t\n30.06.2026\t14:05:10\t3,75\t24,5\ton\t\n"
          "30.06.2026\t14:05:20\t2,5\t25,5\ton\t\n");
    EXPECT_EQ(usableDraft("bench.txt", "--missing=---"),
              R"toml(# Assessments to begin with, made from bench.txt.

[recording]
missing = "---"
# cells are separated by tabs
# numbers have a decimal comma
# the header is line 4
# line 5 has the units
# times are in 'Date' and 'Time', as dates, day first
header = 4
delimiter = "tab"
decimal = "comma"
time = ["Date", "Time"]
origin = "first"  # times count from the first sample

# Numbers are held between samples; interpolation = "linear" makes lines of them.
[signals]
Volts = { type = "double", unit = "V" }  # 2.5 to 3.75, 3 samples
T_Cell = { type = "double", unit = "°C" }  # 24.5 to 25.5, 2 samples
State = { type = "enum" }  # rest, on; 3 samples
# Broken: unknown type, 0 samples

[[assessment]]
name = "Volts stays in its range"
formula = "Volts >= 2.5 & Volts <= 3.75"

[[assessment]]
name = "T_Cell comes back"
formula = "T_Cell > 25 -> eventually[0, 100 s](T_Cell <= 25)"

[[assessment]]
name = "State is not so for long"
formula = "~always[0, 100 s](State == 'rest')"
)toml");
}

TEST_F(Init, QuotesWhatNeedsItWhateverColumnsAndTheirTextsAreCalled) {
    for (const std::string name :
         {"a b",  R"(say ""hi"")", "it's",       "x[1]",   "(x)",   "v (m/s)", "Kühlung",
          "n#1",  "# 1",           "a.b",        "1st",    "-x",    "a=b",     "back\\slash",
          "\\n",  "tab\there",     "two\nlines", "bell\a", "until", "always",  "rise",
          "true", "not",           "double",     "int8",   "abs",   "t,1"}) {
        write("n.csv", "time,\"" + name + "\"\n0,1\n1,3\n");
        EXPECT_FALSE(has(usableDraft("n.csv"), "?")) << name;
        // The text is longer than what is cut off by messages and tables.
        std::string rows = "time,m\n0,\"is ";
        rows.append(name).append("\"\n1,\"other ").append(60, '.').append(name).append("\"\n");
        write("m.csv", rows);
        usableDraft("m.csv");
    }
    EXPECT_EQ(shell("cp n.csv \"$(printf 'n\\351\\001.csv')\"").exitCode, 0);
    usableDraft("\"$(printf 'n\\351\\001.csv')\"");
}

TEST_F(Init, KnowsEveryKindOfValue) {
    write("k.csv",
          "time,bool,id,large,mode,mixed,constant\n"
          "0,true,9007199254740993,18446744073709551615,P,1,5\n"
          "1,false,-9007199254740993,18446744073709551614,D,x,5\n");
    const std::string draft = usableDraft("k.csv");
    for (
        const char* line : {
            "bool = { type = \"bool\" }  # 2 samples",
            "id = { type = \"int64\" }  # -9007199254740993 to 9007199254740993, 2 samples",
            R"(large = { type = "uint64" }  # 18446744073709551614 to 18446744073709551615, 2 samples)",
            "mode = { type = \"enum\" }  # P, D; 2 samples",
            "# mixed: mixed, 1 to 1, 2 samples",
            "constant = { type = \"double\" }  # 5 to 5, 2 samples",
        }) {
        EXPECT_TRUE(holds(draft, line));
    }
    EXPECT_TRUE(has(draft, "id <= -9007199254740993)"));
}

TEST_F(Init, TellsFilesApartThatHaveAColumnOfOneName) {
    for (const char* path : {"folder/a.csv", "folder/b.csv", "e1/x.csv", "e2/x.csv"}) {
        write(path, "time,speed\n0,1\n1,2\n");
    }
    write("two.csv", "time,speed,speed\n0,1,3\n1,2,4\n");
    write("b.jsonl", "{\"time\": 0, \"name\": \"speed\", \"value\": 1}\n");
    struct Row {
        const char* recordings;
        const char* options;
        std::vector<std::string> signals;
    };
    for (const Row& row : {
             Row{"folder",
                 "",
                 {R"("a.speed" = { file = "a.csv", column = "speed")",
                  R"("b.speed" = { file = "b.csv", column = "speed")"}},
             Row{"e1/x.csv e2/x.csv",
                 "--together",
                 {R"("e1/x.csv.speed" = { file = "e1/x.csv", column = "speed")",
                  R"("e2/x.csv.speed" = { file = "e2/x.csv", column = "speed")"}},
             Row{"folder/b.csv b.jsonl",
                 "--together",
                 {R"("folder/b.csv.speed" = { file = "folder/b.csv", column = "speed")",
                  R"("b.jsonl.speed" = { file = "b.jsonl", column = "speed")"}},
             Row{"e1/x.csv two.csv",
                 "--together",
                 {R"("x.speed" = { file = "x.csv", column = "speed")",
                  R"("two.speed#1" = { file = "two.csv", column = "speed#1")"}},
             Row{"e1/x.csv e2/x.csv", "", {"speed = { type"}},
         }) {
        const std::string draft = usableDraft(row.recordings, row.options);
        for (const std::string& signal : row.signals) {
            EXPECT_TRUE(has(draft, "\n" + signal));
        }
    }
}

TEST_F(Init, HasExamplesOfWhatAllRecordingsHaveAlike) {
    write("one.csv", "time,first,mode,speed\n0,1,3,5\n1,2,4,6\n");
    write("two.csv", "time,mode,speed\n0,P,9007199254740993\n1,D,7\n");
    write("three.csv", "time,mode,speed\n0,P,0.5\n1,D,7\n");
    write("four.csv", "time,mode\n0,R\n1,D\n");
    EXPECT_TRUE(has(usableDraft("three.csv four.csv"), "~(mode == 'D')"));
    EXPECT_TRUE(
        holds(usableDraft("one.csv three.csv"), "# mode: double or enum, 3 to 4, 2 samples"));
    const std::string none = assess("init one.csv two.csv").out;
    EXPECT_FALSE(has(none, "[[assessment]]"));
    EXPECT_TRUE(has(none, "# No signal is there to make examples of"));
}

TEST_F(Init, SaysWhatHasToBeDecidedAboutTimes) {
    write("equal.csv", "time,x\n0,1\n1,2\n1,3\n2,4\n");
    EXPECT_TRUE(has(usableDraft("equal.csv"), "\nequal_times = \"last\""));
    EXPECT_TRUE(holds(usableDraft("equal.csv", "--equal-times first"), "equal_times = \"first\""));

    write("back.csv", "time,x\n0,1\n2,2\n1,3\n");
    const ProgramResult back = assess("init back.csv -o back.toml");
    EXPECT_EQ(back.exitCode, 0);
    EXPECT_TRUE(holds(contentOf(folder() / "back.toml"),
                      "# times_back = \"shift\"  # or \"drop\" or \"sort\""));
    EXPECT_EQ(assess("run back.toml back.csv").exitCode, 3);
    EXPECT_TRUE(holds(usableDraft("back.csv", "--times-back sort"), "times_back = \"sort\""));

    write("seconds.csv", "Test_Time,x\n0,1\n2,2\n");
    EXPECT_TRUE(holds(usableDraft("seconds.csv"),
                      "# unit = \"s\"  # or min, ms and so on, where times are not in seconds"));
    write("epoch.csv", "time,x\n1782828300000,1\n1782828301000,2\n");
    EXPECT_FALSE(has(usableDraft("epoch.csv"), "unit =")) << "it would be a count of no dates";
    EXPECT_EQ(report("run draft.toml epoch.csv")["recordings"][0]["zone"], "UTC");
}

TEST_F(Init, KeepsWhichOfDayAndMonthComesFirst) {
    for (const char* order : {"day", "month"}) {
        const bool isDayFirst = order == std::string("day");
        write("d.csv", isDayFirst ? "time,x\n13/06/2026 9:59,1\n13/06/2026 10:00:01,2\n"
                                  : "time,x\n06/13/2026 9:59,1\n06/13/2026 10:00:01,2\n");
        for (const char* option : {"", "--time time"}) {
            EXPECT_TRUE(holds(usableDraft("d.csv", option),
                              "time_format = \"" + std::string(order) + " first\""));
        }
        write("next.csv", "time,x\n06/07/2026 9:39 PM,1\n06/08/2026 9:39 PM,2\n");
        EXPECT_EQ(outcome("run draft.toml next.csv")["to"], (isDayFirst ? 31 : 1) * 86400);
        EXPECT_EQ(assess("run draft.toml next.csv").err, "");
    }
}

TEST_F(Init, KeepsTheOptionsThatWereGiven) {
    write("o.csv", "n|T 1|T|x\n1|0|0|1\n2|5|60000|?\n3|7|60500|3\n");
    const std::string draft =
        usableDraft("o.csv",
                    "--delimiter '|' --time T --unit ms --missing '?' --missing none "
                    "--max-gap '2 min' --interpolation linear --resolution us --origin first");
    for (const char* line :
         {"delimiter = \"|\"", "time = \"T\"", "unit = \"ms\"", R"(missing = ["?", "none"])",
          "max_gap = \"2 min\"", "interpolation = \"linear\"", "resolution = \"us\"",
          "origin = \"first\""}) {
        EXPECT_TRUE(holds(draft, line));
    }
    EXPECT_EQ(outcome("run draft.toml o.csv")["to"], 60.5);
}

TEST_F(Init, NeedsTimes) {
    write("none.csv", "x,y\n5,1\n4,2\n5,3\n4,1\n");
    const ProgramResult none = assess("init none.csv");
    EXPECT_EQ(none.exitCode, 3);
    EXPECT_EQ(none.out, "");
    EXPECT_TRUE(has(none.err, "none.csv:1: has no time column"));
    EXPECT_EQ(assess("init missing.csv").exitCode, 3);
    EXPECT_EQ(assess("init none.csv --unit fortnight").exitCode, 2);

    write("folder/notes.txt", "tests of today\nall went well\n");
    write("folder/drive.csv", "time,x\n0,1\n1,2\n");
    const std::string draft = usableDraft("folder");
    EXPECT_TRUE(has(draft, "\n# not read: folder/notes.txt:1: has no time column"));
    EXPECT_FALSE(has(draft, "tests of today ="));
}

}  // namespace
}  // namespace assess_tests
