#include "evaluation/recording/recorded.hpp"

namespace vorm::evaluation::test {
namespace {

Recording readAll(const std::vector<RecordingFile>& files, const RecordingLayout& layout = {},
                  const ReadingOptions& options = {}) {
    return readRecordingFiles("trip", files, layout, options);
}

ReadingOptions wanting(const std::set<std::string>& names) {
    ReadingOptions options;
    options.wanted = names;
    return options;
}

RecordingFile found(RecordingFile file) {
    file.isFromFolder = true;
    return file;
}

const std::vector<RecordingFile> trip{textFile("d/gps.csv", "t_us,v,alt\n2000000,1,7\n"),
                                      textFile("d/can.csv", "t_ms,v,gear\n1500,2,N\n")};

TEST(RecordingOfSeveralFiles, NamesByColumnOrByFileAndColumn) {
    EXPECT_EQ(textOf(readAll(trip)),
              "gps.v: double 2:1 known 2\nalt: double 2:7 known 2\n"
              "can.v: double 1.5:2 known 1.5\n"
              "gear: enumeration gear 1.5:N known 1.5");
    const auto some = readAll(trip, {}, wanting({"can.v", "alt", "gps.alt"}));
    EXPECT_EQ(textOf(some),
              "alt: double 2:7 known 2\ngps.alt: double 2:7 known 2\n"
              "can.v: double 1.5:2 known 1.5");
    EXPECT_EQ(some.find("alt")->pieces, some.find("gps.alt")->pieces);
    EXPECT_EQ(some.availableNames,
              (std::vector<std::string>{"gps.v", "alt", "gps.alt", "can.v", "gear", "can.gear"}));
}

TEST(RecordingOfSeveralFiles, EndingsTellTheFormOfTheirRows) {
    const std::string lines = "{\"t\": 0, \"name\": \"v\", \"value\": 1}\n";
    for (const char* path :
         {"a.jsonl", "a.ndjson", "d/.jsonl", "a.csv.ndjson", "a.jsonl.gz", "a.ndjson.zst"}) {
        EXPECT_EQ(textOf(read(lines, {}, {}, path)), "v: double 0:1 known 0") << path;
    }
    for (const char* path : {"a.csv", "a.tsv", "a.txt", "a.jsonl/b", "jsonl", "a.csv.gz", "a.gz",
                             "a.jsonl.csv.zst", "a.jsonl.gz.gz"}) {
        EXPECT_EQ(textOf(read("t,v\n0,1\n", {}, {}, path)), "v: double 0:1 known 0") << path;
    }
}

TEST(RecordingOfSeveralFiles, EndingsOfCompressionAreNoPartOfNames) {
    for (const auto& [path, stem] : std::vector<std::pair<std::string, std::string>>{
             {"d/drive.csv.gz", "drive"}, {"drive.zst", "drive"}, {"d/.gz", ".gz"}}) {
        EXPECT_EQ(textFile(path, "").stem(), stem);
    }
    const RecordingFile file = textFile("d/drive.csv.gz", "");
    for (const char* name : {"d/drive.csv.gz", "drive.csv.gz", "drive.csv", "drive"}) {
        EXPECT_TRUE(file.isCalled(name)) << name;
    }
}

TEST(RecordingOfSeveralFiles, DeclarationsNameTheFile) {
    auto speed = declared("speed");
    speed.column = "v";
    speed.file = "can.csv";
    EXPECT_EQ(textOf(readAll(trip, declaring({speed}), wanting({"speed", "v"}))),
              "v: double 2:1 known 2\nspeed: double 1.5:2 known 1.5");
}

TEST(RecordingOfSeveralFiles, HasOneOriginForAll) {
    const auto startingAt = [](TimeOrigin::Choice origin) {
        return layoutWith([&](auto& layout) { layout.time.origin = std::move(origin); });
    };
    const auto options = wanting({"alt", "gear"});
    EXPECT_EQ(textOf(readAll(trip, startingAt(TimeOrigin::FirstSample()), options)),
              "alt: double 0.5:7 known 0.5\ngear: enumeration gear 0:N known 0");
    EXPECT_EQ(textOf(readAll(trip, startingAt(TimeOrigin::FirstOf{"gps"}), wanting({"gear"}))),
              "gear: enumeration gear -0.5:N known -0.5");
    EXPECT_EQ(errorOf([&] { readAll(trip, startingAt(TimeOrigin::FirstOf{"gpx"}), options); }),
              "the recording has no file 'gpx' to give time 0\n  its files are 'gps.csv' and "
              "'can.csv'");
}

TEST(RecordingOfSeveralFiles, IsTheSameOnSeveralThreads) {
    ReadingOptions options;
    options.jobs = 4;
    EXPECT_EQ(textOf(readAll(trip, {}, options)), textOf(readAll(trip)));
    const std::vector<RecordingFile> bad{textFile("a.csv", "t,a\n0,1\n1\n2,1\n"), trip[0],
                                         textFile("b.csv", "t,b\n0,1\n1\n2,1\n")};
    EXPECT_EQ(errorOf([&] { readAll(bad, {}, options); }).substr(0, 8), "a.csv:3:");
}

TEST(RecordingOfSeveralFiles, LeavesOutWhatIsNoRecordingUnlessItIsWanted) {
    const std::vector<RecordingFile> files{trip[0], found(textFile("d/notes.txt", "to do\nmilk\n")),
                                           found(textFile("d/empty.csv", "")),
                                           found(textFile("d/later.csv", "t,w\n"))};
    EXPECT_EQ(textOf(readAll(files, {}, wanting({"v"}))), "v: double 2:1 known 2");
    auto first = layoutWith([](auto& layout) { layout.time.origin = TimeOrigin::FirstSample(); });
    EXPECT_EQ(textOf(readAll(files, first, wanting({"v"}))), "v: double 0:1 known 0");
    EXPECT_EQ(errorOf([&] { readAll(files, {}, wanting({"w"})); }),
              "d/later.csv: has a header but no rows");
    EXPECT_EQ(errorOf([&] { readAll(files, {}, wanting({"to do"})); }).substr(0, 35),
              "d/notes.txt:1: has no time column a");
    EXPECT_EQ(errorOf([&] { readAll(files); }), "d/empty.csv: is empty");
}

TEST(RecordingOfSeveralFiles, SaysWhatWasLeftOut) {
    const std::vector<RecordingFile> files{trip[0], found(textFile("d/empty.csv", "")),
                                           found(textFile("d/twice.csv", "t,w,w\n0,1,2\n"))};
    const auto some = readAll(files, {}, wanting({"v", "x"}));
    ASSERT_EQ(some.leftOut.size(), 1u);
    EXPECT_STREQ(some.leftOut[0].what(), "d/empty.csv: is empty");
    EXPECT_EQ(errorOf([&] { readAll(files, declaring({declared("x")}), wanting({"x"})); }),
              "d/empty.csv: is empty");
    EXPECT_EQ(errorOf([&] { readAll(files, {}, wanting({"w"})); }).substr(0, 32),
              "d/twice.csv:1: has 2 columns 'w'");
    const std::vector<RecordingFile> lines{trip[0],
                                           found(textFile("d/a.jsonl", "{\"name\":\"x\"}\n"))};
    EXPECT_EQ(readAll(lines, {}, wanting({"v"})).leftOut.size(), 1u);
}

TEST(RecordingOfSeveralFiles, RefusesAFileAloneThatCannotBeUsed) {
    for (const char* content : {"", "stamp,a\n0,1\n", "time [d],a\n0,1\n"}) {
        EXPECT_EQ(errorOf([&] {
                      readAll({found(textFile("r.csv", content))}, {}, wanting({"x"}));
                  }).substr(0, 5),
                  "r.csv");
    }
}

TEST(RecordingOfSeveralFiles, TellsFilesOfOneNameApartByTheirPaths) {
    const std::vector<RecordingFile> runs{textFile("e1/a.csv", "t,v\n0,1\n"),
                                          textFile("e2/a.csv", "t,v\n1,2\n")};
    EXPECT_EQ(textOf(readAll(runs)),
              "e1/a.csv.v: double 0:1 known 0\ne2/a.csv.v: double 1:2 known 1");
    auto v = declared("v");
    v.file = "e2/a.csv";
    EXPECT_EQ(textOf(readAll(runs, declaring({v}), wanting({"v"}))), "v: double 1:2 known 1");
    const auto from = [](const std::string& file) {
        return layoutWith([&](auto& layout) { layout.time.origin = TimeOrigin::FirstOf{file}; });
    };
    EXPECT_EQ(textOf(readAll(runs, from("e2/a.csv"), wanting({"e1/a.csv.v"}))),
              "e1/a.csv.v: double -1:1 known -1");
    EXPECT_EQ(surveyFiles(runs, from("e2/a.csv")).signals.at(0).first.text(), "-1");
    const std::string ambiguous = errorOf([&] { readAll(runs, from("a")); });
    EXPECT_EQ(ambiguous.substr(0, 35), "several files 'a' may give time 0\n ");
    EXPECT_EQ(errorOf([&] { surveyFiles(runs, from("a")); }), ambiguous);
    EXPECT_EQ(errorOf([&] {
                  recordingFiles({{"e1/a.csv", "e2/../e1/a.csv"}});
              }),
              "the file 'e2/../e1/a.csv' is given twice");
}

TEST(RecordingOfSeveralFiles, RefusesNamesOfSeveralColumns) {
    EXPECT_EQ(errorOf([] { readAll(trip, {}, wanting({"v"})); }),
              "the column 'v' is in the files 'd/gps.csv' and 'd/can.csv'\n"
              "  name one of 'gps.v' and 'can.v'");
    EXPECT_EQ(errorOf([] { readAll(trip, declaring({declared("v")})); }),
              "limits.toml:7:3: the signal 'v' is in 'd/gps.csv' and in 'd/can.csv'\n"
              "  declare which one: v = { file = \"...\" }");
    auto v = declared("v");
    v.file = "gpss.csv";
    EXPECT_EQ(errorOf([&] { readAll(trip, declaring({v}), wanting({"v"})); }),
              "limits.toml:7:3: 'trip' has no file 'gpss.csv' for the signal 'v'\n"
              "  did you mean 'gps.csv'?");
}

}  // namespace
}  // namespace vorm::evaluation::test
