#include "evaluation/recording/recorded.hpp"

// Tables as loggers, spreadsheets and measurement programs write them: each comes out as what was
// recorded, or as an error that says what cannot be told. Never as something else.

namespace vorm::evaluation::test {
namespace {

struct Case {
    std::string content;
    std::string outcome;  // signals, or the first line of the error
    RecordingLayout layout = {};
    std::string told = {};  // remarks and warnings, where they are compared
};

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

struct Outcome {
    std::string text;
    std::string told;
};

Outcome outcomeOf(const Case& row, std::size_t blockSize) {
    try {
        const Recording recording = read(row.content, row.layout, {}, "r.csv", blockSize);
        std::vector<std::string> told = recording.remarks;
        told.insert(told.end(), recording.warnings.begin(), recording.warnings.end());
        return {textOf(recording), joined(told)};
    } catch (const InputError& error) {
        const std::string text = error.what();
        return {text.substr(0, text.find('\n')), {}};
    }
}

void expectOutcomes(const std::vector<Case>& cases) {
    for (const Case& row : cases) {
        SCOPED_TRACE(row.content.substr(0, 200));
        for (const std::size_t blockSize : {std::size_t{3}, ByteWindow::defaultBlockSize}) {
            const Outcome outcome = outcomeOf(row, blockSize);
            EXPECT_EQ(outcome.text, row.outcome);
            if (!row.told.empty()) {
                EXPECT_EQ(outcome.told, row.told);
            }
        }
    }
}

// Lines `0<behind>`, `1<behind>` and so on.
std::string numbered(int count, const std::string& behind) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
        lines += std::to_string(i) + behind + '\n';
    }
    return lines;
}

template <class Change>
RecordingLayout timed(const Change& change) {
    return layoutWith([&](RecordingLayout& layout) { change(layout.time); });
}

RecordingLayout goingBack(TimesBack choice) {
    return timed([&](TimeLayout& time) { time.timesBack = choice; });
}

RecordingLayout inZone(const std::string& zone) {
    return timed([&](TimeLayout& time) { time.zone = zone; });
}

RecordingLayout formatted(const std::string& format) {
    return timed([&](TimeLayout& time) { time.format = format; });
}

RecordingLayout inUnit(std::string_view unit) {
    return timed([&](TimeLayout& time) { time.unit = timeUnitOf(unit); });
}

RecordingLayout missing(const std::vector<std::string>& texts) {
    return layoutWith([&](RecordingLayout& layout) { layout.missing = texts; });
}

RecordingLayout decimal(char mark) {
    return layoutWith([&](RecordingLayout& layout) { layout.decimal = mark; });
}

TEST(UglyRecordings, DatesAndClocks) {
    expectOutcomes({
        {"when,v\n1970-01-01 00:00:01,5\n1970-01-01 00:00:02.5,6\n",
         "v: double 1:5 2.5:6 known 2.5",
         {},
         "r.csv: times are in 'when', as dates"},
        {"Timestamp,v\n1970-01-01T02:00:00+02:00,5\n1970-01-01T00:00:01Z,6\n",
         "v: double 0:5 1:6 known 1"},
        {"t,v\n19700101T000001,5\n19700101T000002Z,6\n", "v: double 1:5 2:6 known 2"},
        {"LogDate;v\n02-Jan-1970 00:00:00,25;5\n", "v: double 86400.25:5 known 86400.25"},
        {"Uhrzeit;Datum;v\n00:00:01;02.01.1970;5\n00:00:02;02.01.1970;6\n",
         "v: double 86401:5 86402:6 known 86402",
         {},
         "r.csv: cells are separated by semicolons; times are in 'Datum' and 'Uhrzeit', as dates, "
         "day "
         "first"},
        {"Date,Time,v\n1970-01-01,00:01,5\n1970-01-01,00:02,6\n", "v: double 60:5 120:6 known 120"},
        {"Zeit;v\n23:59:59,5;1\n24:00:00;2\n144:00:00;3\n",
         "v: double 86399.5:1 86400:2 518400:3 known 518400"},
        {"Elapsed,v\n0.23:59:59,1\n1.00:00:00,2\n", "v: double 86399:1 86400:2 known 86400"},
        {"time,v\n00:01.5,1\n01:00.0,2\n", "v: double 1.5:1 60:2 known 60"},
        {"Time,v\n11:59:59 AM,1\n12:00:00 PM,2\n", "v: double 43199:1 43200:2 known 43200"},
        // Hours and minutes, or minutes and seconds.
        {"time,v\n09:39,1\n09:40,2\n", "r.csv:2:1: '09:39' in the time column 'time' is no number"},
        {"v,time\n1,1970-01-01 00:00:00\n2,yesterday\n",
         "r.csv:3:3: 'yesterday' in the time column 'time' is not written as the times before it, "
         "as dates"},
    });
}

TEST(UglyRecordings, DaysAndMonths) {
    const std::string days = "date,v\n" + [] {
        std::string rows;
        for (int i = 0; i < 300; ++i) {
            rows += "13/01/1970 00:" + std::to_string(10 + i / 50) + ':' +
                    std::to_string(10 + i % 50) + ",1\n";
        }
        return rows;
    }();
    expectOutcomes({
        {"date,v\n01/02/1970 00:00:00,1\n02/02/1970 00:00:00,2\n",
         "r.csv:1: '01/02/1970 00:00:00' in the time column 'date' may begin with the day or with "
         "the month"},
        {"date,v\n01/02/1970,1\n01/13/1970,2\n",
         "v: double 86400:1 1036800:2 known 1036800",
         {},
         "r.csv: times are in 'date', as dates, month first"},
        {"date,v\n12/01/1970,1\n13/01/1970,2\n", "v: double 950400:1 1036800:2 known 1036800"},
        {"date,v\n01/02/1970,1\n02/02/1970,2\n", "v: double 2678400:1 2764800:2 known 2764800",
         formatted("%d/%m/%Y")},
        {days + "01/14/1970 00:00:00,2\n",
         "r.csv:302:1: '01/14/1970 00:00:00' in the time column 'date' is not written as the times "
         "before it, as dates, day first"},
        {"time,v\n13/01/1970,1\n01/14/1970,2\n",
         "r.csv:2:1: '13/01/1970' in the time column 'time' is no number"},
    });
}

TEST(UglyRecordings, CountedTimes) {
    expectOutcomes({
        {"timestamp,v\n1700000000000,1\n1700000000500,2\n",
         "v: double 1700000000:1 1700000000.5:2 known 1700000000.5",
         {},
         "r.csv: times are in 'timestamp', in ms since 1970 by their size"},
        {"time,v\n1700000000000000001,1\n1700000000000000002,2\n",
         "v: double 1700000000.000000001:1 1700000000.000000002:2 known 1700000000.000000002"},
        {"timestamp_us,v\n1700000000,1\n", "v: double 1700:1 known 1700"},
        {"timestamp,v\n1700000000000,1\n", "v: double 1700:1 known 1700", inUnit("ns")},
        {"time,v\nms,km/h\n500,1\n",
         "v: double 0.5:1 known 0.5",
         {},
         "r.csv: line 2 has the units; times are in 'time', in ms"},
        {"Date,v\n25569,1\n25569.5,2\n", "v: double 0:1 43200:2 known 43200", formatted("serial")},
        {"Datum;v\n25569,25;1\n", "v: double 21600:1 known 21600", formatted("serial")},
        // Numbers under the name of a date may count days.
        {"Date,v\n43374.5,1\n43374.75,2\n",
         "r.csv:1: numbers such as '43374.5' in the time column 'Date' are no dates"},
        {"date_s,v\n3,1\n", "v: double 3:1 known 3"},
    });
}

TEST(UglyRecordings, ZonesAndOffsets) {
    expectOutcomes({
        {"time,v\n1970-01-01 01:00:00,5\n", "v: double 0:5 known 0", inZone("Europe/Berlin"),
         "r.csv: times are in 'time', as dates in Europe/Berlin"},
        {"time,v\n1970-01-01T01:00:00Z,5\n", "v: double 3600:5 known 3600",
         inZone("Europe/Berlin")},
        {"time,v\n2021-10-31 02:30:00,5\n",
         "r.csv:2:1: clocks in Europe/Berlin show 2021-10-31 02:30:00 twice",
         inZone("Europe/Berlin")},
    });
}

TEST(UglyRecordings, TimeColumns) {
    expectOutcomes({
        {"x [s],distance [m],v\n0,1,5\n1,2,6\n2,3,4\n",
         "distance: double 0:1 1:2 2:3 known 2\nv: double 0:5 1:6 2:4 known 2"},
        {"distance [m],v\n0,5\n1,6\n2,4\n", "r.csv:1: has no time column among 'distance' and 'v'"},
        {"index,x,v\n1,0.5,7\n2,1,3\n3,1.5,9\n",
         "index: double 0.5:1 1:2 1.5:3 known 1.5\nv: double 0.5:7 1:3 1.5:9 known 1.5"},
        {"x,y,v\n0,5,1\n1,6,0\n2,7,1\n",
         "r.csv:1: any of 'x' and 'y', which increase, may be the time"},
        {"Reaction time,x,v\n5,0,1\n3,1,2\n4,2,1\n",
         "Reaction time: double 0:5 1:3 2:4 known 2\nv: double 0:1 1:2 2:1 known 2"},
        {"when,v\n1970-01-01,1\n1970-01-02,2\n1970-01-03,3\n",
         "v: double 0:1 86400:2 172800:3 known 172800"},
        // A temperature that increases.
        {"Date,t\n1970-01-01 00:00:00,20\n1970-01-01 00:00:01,21\n",
         "r.csv:1: any of 'Date' and 't' may be the time column"},
        {"Test_Time(s),Date_Time,v\n0,1970-01-01,1\n1,1970-01-02,1\n",
         "r.csv:1: any of 'Test_Time(s)' and 'Date_Time' may be the time column"},
        {"Time,v,Time,w\n0,1,0,5\n1,2,0.5,6\n,,1,7\n",
         "v: double 0:1 1:2 known 1\nw: double 0:5 0.5:6 1:7 known 1"},
        // Each time behind its values.
        {"v,Time,w,Time\n1,0,5,10\n2,1,6,11\n",
         "r.csv:1: has a column 'Time' behind all others: it cannot be told whose times each is"},
        {"x,v\n0,5\n1,6\n", "r.csv:1: has no time column among 'x' and 'v'"},
        {"0,5\n1,6\n2,4\n", "r.csv:1: has values where the names of columns should be"},
        {"1970-01-01 00:00:00,5\n1970-01-01 00:00:01,6\n",
         "r.csv:1: has values where the names of columns should be"},
    });
}

TEST(UglyRecordings, ClocksThatGoBackAfterThePartsWereCounted) {
    const auto partOf = [](const std::string& content, std::size_t part) {
        RecordingFile file = textFile("r.csv", content);
        file.part = part;
        file.parts = 2;
        return errorOf([&] { readRecordingFiles("r", {file}, goingBack(TimesBack::Split)); });
    };
    const std::string counted = "t,v\n0,1\n1,2\n0,3\n1,4\n";
    EXPECT_EQ(partOf(counted, 2), "no error");
    EXPECT_EQ(partOf(counted + "2,5\n", 2), "no error") << "the last one has grown";
    EXPECT_EQ(partOf(counted + "0,9\n", 1), "no error");
    EXPECT_EQ(partOf(counted + "0,9\n", 2),
              "r.csv:6:1: is where another recording begins that was not there when they were "
              "counted\n  run again when nothing writes to the file any more");
}

TEST(UglyRecordings, ClocksThatGoBack) {
    const std::string back = "t,v\n0,1\n2,2\n1.0,3\n3,4\n2.5,5\n";
    expectOutcomes({
        {back, "r.csv:4:1: the time goes back by 1 s from '2' in line 3 to '1.0', and 1 more time"},
        {back + "x,6\n",
         "r.csv:4:1: the time goes back by 1 s from '2' in line 3 to '1.0', and at least 1 more "
         "time"},
        {back, "v: double 0:1 2:2 3:4 known 3", goingBack(TimesBack::Drop),
         ""
         "r.csv: 2 rows before a time that was reached are left out"},
        {back, "v: double 0:1 1:3 2:2 2.5:5 3:4 known 3", goingBack(TimesBack::Sort),
         ""
         "r.csv: 2 rows stand behind later ones and are sorted"},
        {"t,v\n0,1\n2,2\n1,3\n", "v: double 0:1 1:3 2:2 known 2", goingBack(TimesBack::Sort),
         ""
         "r.csv: 1 row stands behind later ones and is sorted"},
        {"t,v\n0,1\n2,2\n0,3\n1,4\n", "v: double 0:1 2:2 4:3 5:4 known 5",
         goingBack(TimesBack::Shift),
         ""
         "r.csv: times go back 1 time; the last rows are 4 s later than they say"},
        {"Time,v\n23:59:59,1\n00:00:00,2\n00:00:01,3\n",
         "v: double 86399:1 86400:2 86401:3 known 86401", goingBack(TimesBack::Shift)},
        {"t,v\n1970-01-01 02:59:59,1\n1970-01-01 02:00:00,2\n",
         "v: double 10799:1 10800:2 known 10800", goingBack(TimesBack::Shift)},
        {"Time,v,Time,w\n0,1,5,1\n1,2,4,2\n",
         "v: double 0:1 1:2 known 1\nw: double 4:2 5:1 known 5", goingBack(TimesBack::Sort)},
    });
}

TEST(UglyRecordings, DelimitersAndDecimals) {
    expectOutcomes({
        // A mark before three digits beside larger integers stands between thousands or not.
        {"t\tv\n0\t900\n1\t990\n2\t1.000\n",
         "r.csv:1: '1.000' may have a decimal mark or one between thousands"},
        {"t;v\n0;900\n1;990\n2;1,000\n",
         "r.csv:1: '1,000' may have a decimal mark or one between thousands"},
        {"t;v;w\n0;1.000;2,5\n1;1.020;2,6\n",
         "r.csv:2:3: '1.000' in column 'v' has a decimal point where numbers have a comma"},
        {"t\tv\n0\t1.250\n1\t2.500\n", "v: double 0:1.25 1:2.5 known 1"},
        {"t;v\n0,5;1\n1;1,25\n",
         "v: double 0.5:1 1:1.25 known 1",
         {},
         "r.csv: cells are separated by semicolons; numbers have a decimal comma"},
        {"t\tv\tmode\n0\t-,5\tA,B\n1\t1,5e1\tC\n",
         "v: double 0:-0.5 1:15 known 1\nmode: enumeration mode 0:A,B 1:C known 1"},
        {"time,s;speed,m/s\n0,0;1,5\n0,5;2,5\n", "speed,m/s: double 0:1.5 0.5:2.5 known 0.5",
         timed([](TimeLayout& time) { time.columns = {"time,s"}; })},
        {"t;v\n0;1,5\n1;2.5\n", "r.csv:2:3: '1,5' in column 'v' is no number"},
        {"t;v\n" + numbered(300, ";1") + "300;1,5\n",
         "r.csv:302:5: '1,5' in column 'v' is no number"},
        // Points between thousands.
        {"t;v;w\n" + numbered(300, ";900;0,5") + "300;1.100;0,5\n",
         "r.csv:302:5: '1.100' in column 'v' has a decimal point where numbers have a comma"},
        {"t;v\n" + numbered(300, ";0,5") + "1.000;0,5\n",
         "r.csv:302:1: '1.000' in the time column 't' has a decimal point where numbers have a "
         "comma"},
        {"t;version\n0,5;1.2\n1,5;1.3\n", "version: enumeration version 0.5:1.2 1.5:1.3 known 1.5",
         layoutWith([](RecordingLayout& layout) {
             layout.decimal = ',';
             layout.signals = {declared("version", "enum")};
         })},
        {"t,v\n0,\"1,5\"\n", "v: double 0:1.5 known 0", decimal(',')},
        {"t,v\n0,\"1,500\"\n", "r.csv:2:3: '1,500' in column 'v' is no number"},
        {"t;v\n0;1,5\n", "r.csv:2:3: '1,5' in column 'v' is no number", decimal('.')},
        // Decimal commas between commas.
        {"t,v\n0,1,5\n1,2,5\n", "r.csv:2: has 3 cells, but the header 2"},
        {"t,v\n" + numbered(300, ",1,") + "300,1,5\n", "r.csv:302: has 3 cells, but the header 2"},
        {"t,list\n0,a;2\n1,b;4\n", "list: enumeration list 0:a;2 1:b;4 known 1"},
        {"sep=;\nt;v,w\n0;1\n", "v,w: double 0:1 known 0"},
        {"sep=|\r\nt|v\r\n0|1,5\r\n", "v: double 0:1.5 known 0"},
        {"sep=\nt,v\n0,1\n", "v: double 0:1 known 0"},
        {"t;v,x\n0;1,2\n", "r.csv:1: has no time column among 't;v' and 'x'",
         layoutWith([](RecordingLayout& layout) { layout.delimiter = ','; })},
    });
}

TEST(UglyRecordings, LinesAboveTheTable) {
    std::string settings;
    for (int i = 0; i < 300; ++i) {
        settings += "p" + std::to_string(i) + ",0.5\n";
    }
    std::string ready;
    for (int i = 5; i < 35; ++i) {
        ready += std::to_string(i) + ",1,2\n";
    }
    const std::string block =
        "LabVIEW\nSeparator\tTab\nDecimal_Separator\t,\n***End_of_Header***\n\nChannels\t2\n";
    expectOutcomes({
        {"Logger 5\nSerial: 12-34\n\nCar, red\nt,v\n0,1\n1,2\n",
         "v: double 0:1 1:2 known 1",
         {},
         "r.csv: the header is line 5"},
        {settings + "t,v\n0,1\n1,2\n", "v: double 0:1 1:2 known 1"},
        {"Gain,2\nOffset,0\nChannel,Unit\n1,V\nt,v\n0,1\n1,2\n2,3\n",
         "v: double 0:1 1:2 2:3 known 2"},
        {"Name \"x\" y, z\n\"Car\" red\nt,v\n0,1\n1,2\n", "v: double 0:1 1:2 known 1"},
        {block + "X_Value\ta\tX_Value\tb\tComment\n0,5\t1\t0\t2,5\n1\t2\t1\t3,5\tnote\n",
         "a: double 0.5:1 1:2 known 1\nb: double 0:2.5 1:3.5 known 1\n"
         "Comment: enumeration Comment 1:note known 1"},
        {"X_Columns\tNo\nX0\t0,5\t0,5\nDelta_X\t0,25\t0,25\n***End_of_Header***\n"
         "X_Value\ta\tb\tComment\n\t1,5\t2\n\t3,5\t4\n",
         "a: double 0.5:1.5 0.75:3.5 known 0.75\nb: double 0.5:2 0.75:4 known 0.75\n"
         "Comment: unknown type"},
        {"# t,v\n0,1\n# paused, \"since\n1,2\n2,3\n# went \"on\n", "v: double 0:1 1:2 2:3 known 2"},
        {"# made by hand\nid,t\n\"#1\",0\n#2,1\n\"#3\",2\n",
         "id: enumeration id 0:#1 2:#3 known 2"},
        {"id,t\n#1,0\n#2,1\n", "id: enumeration id 0:#1 1:#2 known 1"},
        {"t;v;\n# note, \"the; 5\n0,001;true;\n0,002;false;\n0,003;true;\n0,004;true;\n",
         "v: bool 0.001:true 0.002:false 0.003:true known 0.004"},
        {"t\tv\tw\n# note, \"the; 5\n0,001\ton\toff\n0,002\ton\toff\n0,003\ton\n",
         "v: enumeration v 0.001:on known 0.002\nw: enumeration w 0.001:off known 0.002"},
        {"Logger\ntime,v\n1970-01-01 00:00:00,a\n1970-01-01 00:00:01,b\n1970-01-01 00:0\n",
         "v: enumeration v 0:a 1:b known 1"},
        {"t,v\n# a; b\n1,\"x,y\"\n2,\n3,\n1\n", "v: enumeration v 1:x,y known 1"},
        {"sep=\t\nt\tv\n# no value\n0\t\n1\t\n2\t\n", "v: unknown type"},
        {"t,v\n[s],[V]\n0,1\n", "v: double 0:1 known 0"},
        {"t,gear\ns,-\n0,N\n", "gear: enumeration gear 0:N known 0"},
        // Texts of sensors that are not ready are no header.
        {"t,a,b\n0,ERR,ERR\n1,1,2\n2,3,4\n",
         "a: enumeration a 0:ERR 1:1 2:3 known 2\n"
         "b: enumeration b 0:ERR 1:2 2:4 known 2"},
        {"t,a,b\n" + numbered(5, ",ERR,ERR") + ready,
         "a: enumeration a 0:ERR 5:1 known 34\nb: enumeration b 0:ERR 5:2 known 34"},
        {"t,a\n?,?\n0,1\n1,2\n", "r.csv:2:1: '?' in the time column 't' is no number",
         missing({"?"})},
        {"t,1,2\n0,5,6\n1,7,8\n", "1: double 0:5 1:7 known 1\n2: double 0:6 1:8 known 1"},
        {"t,\"v\n[V]\"\n0,1\nx,2\n", "r.csv:4:1: 'x' in the time column 't' is no number"},
    });
}

TEST(UglyRecordings, CellsAndRows) {
    const std::string wide = [] {
        std::string names = "t";
        std::string values = "0";
        for (int i = 0; i < 5000; ++i) {
            names += ",c" + std::to_string(i);
            values += "," + std::to_string(i);
        }
        return names + '\n' + values + '\n';
    }();
    const auto last =
        layoutWith([](RecordingLayout& layout) { layout.signals = {declared("c4999")}; });
    ReadingOptions options;
    options.wanted = {"c4999"};
    EXPECT_EQ(textOf(read(wide, last, options)), "c4999: double 0:4999 known 0");
    options.wanted = {"a"};
    EXPECT_EQ(errorOf([&] { read("t,a,b,a\n0,1,2,3\n", {}, options); }),
              "r.csv:1: has 2 columns 'a'\n  name one of them: 'a#1' and 'a#2'");
    options.wanted = {"a#2"};
    EXPECT_EQ(textOf(read("t,a,b,a\n0,1,2,3\n", {}, options)), "a#2: double 0:3 known 0");
    expectOutcomes({
        {"t,a,b\n0,NA,n/a\n1,-,n/a\n2,5,on\n3,null,\n",
         "a: double 2:5 known 2\nb: enumeration b 0:n/a 2:on known 2"},
        {"t,a,b\n0,1,on\n1,--,--\n2,3,off\n",
         "a: double 0:1 2:3 known 2\nb: enumeration b 0:on 2:off known 2", missing({"--"})},
        {"t,a\n0,1\n1,--\n", "r.csv:3:3: '--' in column 'a' is no number"},
        {"t,a\n0,true\n1,-\n2,false\n", "a: bool 0:true 2:false known 2"},
        {"t,a,b\n0,1,2\n1,1,3\n2,1\n",
         "a: double 0:1 known 1\nb: double 0:2 1:3 known 1",
         {},
         ""
         "r.csv:4: the last row has 2 of 3 cells and is left out"},
        {"t,a\n0,1\n1\n2,3\n", "r.csv:3: has 1 cells, but the header 2"},
        {"t,a\n0,1\n1,2,3\n", "r.csv:3: has 3 cells, but the header 2"},
        {"t,a\n0,1,\n1,2,\n", "a: double 0:1 1:2 known 1"},
        {"t,a,Comment\n0,1\n1,2\n2,3,late\n",
         "a: double 0:1 1:2 2:3 known 2\nComment: enumeration Comment 2:late known 2"},
        {"t,a,\n0,1,5\n",
         "a: double 0:1 known 0",
         {},
         "r.csv: 1 column has no name and is not read"},
        {"\xEF\xBB\xBF\r\n\r\nt,a\r\n\r\n0,1\r\n,\r\n   \r\n1,2", "a: double 0:1 1:2 known 1"},
    });
}

TEST(UglyRecordings, NamesOfTimes) {
    for (const std::string name : {"Time/ms", "Zeit in ms", "TimeMs", "Rel. time ms", "t/ms"}) {
        expectOutcomes({{name + ",v\n0,1\n100,2\n", "v: double 0:1 0.1:2 known 0.1"}});
    }
    expectOutcomes({
        {"Datum;Zeit;v\n28.06.26;09:00:00;0\n29.06.26;11:00:00;1\n",
         "r.csv:1: '28.06.26' in the column 'Datum' beside the times in 'Zeit' is no date that can "
         "be told"},
        {"depth,v\n1,1\n2,1\n3,1\n",
         "v: double 1:1 known 3",
         {},
         "r.csv: times are in 'depth', in s since nothing says otherwise\n"
         "r.csv: 'depth' is taken for the time, in s, since no other column increases; time = says "
         "another"},
    });
}

TEST(UglyRecordings, NumbersThatMayBeOtherTimesAreRefused) {
    expectOutcomes({
        {"Zeit (min);T;v\n0;20,1;5\n1;20,4;6\n",
         "r.csv:1: any of 'Zeit (min)' and 'T' may be the time column"},
        {"Seconds,T,v\n0,20.1,5\n1,20.4,6\n",
         "r.csv:1: any of 'Seconds' and 'T' may be the time column"},
        {"Time (min),T,v\n0,20.1,5\n1,20.4,6\n",
         "T: double 0:20.1 60:20.4 known 60\nv: double 0:5 60:6 known 60"},
        {"T [s],t,v\n0,20,1\n1,21,2\n", "r.csv:1: any of 'T [s]' and 't' may be the time column"},
        {"Date,Time,v\n20210630,95958,1\n20210630,95959,2\n",
         "r.csv:1: '95958' in the time column 'Time' may be hours, minutes and seconds, or a "
         "number of seconds"},
        {"T,v\n0,5\n1,6\n", "v: double 0:5 1:6 known 1"},
        {"DATE,TIME,v\n240301,100000,5\n240301,100001,6\n",
         "r.csv:1: '100000' in the time column 'TIME' may be hours, minutes and seconds, or a "
         "number of seconds"},
        {"TIME,v\n095958,5\n095959,6\n",
         "r.csv:1: '095958' in the time column 'TIME' may be hours, minutes and seconds, or a "
         "number of seconds"},
        {"TIME,v\n95958,5\n95959,6\n", "v: double 95958:5 95959:6 known 95959"},
        {"time [s],v\n095958,5\n095959,6\n", "v: double 95958:5 95959:6 known 95959"},
        {"TIME,v\n095958,5\n100000,6\n", "v: double 35998:5 36000:6 known 36000",
         formatted("%H%M%S")},
    });
}

TEST(UglyRecordings, MillisecondsOfATimeStandInAColumnOfTheirOwn) {
    const std::string rows =
        "Date,Time,Millisec,v\n2024-01-01,00:00:01,7,5\n2024-01-01,00:00:01,250,6\n";
    const auto named = timed([](TimeLayout& time) { time.columns = {"Date", "Time", "Millisec"}; });
    const auto alone = timed([](TimeLayout& time) {
        time.columns = {"Date", "Time"};
        time.equalTimes = EqualTimes::Last;
    });
    const std::string read = "v: double 1704067201.007:5 1704067201.25:6 known 1704067201.25";
    expectOutcomes({
        {rows, read, {}, "r.csv: times are in 'Date', 'Time' and 'Millisec', as dates"},
        {rows, read, named},
        {rows,
         "Millisec: double 1704067201:250 known 1704067201\nv: double 1704067201:6 known "
         "1704067201",
         alone},
        {"t,msec,v\n00:00:01,7.5,5\n00:00:02,12,6\n", "v: double 1.0075:5 2.012:6 known 2.012"},
        {"t,ms,v\n00:00:01,,5\n00:00:02,,6\n", "ms: unknown type\nv: double 1:5 2:6 known 2"},
        {"t,msec,v\n00:00:01,7,5\n00:00:02,,6\n",
         "r.csv:3:1: '00:00:02 without milliseconds' in the time column 't' and 'msec' is not "
         "written as the times before it, as hours, minutes and seconds"},
        {"t,msec,v\n00:00:01,7,5\n00:00:02,1000,6\n",
         "r.csv:3:1: '00:00:02 1000' in the time column 't' and 'msec' is not written as the times "
         "before it, as hours, minutes and seconds"},
        {"Time,mSec,v\n9:59:59 AM,900,5\n10:00:00 AM,0,6\n",
         "v: double 35999.9:5 36000:6 known 36000"},
        {"t,ms,v\n00:00:01,7,5\n00:00:01,8,6\n", "v: double 1.007:5 1.008:6 known 1.008"},
        {"t,ms,v\n00:00:01,7,5\n00:00:02,8,6\n",
         "ms: double 1:7 2:8 known 2\nv: double 1:5 2:6 known 2"},
        {"t,ms,v\n1,7,5\n2,8,6\n", "ms: double 1:7 2:8 known 2\nv: double 1:5 2:6 known 2"},
    });
}

TEST(UglyRecordings, BetweenNamesAndRowsOtherLinesMayStand) {
    const auto from = [](std::size_t line) {
        return layoutWith([&](RecordingLayout& layout) { layout.firstRow = line; });
    };
    const auto headed = [](std::size_t line, std::size_t first) {
        return layoutWith([&](RecordingLayout& layout) {
            layout.header = line;
            layout.firstRow = first;
        });
    };
    expectOutcomes({
        {"time,v,mode\nSecond,Volt,-\nfloat,float,text\n0,1,on\n1,2,off\n",
         "v: double 0:1 1:2 known 1\nmode: enumeration mode 0:on 1:off known 1",
         {},
         "r.csv: line 2 has the units; line 3 below the units is no row; times are in 'time', in "
         "s"},
        {"logger,A,B\nTIME,v,w\nms,Deg C,\n,Avg,Smp\n0,1,5\n1,2,6\n",
         "v: double 0:1 0.001:2 known 0.001\nw: double 0:5 0.001:6 known 0.001",
         {},
         "r.csv: the header is line 2; line 3 has the units; line 4 below the units is no row; "
         "times are in 'TIME', in ms"},
        {"time,v\nfloat,int\ns,V\n0,1\n1,2\n",
         "r.csv:2: has no time column among 'float' and 'int'"},
        {"time,v\nfloat,int\ns,V\n0,1\n1,2\n", "v: double 0:1 1:2 known 1", headed(1, 4)},
        {"time,v\n0,1\n1,2\n2,3\n", "v: double 1:2 2:3 known 2", from(3)},
        {"time,mode,door\ns,,\n0 s,drive,OPEN\n1,drive,shut\n",
         "r.csv:3:1: '0 s' in the time column 'time' is no number"},
        {"time,v,w\nOVERLOAD,ERR,ERR\n1,2,3\n2,3,4\n",
         "r.csv:2:1: 'OVERLOAD' in the time column 'time' is no number"},
        {"time,v\n0,1\n1,2\n",
         "r.csv:2: has no row in line 2, the declared first one, below this header", headed(2, 2)},
        {"time,v\n0,1\n1,2\n",
         "r.csv:1: has no row in line 9, the declared first one, below this header", from(9)},
    });
}

TEST(UglyRecordings, TablesWithoutAHeaderGetDeclaredNames) {
    const auto called = [](std::vector<std::string> names, std::size_t header = 0) {
        return layoutWith([&](RecordingLayout& layout) {
            layout.names = std::move(names);
            layout.header = header == 0 ? std::nullopt : std::optional(header);
        });
    };
    expectOutcomes({
        {"0,1\n1,2\n", "r.csv:1: has values where the names of columns should be"},
        {"0,1\n1,2\n", "v: double 0:1 1:2 known 1", called({"time", "v"}), ""},
        {"\nrecorded on Monday\n\n0;1,5;\n\n1;2;\n", "v: double 0:1.5 1:2 known 1",
         called({"time", "v"}),
         "r.csv: cells are separated by semicolons; numbers have a decimal comma"},
        {"# by a logger\n0,1\n1,2\n", "v: double 1:0 2:1 known 2", called({"v", "time"})},
        {"t,a\n0,1\n1,2\n", "v: double 0:1 1:2 known 1", called({"time", "v"}, 1)},
        {"0,1,2,3\n1,1,2,3\n2,1,2\n", "r.csv:1: has 4 cells, but the declared names are 3",
         called({"time", "a", "b"})},
        {"0,1\n1,2\n", "r.csv: has no row of 3 cells, as many as there are names",
         called({"time", "v", "w"})},
        {"10:00,OPEN\n10:00:01,shut\n", "r.csv:1:1: '10:00' in the time column 'time' is no number",
         called({"time", "door"})},
        {"0,1\n1,2,3\n", "r.csv:2: has 3 cells, but the declared names are 2",
         called({"time", "v"})},
    });
}

TEST(UglyRecordings, RowsThatDoNotFitAreRefusedOrLeftOut) {
    const auto skip = layoutWith([](RecordingLayout& layout) { layout.badRows = BadRows::Skip; });
    const std::string again = "time,v\n0,1\n1,2\ntime,v\n2,3\n";
    const std::string total = "Datum;v\n01.01.1970 00:00:01;1\n01.01.1970 00:00:02;2\nTotal;3\n";
    expectOutcomes({
        {again, "r.csv:4:1: 'time' in the time column 'time' is no number"},
        {again, "v: double 0:1 1:2 2:3 known 2", skip,
         "r.csv: a row that does not fit is left out, in line 4"},
        {total,
         "r.csv:4:1: 'Total' in the time column 'Datum' is not written as the times before it, as "
         "dates, day first"},
        {total, "v: double 1:1 2:2 known 2", skip,
         "r.csv: cells are separated by semicolons; times are in 'Datum', as dates, day "
         "first\nr.csv: a row that does not fit is left out, in line 4"},
        {"time,v\n0,1\n1,2,3\n2\n3,4\nend of data\n", "r.csv:3: has 3 cells, but the header 2"},
        {"time,v\n0,1\n1,2,3\n2\n3,4\nend of data\n", "v: double 0:1 3:4 known 3", skip,
         "r.csv: 3 rows that do not fit are left out, the first in line 3"},
        {"time,v\n0,1\n" + numbered(300, ",1,2") + "1,2\n", "v: double 0:1 1:2 known 1", skip,
         "r.csv: 300 rows that do not fit are left out, the first in line 3"},
        {"time,v,w\n0,1,2\ntime,w,v\n1,1,2\n2,3,4\n",
         "r.csv:3:1: 'time' in the time column 'time' is no number"},
        {"time,v,w\n0,1,2\ntime,w,v\n1,1,2\n2,3,4\n",
         "r.csv:3: looks like a header other than the one of the table", skip},
        {"time,v\n0,1\ntime,v,w\n1,1,2\n2,3,4\n",
         "r.csv:1: looks like the header, and so does line 3", skip},
        {"time [s],v\n0,1\ntime [ms],v\n1,1\n",
         "r.csv:3:1: 'time [ms]' in the time column 'time [s]' is no number"},
        {"time,v\ns,V\n0,1\ntime,v,w\n1,1,2\n2,3,4\n",
         "r.csv:1: looks like the header, and so does line 4", skip},
        {"time,v\ns,km/h\n0,1\ntime,v\ns,km/h\n1,1\n", "v: double 0:1 known 1", skip},
        {"time,v\ns,km/h\n0,1\ntime,v\ns,m/s\n1,1\n",
         "r.csv:5: looks like a header other than the one of the table", skip},
        {"time,a\n0,1\n1,2\nTime,b\n0,5\n1,6\n2,7\n",
         "r.csv:4:1: 'Time' in the time column 'time' is no number"},
        {"time,a\n0,1,\n1,2,\n2,3,\ntime,a,b\n0,5,1\n1,6,1\n2,7,1\n3,7,1\n",
         "r.csv:1: looks like the header, and so does line 5"},
        {"time,gear\n0,P\n1,R\n,N\n2,D\n", "gear: enumeration gear 0:P 1:R 2:D known 2", skip,
         "r.csv: a row that does not fit is left out, in line 4"},
        {"Room,Person,Place\nSeconds,Volts,Amps\n0,5,1\n1,6,2\n",
         "Volts: double 0:5 1:6 known 1\nAmps: double 0:1 1:2 known 1"},
        {"Run,Time\nLab 3,noon\nclock,v\n09:00:00,1\n09:00:01,2\n",
         "v: double 32400:1 32401:2 known 32401"},
        {"Name,Time\nDate,2021-06-30\nTime,a,b\n0,1,3\n1,2,3\n",
         "a: double 0:1 1:2 known 1\nb: double 0:3 known 1"},
        {"X_Value,v\n,1\n", "r.csv: has a header but no rows that fit", skip},
    });
}

}  // namespace
}  // namespace vorm::evaluation::test
