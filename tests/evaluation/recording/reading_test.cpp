#include "evaluation/recording/recorded.hpp"

namespace vorm::evaluation::test {
namespace {

struct ReadingCase {
    std::string content;
    std::string expected;
    RecordingLayout layout = {};
};

void expectRead(const std::vector<ReadingCase>& cases, const std::string& path = "r.csv") {
    for (const ReadingCase& row : cases) {
        SCOPED_TRACE(row.content);
        // Where blocks end must not matter, whatever stands there.
        for (const std::size_t blockSize : {std::size_t{1}, std::size_t{5}, std::size_t{1} << 18}) {
            EXPECT_EQ(textOf(read(row.content, row.layout, {}, path, blockSize)), row.expected);
        }
    }
}

TEST(Recording, ReadsTextsOfManyForms) {
    expectRead({
        {"t,a,b\n0,1,2\n1,1,3\n", "a: double 0:1 known 1\nb: double 0:2 1:3 known 1"},
        {"t;a\r\n0;1\r\n1;2", "a: double 0:1 1:2 known 1"},
        {"t\ta\n0\t 1 \n", "a: double 0:1 known 0"},
        {"\xEF\xBB\xBFt,a\n0,+1.5\n", "a: double 0:1.5 known 0"},
        {"\n\"t\" , \"a,b\"\n\n \"0\" ,\"1\"\n", "a,b: double 0:1 known 0"},
        {"t,a\n0,\"x \"\"y\"\"\n\nz\"\n1,N\n", "a: enumeration a 0:x \"y\"\n\nz 1:N known 1"},
        {"t,a\n0,a 5\" pipe\n", "a: enumeration a 0:a 5\" pipe known 0"},
        {"t,a,\n0,1,\n1,2,\n", "a: double 0:1 1:2 known 1"},
        {"T [ms],speed [km/h],control[0]\n0,1,2\n1500,3,4\n",
         "speed: double 0:1 1.5:3 known 1.5\ncontrol[0]: double 0:2 1.5:4 known 1.5"},
        {"Time (min),v (a),v (b)\n0,1,2\n2,3,4\n",
         "v (a): double 0:1 120:3 known 120\nv (b): double 0:2 120:4 known 120"},
        {"a,timestamp_us\n1,250000\n2,500000\n", "a: double 0.25:1 0.5:2 known 0.5"},
        {"x y z\n1 2 3\n", "x: double 2:1 known 2\nz: double 2:3 known 2", layoutWith([](auto& l) {
             l.delimiter = ' ';
             l.time.columns = {"y"};
         })},
    });
}

TEST(Recording, FindsTheTypeOfAColumn) {
    expectRead({
        {"t,a\n0,\n1,\n", "a: unknown type"},
        {"t,a\n0,nan\n1,NaN\n2,-inf\n3,0\n", "a: double 0:nan 2:-inf 3:0 known 3"},
        {"t,a\n0,True\n1,false\n2,FALSE\n", "a: bool 0:true 1:false known 2"},
        {"t,a\n0,N\n1,true\n2,3\n3,N\n", "a: enumeration a 0:N 1:true 2:3 3:N known 3"},
        {"t,a\n0,9007199254740993\n", "a: int64 0:9007199254740993 known 0"},
        {"t,a\n0,9007199254740991\n1,-9007199254740991\n",
         "a: double 0:9007199254740991 1:-9007199254740991 known 1"},
        {"t,a\n0,7\n1,7\n2,-1\n3,9007199254740993\n",
         "a: int64 0:7 2:-1 3:9007199254740993 known 3"},
        {"t,a\n0,9223372036854775807\n1,18446744073709551615\n",
         "a: uint64 0:9223372036854775807 1:18446744073709551615 known 1"},
        {"t,a\n0,-\n1,5\n", "a: double 1:5 known 1"},
        {"t,a\n0,-\n1,N\n", "a: enumeration a 0:- 1:N known 1"},
        {"t,a\n0,-x\n", "a: enumeration a 0:-x known 0"},
        {"t,a\n0,...\n", "a: enumeration a 0:... known 0"},
        {"t,a\n0,0.5\n1,9007199254740992\n", "a: double 0:0.5 1:9007199254740992 known 1"},
        {"t,a\n0,9007199254740993\n1,0.5\n", "a: double 0:9007199254740992 1:0.5 known 1",
         declaring({declared("a", "double")})},
        {"t,a\n0,9223372036854775808\n1,-9223372036854775808\n",
         "a: double 0:9223372036854775808 1:-9223372036854775808 known 1"},
        {"t,a\n0,0\n1,1\n2,2\n3,9007199254740993\n",
         "a: int64 0:0 1:1 2:2 3:9007199254740993 known 3",
         layoutWith([](auto& l) { l.interpolation = assessments::INTERPOLATION_METHOD::LINEAR; })},
    });
}

TEST(Recording, ReadsDeclaredTypesExactly) {
    auto closed = declared("a");
    closed.type =
        SignalType::of(std::make_shared<Enumeration>(Enumeration{"Gear", {"P", "N", "D"}}));
    expectRead({
        {"t,a\n0,16777217\n", "a: float 0:16777216 known 0", declaring({declared("a", "float")})},
        {"t,a\n0,-128\n1,+127\n", "a: int8 0:-128 1:127 known 1",
         declaring({declared("a", "int8")})},
        {"t,a\n0,1\n1,false\n2,0\n", "a: bool 0:true 1:false known 2",
         declaring({declared("a", "bool")})},
        {"t,a\n0,1.0004\n", "a: half 0:1 known 0", declaring({declared("a", "half")})},
        {"t,a\n0,0.5\n", "a: fixed 0:0.5 known 0", declaring({declared("a", "fixed")})},
        {"t,a\n0,PASS\n1,FAIL\n2,NO_RESULT\n", "a: verdict 0:0 1:1 2:254 known 2",
         declaring({declared("a", "verdict")})},
        {"t,a\n0,2\n1,1\n", "a: enumeration a 0:2 1:1 known 1", declaring({declared("a", "enum")})},
        {"t,a\n0,D\n1,P\n", "a: enumeration Gear 0:D 1:P known 1", declaring({closed})},
    });
}

TEST(Recording, EndsWhatIsKnownAtHolesAndEmptyCells) {
    const auto gap = [](auto& layout) { layout.maxGap = second; };
    auto wide = declared("b");
    wide.maxGap = 2 * second;
    expectRead({
        {"t,a,b\n0,1,\n1,1,5\n3,1,6\n",
         "a: double 0:1 known 1 / 3:1 known 3\n"
         "b: double 1:5 3:6 known 3",
         layoutWith([&](auto& layout) {
             gap(layout);
             layout.signals = {wide};
         })},
        {"t,a\n0,0\n1,\n1.5,1\n2,\n", "a: double 0:0 known 0 / 1.5:1 known 1.5", layoutWith(gap)},
        {"t,a\n0,0\n1,1\n2,2\n4,0\n5,3\n",
         "a: double linear 0:0 2:2 known 2 / linear 4:0 5:3 known 5", layoutWith([&](auto& layout) {
             gap(layout);
             layout.interpolation = assessments::INTERPOLATION_METHOD::LINEAR;
         })},
        {"t,a\n0,5\n1,6\n5,9007199254740993\n",
         "a: int64 0:5 1:6 known 1 / 5:9007199254740993 known 5", layoutWith(gap)},
    });
}

TEST(Recording, FindsHolesExactly) {
    std::string steps = "t,a\n";
    for (int i = 0; i < 1000; ++i) {
        steps += shortestNumber(1e6 + i / 10.0) + ',' + std::to_string(i) + '\n';
    }
    const auto gap = layoutWith([](auto& layout) { layout.maxGap = ExactTime::of("0.1", second); });
    EXPECT_EQ(read(steps, gap).signals.at(0).pieces->size(), 1u);
    expectRead({{"t,a\n0.1,0\n0.2,1\n0.3,2\n0.400000001,3\n",
                 "a: double 0.1:0 0.2:1 0.3:2 known 0.3 / 0.400000001:3 known 0.400000001", gap}});
}

TEST(Recording, DrawsNoLineToOrFromWhatIsNotFinite) {
    auto half = declared("a", "half");
    half.interpolation = assessments::INTERPOLATION_METHOD::LINEAR;
    const auto linear = layoutWith(
        [](auto& layout) { layout.interpolation = assessments::INTERPOLATION_METHOD::LINEAR; });
    expectRead({
        {"t,a\n1,1\n2,nan\n3,5\n4,6\n5,7\n",
         "a: double linear 1:1 known 1 / linear 1+:nan known 3- / linear 3:5 5:7 known 5", linear},
        {"t,a\n1,nan\n2,nan\n3,5\n4,nan\n5,nan\n",
         "a: double linear 1:nan known 3- / linear 3:5 known 3 / linear 3+:nan known 5", linear},
        {"t,a\n1,1\n2,inf\n3,-inf\n4,5\n5,nan\n",
         "a: double linear 1:1 known 1 / linear 1+:nan known 2- / linear 2:inf known 2 / "
         "linear 2+:nan known 3- / linear 3:-inf known 3 / linear 3+:nan known 4- / "
         "linear 4:5 known 4 / linear 4+:nan known 5",
         linear},
        {"t,a\n1,1\n2,nan\n3,5\n",
         "a: half linear 1:1 known 1 / linear 1+:nan known 3- / linear 3:5 known 3",
         declaring({half})},
    });
}

TEST(Recording, TakesTheFirstOrTheLastOfEqualTimes) {
    const std::string content = "t,a,b\n0,1,1\n0,2,\n0,3,\n1,4,2\n1,4,3\n";
    auto a = declared("a");
    a.equalTimes = EqualTimes::First;
    expectRead({
        {content, "a: double 0:3 1:4 known 1\nb: double 0:1 1:3 known 1",
         layoutWith([](auto& layout) { layout.time.equalTimes = EqualTimes::Last; })},
        {content, "a: double 0:1 1:4 known 1\nb: double 0:1 1:3 known 1", layoutWith([&](auto& l) {
             l.time.equalTimes = EqualTimes::Last;
             l.signals = {a};
         })},
    });
}

TEST(Recording, ReadsRowsOfNamesAndValues) {
    const auto longForm = [](auto& layout) { layout.longForm.emplace(); };
    // Times step back between signals, as buses deliver them, but in none of them.
    expectRead(
        {{"name,t,value\na,1,5\nb,0.5,N\na,2,\nb,1,D\na,3,6\n",
          "a: double 1:5 3:6 known 3\nb: enumeration b 0.5:N 1:D known 1", layoutWith(longForm)}});
    expectRead({{"{\"name\":\"a\",\"value\":9007199254740993,\"timestamp\":1.5}\n\n"
                 "{\"timestamp\":1,\"name\":\"b\",\"value\":\"7\",\"x\":{\"name\":[1]}}\n"
                 "{\"name\":\"a\",\"value\":null,\"timestamp\":2}\n"
                 "{\"name\":\"c\",\"value\":true,\"timestamp\":0}",
                 "a: int64 1.5:9007199254740993 known 1.5\nb: enumeration b 1:7 known 1\n"
                 "c: bool 0:true known 0"},
                {"{\"k\":\"a\",\"v\":1e3,\"t_ms\":250}\n", "a: double 0.25:1000 known 0.25",
                 layoutWith([](auto& l) {
                     l.longForm = LongForm{"k", "v"};
                 })}},
               "r.jsonl");
}

TEST(Recording, ReadsOnlyWhatIsWanted) {
    ReadingOptions options;
    options.wanted = {"speed", "other"};
    auto speed = declared("speed");
    speed.column = "v [m/s]";
    const auto recording =
        read("t,bad,v [m/s],\n0,1,2,3\n1,?,3,4\n", declaring({speed, declared("gone")}), options);
    EXPECT_EQ(textOf(recording), "speed: double 0:2 1:3 known 1");
    EXPECT_EQ(recording.find("speed")->unit, "m/s");
    EXPECT_EQ(recording.find("bad"), nullptr);
    EXPECT_EQ(recording.availableNames, (std::vector<std::string>{"bad", "speed"}));
    options.wanted = {"bad"};
    auto taken = declared("bad");
    taken.column = "v";
    EXPECT_EQ(textOf(read("t,bad,v\n0,1,2\n1,?,2\n", declaring({taken}), options)),
              "bad: double 0:2 known 1");
    options = {};
    options.maximumRows = 1;
    EXPECT_EQ(textOf(read("t,a\n0,1\n1,?\n", {}, options)), "a: double 0:1 known 0");
}

TEST(Recording, ReportsEachByteOnce) {
    std::size_t bytes = 0;
    ReadingOptions options;
    options.progress = [&](std::size_t count) { bytes += count; };
    const std::string content = "t,a\n0,1\n1,2\n";
    read(content, {}, options, "r.csv", 4);
    EXPECT_EQ(bytes, content.size());
}

}  // namespace
}  // namespace vorm::evaluation::test
