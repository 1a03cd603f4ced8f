#include "layout_reading.hpp"

#include <vorm/evaluation/text/number_text.hpp>
#include <vorm/evaluation/time/time_format.hpp>
#include <vorm/evaluation/time/time_zone.hpp>

#include <array>
#include <set>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

using assessments::INTERPOLATION_METHOD;

// A tab is hard to type where no escapes are, as on a command line.
std::optional<char> delimiterOf(std::string_view text) {
    constexpr auto names = std::to_array<std::pair<std::string_view, char>>(
        {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {"\\t", '\t'}});
    for (const auto& [name, delimiter] : names) {
        if (name == text) {
            return delimiter;
        }
    }
    const bool isOne = text.size() == 1 && text != "\"" && text != "\n";
    return isOne ? std::optional(text.front()) : std::nullopt;
}

void readDelimiter(TomlTable& table, const char* key, RecordingLayout& layout) {
    const std::string& text = table.requiredText(key).get();
    layout.delimiter = delimiterOf(text);
    if (!layout.delimiter) {
        table.fail(key, "'" + text + "' is no delimiter",
                   "it is one character, 'comma', 'semicolon' or 'tab'");
    }
}

void readEncoding(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.encoding =
        static_cast<DeclaredEncoding>(*table.choice(key, {"utf-8", "utf-16", "latin-1"}));
}

void readDecimal(TomlTable& table, const char* key, RecordingLayout& layout) {
    const auto chosen = *table.choice(key, {".", ",", "point", "comma"});
    layout.decimal = chosen % 2 == 0 ? '.' : ',';
}

std::size_t lineNumber(TomlTable& table, const char* key, const std::string& advice) {
    const toml::node& node = *table.node(key);
    const auto text = node.is_integer() ? std::to_string(node.as_integer()->get())
                                        : table.requiredText(key).get();
    const auto number = numberOf<std::size_t>(text);
    if (!number || *number == 0) {
        table.fail(key, "'" + std::string(key) + "' is no line", advice);
    }
    return *number;
}

void readHeader(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.header = lineNumber(table, key, "it is the number of the header's line, 1 or more");
}

void readFirstRow(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.firstRow = lineNumber(table, key, "it is the number of a line below the header");
}

void readNames(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.names = *table.texts(key);
}

void readMissing(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.missing = *table.texts(key);
}

void readBadRows(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.badRows = static_cast<BadRows>(*table.choice(key, {"error", "skip"}));
}

void readZone(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.time.zone = table.requiredText(key).get();
    try {
        TimeZone::called(layout.time.zone);
    } catch (const InputError& error) {
        table.fail(key, error.problem().message, error.problem().advice);
    }
}

void readTimesBack(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.time.timesBack =
        static_cast<TimesBack>(*table.choice(key, {"error", "drop", "sort", "shift", "split"}));
}

void readTimeColumns(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.time.columns = *table.texts(key);
}

TimeUnit timeUnit(TomlTable& table, const char* key) {
    std::vector<std::string> units;
    for (const TimeUnit& unit : timeUnits) {
        units.emplace_back(unit.name);
    }
    return timeUnits.at(*table.choice(key, units));
}

void readUnit(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.time.unit = timeUnit(table, key);
}

void readTimeFormat(TomlTable& table, const char* key, RecordingLayout& layout) {
    const std::string& format = table.requiredText(key).get();
    if (const auto conversion = TimeFormat::unreadableConversion(format)) {
        table.fail(key, "'" + *conversion + "' in a time format tells no time",
                   "an offset from UTC, +0100 or Z, is %z; a zone's name is not read");
    }
    layout.time.format = format;
}

void readResolution(TomlTable& table, const char* key, RecordingLayout& layout) {
    layout.time.resolution = timeUnit(table, key);
    if (layout.time.resolution.length > second) {
        table.fail(key, "the resolution is a second at the most");
    }
}

TimeOrigin::Choice originNamed(const std::string& text, TomlTable& table, const char* key) {
    if (text == "recorded") {
        return TimeOrigin::AsRecorded();
    }
    if (text == "first") {
        return TimeOrigin::FirstSample();
    }
    if (ExactTime::of(text, second)) {
        return TimeOrigin::At{text};
    }
    table.fail(key, "'" + text + "' is no origin of time",
               "it is 'recorded', 'first' or a number; an assessment file can also have "
               R"({ file = "..." } or { time = "..." })");
}

void readOrigin(TomlTable& table, const char* key, RecordingLayout& layout) {
    const toml::node& node = *table.node(key);
    if (const auto* number = node.as_integer()) {
        layout.time.origin = TimeOrigin::At{std::to_string(number->get())};
        return;
    }
    if (const auto* text = node.as_string()) {
        layout.time.origin = originNamed(text->get(), table, key);
        return;
    }
    std::optional<std::string> file;
    std::optional<std::string> time;
    if (node.is_table()) {
        TomlTable choice = *table.table(key, "'origin'");
        file = choice.text("file");
        time = choice.text("time");
        choice.refuseOthers();
    }
    if (file.has_value() == time.has_value()) {
        table.fail(key, "'origin' is no origin of time",
                   R"(it is "recorded", "first", { file = "..." }, { time = "..." } or an )"
                   "integer");
    }
    layout.time.origin = file ? TimeOrigin::Choice(TimeOrigin::FirstOf{*file})
                              : TimeOrigin::Choice(TimeOrigin::At{*time});
}

void readForm(TomlTable& table, const char* key, RecordingLayout& layout) {
    if (*table.choice(key, {"wide", "long"}) == 0) {
        layout.longForm.reset();
    } else if (!layout.longForm) {
        layout.longForm.emplace();
    }
}

template <std::string LongForm::*column>
void readLongColumn(TomlTable& table, const char* key, RecordingLayout& layout) {
    if (!layout.longForm) {
        table.fail(key, "'" + std::string(key) + "' needs the long form", "set 'form' to 'long'");
    }
    layout.longForm.value().*column = table.requiredText(key).get();
}

void readEqualTimes(TomlTable& table, const char* /*key*/, RecordingLayout& layout) {
    layout.time.equalTimes = *equalTimes(table);
}

void readInterpolation(TomlTable& table, const char* /*key*/, RecordingLayout& layout) {
    layout.interpolation = *interpolation(table);
}

void readMaxGap(TomlTable& table, const char* /*key*/, RecordingLayout& layout) {
    layout.maxGap = maxGap(table);
}

}  // namespace

const std::vector<LayoutReading>& layoutReadings() {
    static const std::vector<LayoutReading> readings{
        {{"encoding", "utf-8|utf-16|latin-1", "The encoding of files without a byte order mark"},
         readEncoding},
        {{"header", "LINE", "The line of the header, from 1"}, readHeader},
        {{"first_row", "LINE", "The line of the first row, where more than names stand above it"},
         readFirstRow},
        {{"names", "NAME", "The name of a column, for each of a table without a header", true},
         readNames},
        {{"delimiter", "comma|semicolon|tab|CHARACTER", "What stands between cells"},
         readDelimiter},
        {{"decimal", "point|comma", "The decimal separator of numbers"}, readDecimal},
        {{"missing", "TEXT", "A text that stands for a missing value", true}, readMissing},
        {{"bad_rows", "error|skip",
          "What to do with rows that do not fit the header or have no time"},
         readBadRows},
        {{"time", "NAME", "The time column, or each of those that make up the time", true},
         readTimeColumns},
        {{"unit", "fs|ps|ns|us|ms|s|min|h", "The unit of the times"}, readUnit},
        {{"time_format", "FORMAT", "How times that are no numbers are written, as for strptime"},
         readTimeFormat},
        {{"zone", "NAME", "The zone of dates without an offset: Europe/Berlin; UTC without it"},
         readZone},
        {{"times_back", "error|drop|sort|shift|split", "What to do where times of rows go back"},
         readTimesBack},
        {{"resolution", "fs|ps|ns|us|ms|s", "The unit in which times are counted; ns without it"},
         readResolution},
        {{"origin", "recorded|first|NUMBER", "Which instant is time 0"}, readOrigin},
        {{"equal_times", "error|first|last", "Which of several samples at one time is taken"},
         readEqualTimes},
        {{"form", "wide|long", "Whether there is a column per signal or a row per value"},
         readForm},
        {{"name_column", "NAME", "The column of the signals' names in the long form"},
         readLongColumn<&LongForm::nameColumn>,
         "form"},
        {{"value_column", "NAME", "The column of the values in the long form"},
         readLongColumn<&LongForm::valueColumn>,
         "form"},
        {{"interpolation", "held|linear", "What numbers are between samples"}, readInterpolation},
        {{"max_gap", "TIME", "The longest distance of samples that is no hole: 0.5, 500ms"},
         readMaxGap},
    };
    return readings;
}

void readKey(const LayoutReading& reading, TomlTable& table, RecordingLayout& layout) {
    const char* const key = reading.key.name.c_str();
    if (table.node(key) != nullptr) {
        reading.read(table, key, layout);
    }
}

void readLayout(TomlTable& table, RecordingLayout& layout, const FaultCollection& faults) {
    std::set<std::string> unread;
    for (const LayoutReading& reading : layoutReadings()) {
        if (unread.contains(reading.needs)) {
            table.node(reading.key.name.c_str());
        } else if (!faults.attempt([&] { readKey(reading, table, layout); })) {
            unread.insert(reading.key.name);
        }
    }
    table.refuseOthers(faults);
}

std::optional<EqualTimes> equalTimes(TomlTable& table) {
    const auto chosen = table.choice("equal_times", {"error", "first", "last"});
    return chosen ? std::optional(static_cast<EqualTimes>(*chosen)) : std::nullopt;
}

std::optional<INTERPOLATION_METHOD> interpolation(TomlTable& table) {
    const auto chosen = table.choice("interpolation", {"held", "linear"});
    if (!chosen) {
        return std::nullopt;
    }
    return *chosen == 0 ? INTERPOLATION_METHOD::ZOH : INTERPOLATION_METHOD::LINEAR;
}

std::optional<ExactTime> maxGap(TomlTable& table) {
    const auto gap = table.duration("max_gap");
    if (gap && *gap <= ExactTime()) {
        table.fail("max_gap", "'max_gap' has to be above 0");
    }
    return gap;
}

}  // namespace vorm::evaluation::detail
