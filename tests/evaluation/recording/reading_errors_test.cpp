#include "evaluation/recording/recorded.hpp"

#include <filesystem>

namespace vorm::evaluation::test {
namespace {

struct ErrorCase {
    std::string content;
    std::string message;  // its beginning
    std::string advice;   // a part of it
    RecordingLayout layout = {};
};

void expectErrors(const std::vector<ErrorCase>& cases, const std::string& path = "r.csv") {
    for (const ErrorCase& row : cases) {
        SCOPED_TRACE(row.content);
        for (const std::size_t blockSize : {std::size_t{2}, ByteWindow::defaultBlockSize}) {
            ReadingOptions options;
            options.jobs = blockSize == 2 ? 3 : 1;
            const std::string error =
                errorOf([&] { read(row.content, row.layout, options, path, blockSize); });
            EXPECT_EQ(error.substr(0, row.message.size()), row.message);
            EXPECT_NE(error.find(row.advice), std::string::npos) << error;
        }
    }
}

TEST(RecordingErrors, NameTheCell) {
    expectErrors({
        {"t,speed\n0,1\n1, abc\n", "r.csv:3:3: 'abc' in column 'speed' is no number", "enum"},
        {"t;speed\n0;1.5\n1;1,5\n", "r.csv:3:3: '1,5' in column 'speed' is no number", "a point"},
        {"t,µ,b\n0,é,1\n1,è,x\n", "r.csv:3:5: 'x' in column 'b'", ""},
        {"t,a,b\n0,\"x\ny\",1\n1,\"u\nv\nw\",z\n", "r.csv:6:4: 'z' in column 'b'", ""},
        {"t,a\n0,\n1,0x10\n", "r.csv:3:3: '0x10' in column 'a' is no number", "empty"},
        {"t,a\n0,-.5 V\n", "r.csv:2:3: '-.5 V' in column 'a' is no number", "\"enum\""},
        {"t,a\n0,1e999\n", "r.csv:2:3: '1e999' in column 'a' is no number", ""},
        {"t,a\n0,9007199254740993\n1,0.5\n", "r.csv:3:3: no type holds '0.5' and the other",
         "type = \"double\""},
        {"t,a\n0,0.5\n1,9007199254740993\n", "r.csv:3:3: no type holds '9007199254740993' and",
         "\"int64\""},
        {"t,a\n0,-1\n1,18446744073709551615\n", "r.csv:3:3: no type holds '184467440737095516", ""},
        {"t,a\n0,-9007199254740993\n1,9223372036854775808\n", "r.csv:3:3: no type holds", ""},
        {"t,a\n0,true\n1,2\n", "r.csv:3:3: '2' in column 'a' is no bool", ""},
        {"t,a\n0,128\n", "r.csv:2:3: '128' in column 'a' is no int8", "from -128 to 127",
         declaring({declared("a", "int8")})},
        {"t,a\n0,1.0\n", "r.csv:2:3: '1.0' in column 'a' is no uint64", "18446744073709551615",
         declaring({declared("a", "uint64")})},
        {"t,a\n0,nan\n", "r.csv:2:3: 'nan' in column 'a' is no fixed", "",
         declaring({declared("a", "fixed")})},
        {"t,a\n0,pass\n", "r.csv:2:3: 'pass' in column 'a' is no verdict", "NO_RESULT",
         declaring({declared("a", "verdict")})},
    });
    auto gear = declared("a");
    gear.type = SignalType::of(std::make_shared<Enumeration>(Enumeration{"G", {"Drive", "Park"}}));
    expectErrors({{"t,a\n0,Park\n1,Driv\n",
                   "r.csv:3:3: 'Driv' in column 'a' is no member of the enumeration 'G'",
                   "did you mean 'Drive'?", declaring({gear})}});
}

TEST(RecordingErrors, NameTheRow) {
    expectErrors({
        {"t,a\n0,1\n1\n2,1\n", "r.csv:3: has 1 cells, but the header 2", ""},
        {"t,a\n0,1,2\n", "r.csv:2: has 3 cells, but the header 2", "quotes"},
        {"t,a\n0,\"x\n1,2\n", "r.csv:2:3: the quote that opens here is never closed", ""},
        {"t,a\n0,\"x\"y\n", "r.csv:2:6: there is text after a closing quote", "twice"},
        {"t,a\n1,1\n0.5,2\n", "r.csv:3:1: the time goes back by 500 ms from '1' in line 2 to '0.5'",
         "times_back = \"drop\""},
        {"t,a\n1,1\n1,2\n", "r.csv:3:3: column 'a' has a second sample at 1 s", "equal_times"},
        {"t,a\n,1\n", "r.csv:2:1: the row has no time", ""},
        {"t,a\nnan,1\n", "r.csv:2:1: the time 'nan' is not finite", ""},
        {"t [h],a\n1e308,1\n", "r.csv:2:1: the time '1e308' is beyond the range", ""},
        {"a,t\n1,x\n", "r.csv:2:3: 'x' in the time column 't' is no number", "time_format"},
        {"t,a\n0,1\n1710773350354000,1\n",
         "r.csv:3:1: times such as 1710773350354000 are no seconds", "unit = \"us\""},
        {"t,a\n0,1\n1710773350354000.0,1\n",
         "r.csv:3:1: times such as 1710773350354000.0 are no sec", "unit = \"us\""},
        {"t,a\n0,1\n1.7e18,1\n", "r.csv:3:1: times such as 1.7e18 are no seconds", "unit = \"ns\""},
    });
}

TEST(RecordingErrors, NameTheFileOrTheHeader) {
    expectErrors({
        {"", "r.csv: is empty", ""},
        {"\xEF\xBB\xBF\r\n\n", "r.csv: is empty", ""},
        {std::string("\xFF\xFEt\0", 4), "r.csv: has a header but no rows", ""},
        {"\xEF\xBB\xBF\xFF\xFEt,a\n0,1\n", "r.csv:1: has no time column among", ""},
        {"t,a\n", "r.csv: has a header but no rows", ""},
        {"t,v,v\n0,1,2\n", "r.csv:1: has 2 columns 'v'", "'v#1' and 'v#2'",
         declaring({declared("v")})},
        {"t,,a\n0,1,2\n", "r.csv:1: the column 2 has no name", ""},
        {"x,a\n0,1\n", "r.csv:1: has no time column among 'x' and 'a'", "[recording] time ="},
        {"t,Time\n0,1\n", "r.csv:1: any of 't' and 'Time' may be the time column", ""},
        {"time [d],a\n0,1\n", "r.csv:1: the unit 'd' of the time column 'time [d]' is not known",
         "'fs', 'ps', 'ns', 'us', 'ms', 's', 'min' and 'h'"},
        {"a,Time (MS)\n0,1\n", "r.csv:1: the unit 'MS' of the time column 'Time (MS)'", ""},
        {"t,a\r0,1\r1,2\r", "r.csv: has lines that end with a carriage return alone", "LF"},
        {"stamp,a\n0,1\n", "r.csv:1: has no column 'stam' for the time", "did you mean 'stamp'?",
         layoutWith([](auto& layout) { layout.time.columns = {"stam"}; })},
        {"t,u,a\n0,1,2\n", "r.csv:1: the time in the columns 't' and 'u' has no format", "",
         layoutWith([](auto& layout) {
             layout.time.columns = {"t", "u"};
         })},
        {"t,a\n0,1\n", "r.csv:1: has no column 'name'", "name_column",
         layoutWith([](auto& layout) { layout.longForm.emplace(); })},
        {"t,a\n0,1\n", "the origin 'x' is no time", "",
         layoutWith([](auto& layout) { layout.time.origin = TimeOrigin::At{"x"}; })},
    });
    expectErrors({{"{\"name\":\"a\",\"value\":1,\"t\":0}\n[1]\n",
                   "r.jsonl:2: this line is no JSON object", ""},
                  {R"({"name":"a","value":1,"t":0)", "r.jsonl:1", "one object"},
                  {"{\"name\":\"a\",\"value\":1,\"t\":1}\n{\"name\":\"a\",\"value\":1,\"t\":0}\n",
                   "r.jsonl:2: the time of column 'a' goes back from 1 s to 0 s", ""},
                  {R"({"name":"a","val":1,"t":0})", "r.jsonl:1: has no key 'value'", ""}},
                 "r.jsonl");
}

TEST(RecordingErrors, NameTheDeclaration) {
    auto sped = declared("speed");
    sped.column = "Sped";
    auto linear = declared("mode");
    linear.interpolation = assessments::INTERPOLATION_METHOD::LINEAR;
    expectErrors({
        {"t,Speed\n0,1\n", "limits.toml:7:3: 'r.csv' has no column 'Sped' for the signal 'speed'",
         "did you mean 'Speed'?", declaring({sped})},
        {"t,mode\n0,N\n", "limits.toml:7:3: column 'mode' is of type enumeration", "",
         declaring({linear})},
        {"t,mode\n0,9007199254740993\n", "limits.toml:7:3: column 'mode' is of type int64", "",
         declaring({linear})},
    });
}

TEST(RecordingErrors, NameWhatTheSystemSays) {
    const auto reading = [](const std::string& path) {
        return errorOf([&] { readRecording({{path}}, {}); });
    };
    EXPECT_NE(reading("no/such.csv").find("'no/such.csv': No such file"), std::string::npos);
    std::string pattern = ::testing::TempDir() + "vorm_XXXXXX";
    const std::string folder = ::mkdtemp(pattern.data());
    EXPECT_NE(reading(folder).find("the folder has no recordings\n  they end in .csv, .tsv, .txt, "
                                   ".jsonl or .ndjson, compressed ones in .gz or .zst"),
              std::string::npos)
        << reading(folder);
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace vorm::evaluation::test
