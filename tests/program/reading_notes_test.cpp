// What the program tells of how recordings are read, and of what it left out.

#include "program_runner.hpp"

#include <nlohmann/json.hpp>

namespace assess_tests {
namespace {

class ReadingNotes : public ProgramTest {
protected:
    ReadingNotes() {
        write("a.toml", "[[assessment]]\nname = 'a'\nformula = 'x > 0'\n");
        write("plain.csv", "time [s],x\n0,1\n1,2\n");
        write("cut.csv", "Bench 7;\nTestTime;x;y\n0;1,5;1\n1;2,5;1\n2;3");
    }
};

const std::string cutNote =
    "note: cut.csv: cells are separated by semicolons; numbers have a decimal comma; the header is "
    "line 2; times are in 'TestTime', in s since nothing says otherwise\n";
const std::string cutWarning =
    "warning: cut.csv:5: the last row has 2 of 3 cells and is left out\n";

TEST_F(ReadingNotes, AreOnRequestButWarningsAreNot) {
    struct Row {
        const char* arguments;
        std::string err;
    };
    for (const Row& row : {
             Row{"run a.toml plain.csv", ""},
             Row{"run a.toml plain.csv --verbose", ""},
             Row{"run a.toml cut.csv", cutWarning},
             Row{"run a.toml cut.csv --verbose", cutNote + cutWarning},
             Row{"run a.toml cut.csv --verbose --quiet", ""},
             Row{"show a.toml a cut.csv", cutWarning},
             Row{"show a.toml a cut.csv --quiet", ""},
         }) {
        const ProgramResult result = assess(row.arguments);
        EXPECT_EQ(result.exitCode, 0) << row.arguments;
        EXPECT_EQ(result.err, row.err) << row.arguments;
    }
}

TEST_F(ReadingNotes, NameTheFilesOfAFolderThatEndOtherwise) {
    for (const char* name : {"A.CSV", ".hidden.csv", ".cache", "b.dat", "old/c.csv"}) {
        write("drive/" + std::string(name), "time,x\n0,1\n1,2\n");
    }
    EXPECT_EQ(assess("run a.toml drive/A.CSV drive/.hidden.csv").exitCode, 0)
        << "what is named is read";
    EXPECT_EQ(shell("gzip < drive/A.CSV > drive/b.TXT.GZ").exitCode, 0);
    write("b.toml", "[[assessment]]\nname = 'a'\nformula = 'A.x + b.x > 0'\n");
    const ProgramResult result = assess("run b.toml drive --verbose");
    EXPECT_EQ(result.exitCode, 0) << result.out;
    EXPECT_EQ(result.err, "note: not read for its ending: 'drive/b.dat'\n");
    EXPECT_EQ(assess("run b.toml drive").err, "");
}

TEST_F(ReadingNotes, QuoteTimesThatGoBackAsFarAsTheyCanBeReadAgain) {
    write("back.csv", "time [ms],x\n0,1\n2.50e2,2\n10,3\n");
    EXPECT_TRUE(has(assess("run a.toml back.csv").out, "from '2.50e2' in line 3 to '10'"));
    EXPECT_TRUE(has(shell("cat back.csv | " VORM_ASSESS " run a.toml -").out,
                    "from '0.25' in line 3 to '10'"));
}

TEST_F(ReadingNotes, AreInTheReportsOfPrograms) {
    const auto run = report("run a.toml cut.csv")["recordings"][0];
    EXPECT_EQ("note: " + run["read_as"][0].get<std::string>() + "\n", cutNote);
    EXPECT_EQ("warning: " + run["warnings"][0].get<std::string>() + "\n", cutWarning);
    // The row that is cut off is no sample.
    EXPECT_EQ(run["assessments"][0]["to"], 1);

    const auto file = report("signals cut.csv")["recordings"][0]["files"][0];
    EXPECT_EQ(file["read_as"].size(), 4);
    EXPECT_EQ("warning: " + file["warnings"][0].get<std::string>() + "\n", cutWarning);
    EXPECT_EQ(file["time_problem"], nullptr);
}

TEST_F(ReadingNotes, TellOfTimesThatWereChanged) {
    write("back.csv", "time,x\n0,1\n2,2\n1,3\n2,4\n");
    for (const std::string choice : {"shift", "drop", "sort"}) {
        write("b.toml", "[recording]\ntimes_back = '" + choice + "'\nequal_times = 'last'\n" +
                            "[[assessment]]\nname = 'b'\nformula = 'x > 0'\n");
        const ProgramResult result = assess("run b.toml back.csv");
        EXPECT_EQ(result.exitCode, 0) << result.err << result.out;
        EXPECT_TRUE(result.err.starts_with("warning: back.csv: ")) << choice << result.err;
    }
}

}  // namespace
}  // namespace assess_tests
