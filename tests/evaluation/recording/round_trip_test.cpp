#include "evaluation/recording/recorded.hpp"

#include <rapidcheck/gtest.h>

#include <algorithm>

// Random tables, written in random spellings of CSV, are read back as they were.

namespace vorm::evaluation::test {
namespace {

using Column = std::vector<std::string>;  // of cells

template <class T>
T anyOf(const std::vector<T>& values) {
    return *rc::gen::elementOf(values);
}

struct Spelling {
    char delimiter = anyOf<char>({',', ';', '\t'});
    std::string lineEnd = anyOf<std::string>({"\n", "\r\n"});
    std::string begin = anyOf<std::string>({"", "\xEF\xBB\xBF"});
    bool endsWithLine = *rc::gen::arbitrary<bool>();

    std::string cell(const std::string& text) const {
        const bool needsQuotes = text.find_first_of(",;\t\"\n\r") != std::string::npos;
        const std::string blanks = anyOf<std::string>({"", " "});
        if (!needsQuotes && *rc::gen::inRange(0, 4) != 0) {
            return blanks + text + blanks;
        }
        std::string quoted = "\"";
        for (const char c : text) {
            quoted += c == '"' ? "\"\"" : std::string(1, c);
        }
        return blanks + quoted + '"' + blanks;
    }

    std::string table(const std::vector<Column>& columns) const {
        std::string text = begin;
        for (std::size_t row = 0; row < columns[0].size(); ++row) {
            text += row == 0 ? "" : lineEnd;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                text += (i == 0 ? "" : std::string(1, delimiter)) + cell(columns[i][row]);
            }
        }
        return text + (endsWithLine ? lineEnd : "");
    }
};

// What a held trace keeps of a column: the cells that differ from the one before them.
std::string expected(const Column& times, const Column& column, const std::string& type) {
    std::string text = column[0] + ": " + type;
    std::string last;
    std::string known;
    for (std::size_t row = 1; row < column.size(); ++row) {
        if (!column[row].empty()) {
            text += column[row] == last ? "" : ' ' + times[row] + ':' + column[row];
            last = column[row];
            known = times[row];
        }
    }
    return last.empty() ? column[0] + ": unknown type" : text + " known " + known;
}

Column anyColumn(const std::string& name, const std::vector<std::string>& cells, std::size_t rows) {
    Column column{name};
    while (column.size() <= rows) {
        column.push_back(anyOf(cells));
    }
    return column;
}

RC_GTEST_PROP(RecordingRoundTrip, ReadsBackWhatWasWritten, ()) {
    const auto rows = *rc::gen::inRange<std::size_t>(1, 12);
    Column times{"t"};
    for (std::size_t row = 0, time = 0; row < rows; ++row) {
        time += *rc::gen::inRange<std::size_t>(1, 5);
        times.push_back(std::to_string(time));
    }
    const Column numbers = anyColumn("a;b", {"", "1", "-2.5", "nan", "1e+300", "0.1"}, rows);
    const Column texts =
        anyColumn("\"c\" d", {"", "x,y", "say \"no\"", "two\nlines", "é;\t.", "P"}, rows);
    const Column truths = anyColumn("e", {"", "true", "false"}, rows);

    const std::string content = Spelling().table({numbers, times, texts, truths});
    const auto blockSize = *rc::gen::inRange<std::size_t>(1, 64);
    RC_ASSERT(textOf(read(content, {}, {}, "r.csv", blockSize)) ==
              expected(times, numbers, "double") + '\n' +
                  expected(times, texts, "enumeration \"c\" d") + '\n' +
                  expected(times, truths, "bool"));
}

}  // namespace
}  // namespace vorm::evaluation::test
