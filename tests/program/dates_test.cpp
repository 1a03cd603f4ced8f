#include "program/program_runner.hpp"

#include <nlohmann/json.hpp>

namespace assess_tests {
namespace {

class Dates : public ProgramTest {
protected:
    Dates() {
        write("d.csv",
              "time,x\n2026-11-22 10:00:00,1\n2026-11-22 10:00:10,9\n2026-11-22 10:00:20,1\n"
              "2026-11-22 10:01:00,9\n");
        write("d.toml", R"toml(
[recording]
zone = "Europe/Berlin"
origin = "first"
[[assessment]]
name = "low"
formula = "x < 5"
from = 2026-11-22T10:00:05
to = "2026-11-22 10:00:30"
)toml");
    }
};

TEST_F(Dates, StandBesideSeconds) {
    EXPECT_EQ(assess("run d.toml d.csv --explain").out,
              R"(d.csv, from 5 s to 30 s (2026-11-22 10:00:05 to 10:00:30), dates in Europe/Berlin
  verdict  assessment  passed  failed  no result  first failure
  FAIL     low             15      10          0             10
           fails from 10 s to 20 s (2026-11-22 10:00:10 to 10:00:20)
             because x < 5 is false from 10 s to 20 s (2026-11-22 10:00:10 to 10:00:20)

0 passed, 1 failed
)");
    EXPECT_TRUE(matches(outcome("run d.toml d.csv"), R"json({"from": 5, "to": 30, "failures": [
        {"start": 10, "end": 20, "start_date": "2026-11-22 10:00:10",
         "end_date": "2026-11-22 10:00:20"}]})json"));
    EXPECT_EQ(report("run d.toml d.csv")["recordings"][0]["zone"], "Europe/Berlin");
    EXPECT_TRUE(has(assess("run d.toml d.csv -f junit").out,
                    "fails from 10 s to 20 s (2026-11-22 10:00:10 to 10:00:20)"));
    const std::string page = assess("run d.toml d.csv -f html").out;
    EXPECT_TRUE(has(page, "<td>10 s (2026-11-22 10:00:10)</td>"));
    EXPECT_TRUE(has(page, "<p class=\"facts\">dates in Europe/Berlin</p>"));
}

TEST_F(Dates, OfSignalsAreThoseOfTheFirstAndTheLastSample) {
    const ProgramResult table = assess("signals d.csv --zone Europe/Berlin --origin first");
    EXPECT_EQ(table.out.substr(0, table.out.find('\n')),
              "d.csv, from 0 s to 60 s (2026-11-22 10:00:00 to 10:01:00), dates in Europe/Berlin");
    write("n.csv", "time,y\n0,1\n10,9\n");
    const auto recordings =
        nlohmann::json::parse(assess("signals d.csv n.csv -f json").out)["recordings"];
    EXPECT_TRUE(matches(recordings[0], R"json({"zone": "UTC",
        "start_date": "2026-11-22 10:00:00", "end_date": "2026-11-22 10:01:00"})json"));
    EXPECT_TRUE(
        matches(recordings[1], R"json({"zone": null, "start_date": null, "end_date": null})json"));
}

TEST_F(Dates, AreRefusedWhereARecordingHasNone) {
    write("n.csv", "time,x\n0,1\n10,9\n");
    const ProgramResult result = assess("run d.toml n.csv d.csv");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(
        has(result.out,
            "d.toml:8:8: '2026-11-22T10:00:05' is a date, and the times of n.csv are no dates"));
}

TEST_F(Dates, OfARangeAreInOrderAndThere) {
    const auto errorOf = [this](const std::string& from, const std::string& to) {
        write("e.toml",
              "[recording]\nzone = 'Europe/Berlin'\n[[assessment]]\nname = 'a'\n"
              "formula = 'x < 5'\nfrom = " +
                  from + "\nto = " + to + "\n");
        const ProgramResult result = assess("run e.toml d.csv");
        EXPECT_EQ(result.exitCode, 3);
        return result.out + result.err;
    };
    EXPECT_TRUE(has(errorOf("'2026-11-22 10:00:30'", "'2026-11-22 10:00:29'"),
                    "e.toml:7:6: 'to' is before 'from'"));
    EXPECT_TRUE(has(errorOf("'2026-10-25 02:30'", "'2026-11-22 10:00:29'"),
                    "e.toml:6:8: clocks in Europe/Berlin show 2026-10-25 02:30:00 twice"));
    EXPECT_TRUE(has(errorOf("'10:30Z'", "3"), "e.toml:6:8: 'from' is no time"));
    EXPECT_TRUE(has(errorOf("2026-13-01", "3"), "e.toml:6"));
    EXPECT_TRUE(has(errorOf("10:00:30", "'10:00:29'"), "e.toml:7:6: 'to' is before 'from'"));
    EXPECT_TRUE(has(errorOf("5", "'4 s'"), "e.toml:7:6: 'to' is before 'from'"));
}

class TimesOfDay : public Dates {
protected:
    std::string run(const std::string& from, const std::string& rows) {
        write("t.csv", "time,x\n" + rows);
        write("t.toml",
              "[recording]\nzone = 'Europe/Berlin'\norigin = 'first'\n[[assessment]]\n"
              "name = 'low'\nformula = 'x < 5'\nfrom = " +
                  from + "\n");
        return assess("run t.toml t.csv").out;
    }
};

TEST_F(TimesOfDay, AreOfTheDayOfTheRecording) {
    // 2026-11-22 in UTC alone, and 2026-11-23 alone in Berlin.
    const std::string rows =
        "2026-11-22T23:00:00Z,9\n2026-11-22T23:00:10Z,1\n"
        "2026-11-22T23:30:00Z,1\n2026-11-22T23:40:00Z,9\n";
    for (const std::string from : {"00:30:00", "'0:30'", "'12:30 AM'", "00:30:00.000"}) {
        EXPECT_TRUE(has(run(from, rows), "from 1800 s to 2400 s (2026-11-23 00:30:00 to 00:40:00)"))
            << from;
    }
}

TEST_F(TimesOfDay, NeedADateWhereThereAreSeveral) {
    EXPECT_TRUE(has(run("'0:30'", "2026-11-22T22:59:59Z,1\n2026-11-22T23:30:00Z,9\n"),
                    "t.toml:7:8: '0:30' is a time of day without a date, and t.csv reaches from "
                    "2026-11-22 to 2026-11-23"));
    EXPECT_TRUE(
        has(run("00:30:00", "0,1\n1,9\n"),
            "t.toml:7:8: '00:30:00' is a time of day, and the times of t.csv are no dates"));
    EXPECT_TRUE(has(run("'0:30'", "2026-11-22T22:59:59Z,\n"), "nothing tells the day of t.csv"));
    EXPECT_TRUE(has(run("'2:30'", "2026-10-25 01:00,1\n2026-10-25 12:00,9\n"),
                    "t.toml:7:8: clocks in Europe/Berlin show 2026-10-25 02:30:00 twice"));
}

}  // namespace
}  // namespace assess_tests
