#include "evaluation/recording/recorded.hpp"

#include <rapidcheck/gtest.h>

#include <chrono>
#include <cstdio>
#include <map>

// Random tables, written as programs and people write them, are read back as they were; whatever
// else may come, nothing is thrown but errors of the input.

namespace vorm::evaluation::test {
namespace {

int anyIn(int begin, int end) {
    return *rc::gen::inRange(begin, end);
}

bool isChosen() {
    return anyIn(0, 2) == 0;
}

using Values = std::vector<std::string>;  // as they are written with a decimal point

// A value as the text of a signal shows it.
std::string shownValue(const std::string& written) {
    static const std::map<std::string, std::string> others{
        {"100000", "1e+05"}, {"+3", "3"}, {"007", "7"},      {"1.50", "1.5"},
        {"-.25", "-0.25"},   {"2.", "2"}, {"1.5E3", "1500"}, {"NaN", "nan"}};
    const auto found = others.find(written);
    return found == others.end() ? written : found->second;
}

struct Column {
    std::string name;
    std::string unit;
    std::string type;  // as signals tell it
    Values values;     // empty where there is none
};

// Numbers that begin a line of units or of names do not occur: those lines could not be told apart.
Column anyColumn(std::size_t index, std::size_t rows) {
    static const std::vector<Column> kinds{
        {"speed", "km/h", "double", {"", "0", "-1", "+3", "007", "100000"}},
        {"torque",
         "Nm",
         "double",
         {"", "0.5", "1.50", "-.25", "2.", "1.5E3", "1e+300", "NaN", "-inf"}},
        {"mode",
         "-",
         "enumeration ",
         {"", "off", "A B", "say \"no\"", "x,y", "1;2 apples", "tab\tin", "two\nlines", "é;."}},
        {"\"lamp\"; left", "", "bool", {"", "true", "false"}}};
    Column column = anyOf(kinds);
    column.name += static_cast<char>('a' + index);
    column.type += column.type == "enumeration " ? column.name : "";
    const Values values = std::exchange(column.values, {});
    while (column.values.size() < rows) {
        column.values.push_back(anyOf(values));
    }
    // A text that begins like a number is no first text.
    for (std::string& value : column.values) {
        if (!value.empty()) {
            value = value == "1;2 apples" ? "off" : value;
            break;
        }
    }
    return column;
}

// Milliseconds as decimals of seconds, without zeros at the end.
std::string secondsText(std::int64_t ms) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%lld.%03lld", static_cast<long long>(ms / 1000),
                  static_cast<long long>(ms % 1000));
    std::string seconds(text.data());
    while (seconds.back() == '0') {
        seconds.pop_back();
    }
    if (seconds.back() == '.') {
        seconds.pop_back();
    }
    return seconds;
}

enum class Notation {
    Seconds,
    Milliseconds,
    Epoch,
    Iso,
    Compact,
    Points,
    TwoColumns,
    Elapsed,
    Months
};

// Of milliseconds since 1970: the cells of the time.
std::vector<std::string> timeCells(std::int64_t ms, Notation notation) {
    using namespace std::chrono;
    const auto time = sys_time<milliseconds>(milliseconds(ms));
    const year_month_day date(floor<days>(time));
    const hh_mm_ss clock(time - floor<days>(time));
    const auto text = [&](const char* format, auto... values) {
        std::array<char, 64> written{};
        std::snprintf(written.data(), written.size(), format, values...);
        return std::string(written.data());
    };
    const int year = static_cast<int>(date.year());
    const auto month = static_cast<unsigned>(date.month());
    const auto day = static_cast<unsigned>(date.day());
    const std::string hours =
        text("%02d:%02d:%02d.%03d", static_cast<int>(clock.hours().count()),
             static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()),
             static_cast<int>(clock.subseconds().count()));
    const auto elapsed = [&] {
        return text("%lld:", static_cast<long long>(ms / 3'600'000)) + hours.substr(3);
    };
    constexpr auto months = std::to_array<const char*>({"Jan", "Feb", "Mar"});
    switch (notation) {
        case Notation::Seconds:
            return {secondsText(ms)};
        case Notation::Milliseconds:
        case Notation::Epoch:
            return {std::to_string(ms)};
        case Notation::Iso:
            return {text("%04d-%02u-%02uT", year, month, day) + hours + 'Z'};
        case Notation::Compact: {
            std::string compact = hours;
            std::erase(compact, ':');
            return {text("%04d%02u%02uT", year, month, day) + compact};
        }
        case Notation::Points:
            return {text("%02u.%02u.%04d ", day, month, year) + hours};
        case Notation::TwoColumns:
            return {text("%04d/%02u/%02u", year, month, day), hours};
        case Notation::Elapsed:
            return {elapsed()};
        case Notation::Months:
            return {text("%u-%s-%04d ", day, months.at(month - 1), year) + hours};
    }
    return {};
}

std::vector<std::string> timeNames(Notation notation) {
    switch (notation) {
        case Notation::Milliseconds:
            return {anyOf<std::string>({"t_ms", "Time [ms]"})};
        case Notation::TwoColumns:
            return {"Date", "Time"};
        case Notation::Seconds:
            return {anyOf<std::string>({"t", "Test_Time", "time_s", "Zeit"})};
        // Of columns of numbers that increase any may be the time.
        case Notation::Epoch:
            return {anyOf<std::string>({"timestamp", "LogTime"})};
        default:
            return {anyOf<std::string>({"timestamp", "Datetime", "LogTime", "when"})};
    }
}

// Of the first time, in milliseconds since 1970.
std::int64_t anyStart(Notation notation) {
    switch (notation) {
        case Notation::Epoch:
            return 1'600'000'000'000 + anyIn(0, 1'000'000);
        // The comma of 568,001 may be one between thousands.
        case Notation::Seconds:
            return 1'000'000LL + anyIn(0, 86'400'000);
        default:
            return anyIn(0, 80) * 86'400'000LL + anyIn(0, 86'400'000);
    }
}

struct Table {
    Notation notation;
    std::vector<std::int64_t> times;
    std::vector<Column> columns;

    static Table any() {
        Table table;
        table.notation = static_cast<Notation>(anyIn(0, 9));
        const auto rows = static_cast<std::size_t>(anyIn(3, 31));
        std::int64_t time = anyStart(table.notation);
        while (table.times.size() < rows) {
            table.times.push_back(time);
            time += anyIn(1, 100'000);
        }
        const auto columns = static_cast<std::size_t>(anyIn(1, 7));
        while (table.columns.size() < columns) {
            table.columns.push_back(anyColumn(table.columns.size(), rows));
        }
        return table;
    }

    // What held traces keep: the values that differ from the one before them.
    std::string text() const {
        std::string all;
        for (const Column& column : columns) {
            std::string signal;
            std::string last;
            std::string known;
            for (std::size_t row = 0; row < times.size(); ++row) {
                const std::string value = shownValue(column.values[row]);
                if (!value.empty()) {
                    known = secondsText(times[row]);
                    if (value != last) {
                        signal.append(" ").append(known).append(":").append(value);
                    }
                    last = value;
                }
            }
            all.append(all.empty() ? "" : "\n").append(column.name).append(": ");
            if (last.empty()) {
                all += "unknown type";
            } else {
                all.append(column.type).append(signal).append(" known ").append(known);
            }
        }
        return all;
    }
};

// How a table is written.
struct Spelling {
    char delimiter = anyOf<char>({',', ';', '\t', '|'});
    bool isDeclaredAbove = delimiter == '|' || anyIn(0, 4) == 0;
    bool hasCommas = delimiter != ',' && isChosen();
    bool quotesAll = anyIn(0, 4) == 0;
    bool endsWithDelimiter = anyIn(0, 4) == 0;
    bool headerEndsSo = isChosen();
    bool hasUnits = isChosen();
    bool hasComments = anyIn(0, 3) == 0;
    bool hasBlankLines = anyIn(0, 4) == 0;
    bool isLastLineWhole = isChosen();
    bool timesStandLast = anyIn(0, 4) == 0;
    std::string blanks = anyOf<std::string>({"", "", " "});
    std::string begin = anyOf<std::string>({"", "\xEF\xBB\xBF"});
    std::string lineEnd = anyOf<std::string>({"\n", "\r\n"});
    std::string missing = anyOf<std::string>({"", "NA", "n/a", "-"});

    std::string cell(const std::string& text) const {
        const bool needsQuotes = text.find_first_of(",;\t|\"\n") != std::string::npos;
        if (!needsQuotes && !quotesAll && anyIn(0, 8) != 0) {
            return blanks + text + blanks;
        }
        std::string quoted = "\"";
        for (const char c : text) {
            quoted += c == '"' ? "\"\"" : std::string(1, c);
        }
        return blanks + quoted + '"' + blanks;
    }

    std::string number(std::string text) const {
        text += hasCommas && text.ends_with('.') ? "0" : "";
        std::replace(text.begin(), text.end(), '.', hasCommas ? ',' : '.');
        return hasCommas && delimiter != ',' && !quotesAll ? text : cell(text);
    }

    std::string line(const std::vector<std::string>& cells, bool endsSo) const {
        std::string text;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            text += (i == 0 ? "" : std::string(1, delimiter)) + cells[i];
        }
        return text + (endsSo ? std::string(1, delimiter) : "") + lineEnd;
    }

    // Lines that no cells of the table stand under.
    std::string preamble() const {
        static const std::vector<std::string> lines{
            "Logger 5",        "Serial: 12-34",    "Gain,2",     "Car; red",   "***",
            "Start: 12:00:00", "1970-01-01 12:00", "a,b;c\td|e", "\"quoted\"", "x = 0,5",
            "\"Disk\" of Eve", "[settings]",       "-----",      "",           "100 %"};
        std::string text;
        for (int i = anyIn(0, 8); i > 0; --i) {
            text += anyOf(lines) + lineEnd;
        }
        return text;
    }

    std::string table(const Table& table) const {
        std::string text = begin;
        text += isDeclaredAbove ? "sep=" + std::string(1, delimiter) + lineEnd : preamble();
        std::vector<std::string> times = timeNames(table.notation);
        for (std::string& name : times) {
            name = cell(name);
        }
        std::vector<std::string> names;
        std::vector<std::string> units;
        for (const Column& column : table.columns) {
            names.push_back(cell(column.name));
            units.push_back(cell(column.unit));
        }
        units = row(std::vector<std::string>(times.size()), units);
        names = row(times, names);
        text += line(names, endsWithDelimiter && headerEndsSo);
        const bool isAnyKnown =
            std::any_of(table.columns.begin(), table.columns.end(),
                        [](const Column& column) { return column.unit.size() > 1; });
        text += hasUnits && isAnyKnown ? line(units, endsWithDelimiter && headerEndsSo) : "";
        for (std::size_t row = 0; row < table.times.size(); ++row) {
            text += hasComments && anyIn(0, 4) == 0 ? "# note, \"the; 5\t" + lineEnd : "";
            text += hasBlankLines && anyIn(0, 4) == 0 ? lineEnd : "";
            text += line(cellsOf(table, row), endsWithDelimiter);
        }
        const std::size_t end = isLastLineWhole ? 0 : lineEnd.size();
        return text.substr(0, text.size() - end);
    }

    std::vector<std::string> cellsOf(const Table& table, std::size_t index) const {
        std::vector<std::string> times = timeCells(table.times[index], table.notation);
        for (std::string& time : times) {
            time = table.notation == Notation::Points ? cell(time) : number(time);
        }
        std::vector<std::string> cells;
        for (const Column& column : table.columns) {
            const std::string& value = column.values[index];
            const bool isText = column.type.starts_with("enum");
            cells.push_back(isText ? cell(value) : value.empty() ? cell(missing) : number(value));
        }
        return row(times, cells);
    }

    std::vector<std::string> row(std::vector<std::string> times,
                                 std::vector<std::string> others) const {
        std::vector<std::string>& first = timesStandLast ? others : times;
        const std::vector<std::string>& second = timesStandLast ? times : others;
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }
};

RC_GTEST_PROP(Dialects, ReadBackWhatWasWritten, ()) {
    const Table table = Table::any();
    const Spelling spelling;
    const std::string content = spelling.table(table);
    RC_LOG() << content;
    const auto blockSize = static_cast<std::size_t>(anyIn(1, 200));
    RC_ASSERT(errorOf([&] { read(content, {}, {}, "r.csv", blockSize); }) == "no error");
    RC_ASSERT(textOf(read(content, {}, {}, "r.csv", blockSize)) == table.text());
}

// A recording that stopped amid a row: the rows before it count, and that one never does.
RC_GTEST_PROP(Dialects, LeaveOutARowThatIsCutOff, ()) {
    const Table table = Table::any();
    Spelling spelling;
    spelling.isLastLineWhole = true;
    // What is left of a row is no blank line.
    spelling.timesStandLast = false;
    spelling.blanks = "";
    auto cells = spelling.cellsOf(table, table.times.size() - 1);
    cells.resize(static_cast<std::size_t>(anyIn(1, static_cast<int>(cells.size()))));
    std::string& last = cells.back();
    if (last.size() > 1 && last.front() != '"') {
        last.resize(static_cast<std::size_t>(anyIn(1, static_cast<int>(last.size()))));
    }
    const std::string content = spelling.table(table) + spelling.line(cells, false);
    RC_LOG() << content;
    RC_ASSERT(errorOf([&] { read(content); }) == "no error");
    const Recording recording = read(content);
    RC_ASSERT(textOf(recording) == table.text());
    RC_ASSERT(recording.warnings.size() == 1U);
}

// Damage in any place gives an error or a table, and the same one whatever the blocks are, and how
// many threads share them: as if it was read row by row.
RC_GTEST_PROP(Dialects, RefuseOrReadWhatIsDamaged, ()) {
    std::string content = Spelling().table(Table::any());
    for (int i = anyIn(1, 6); i > 0; --i) {
        const auto at = static_cast<std::size_t>(anyIn(0, static_cast<int>(content.size())));
        const auto length = static_cast<std::size_t>(anyIn(0, 40));
        content.replace(at, length,
                        anyOf<std::string>({"", "\"", ",", ";", "\n", "#", "\t", "1", "x", "\r"}));
    }
    RC_LOG() << content;
    const auto outcome = [&](std::size_t blockSize, unsigned jobs) {
        ReadingOptions options;
        options.jobs = jobs;
        try {
            return textOf(read(content, {}, options, "r.csv", blockSize));
        } catch (const InputError& error) {
            return std::string(error.what());
        }
    };
    const std::string expected = outcome(1, 1);
    RC_ASSERT(outcome(ByteWindow::defaultBlockSize, 1) == expected);
    RC_ASSERT(outcome(static_cast<std::size_t>(anyIn(1, 200)), anyOf<unsigned>({1, 2, 3, 8})) ==
              expected);
}

}  // namespace
}  // namespace vorm::evaluation::test
