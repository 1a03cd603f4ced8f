#include "column_header.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace vorm::evaluation {
namespace {

ColumnHeader columnHeader(const std::string& text) {
    for (const auto& [open, close] : {std::pair('[', ']'), std::pair('(', ')')}) {
        // A name such as `control[0]` has no unit: units begin with no digit and follow a blank
        // or end a name that has no other bracket.
        const std::size_t begin = text.rfind(open);
        if (begin == std::string::npos || begin == 0 || text.back() != close) {
            continue;
        }
        const auto unit =
            trimmed(std::string_view(text).substr(begin + 1, text.size() - begin - 2));
        const bool isIndex = unit.empty() || (unit[0] >= '0' && unit[0] <= '9');
        const bool followsBlank = text[begin - 1] == ' ' || text[begin - 1] == '\t';
        const std::string_view name = trimmed(std::string_view(text).substr(0, begin));
        if (!name.empty() && !unit.empty() && (followsBlank || !isIndex)) {
            return {text, std::string(name), std::string(unit)};
        }
    }
    return {text, text, {}};
}

// Units by their letters, `ms`, which an upper case would change, or by their names in any case.
std::optional<TimeUnit> unitOfText(std::string_view text) {
    static const std::map<std::string, std::string_view> names{
        {"µs", "us"},           {"μs", "us"},
        {"usec", "us"},         {"microsecond", "us"},
        {"microseconds", "us"}, {"mikrosekunden", "us"},
        {"nsec", "ns"},         {"nanosecond", "ns"},
        {"nanoseconds", "ns"},  {"nanosekunden", "ns"},
        {"msec", "ms"},         {"millisecond", "ms"},
        {"milliseconds", "ms"}, {"millisekunden", "ms"},
        {"sec", "s"},           {"secs", "s"},
        {"second", "s"},        {"seconds", "s"},
        {"sekunde", "s"},       {"sekunden", "s"},
        {"minute", "min"},      {"minutes", "min"},
        {"minuten", "min"},     {"hour", "h"},
        {"hours", "h"},         {"stunden", "h"}};
    const auto found = names.find(lowerCase(text));
    return timeUnitOf(found == names.end() ? text : found->second);
}

constexpr std::string_view separators = " _-.:#/";

// Where the last word of a name begins: `ms` of `time_ms`, `Time/ms` and `TimeMs`.
std::size_t lastWordBegin(std::string_view name) {
    std::size_t begin = name.size();
    while (begin > 0 && separators.find(name[begin - 1]) == std::string_view::npos) {
        --begin;
        if (isUpperCase(name[begin]) && begin > 0 && !isUpperCase(name[begin - 1])) {
            break;
        }
    }
    return begin;
}

// The unit that the last word of several is.
std::optional<TimeUnit> lastUnit(std::string_view name) {
    const std::size_t begin = lastWordBegin(name);
    const std::string_view word = name.substr(begin);
    return begin == 0 || word.empty() ? std::nullopt : unitOfText(lowerCase(word));
}

// The position of what separates a unit from the name before it, or the end.
std::size_t suffixBegin(std::string_view name) {
    if (!lastUnit(name)) {
        return name.size();
    }
    std::size_t end = lastWordBegin(name);
    const auto trim = [&] {
        while (end > 0 && separators.find(name[end - 1]) != std::string_view::npos) {
            --end;
        }
    };
    trim();
    if (name.substr(0, end).ends_with(" in")) {
        end -= 3;
        trim();
    }
    return end;
}

// In lower case: `step`, `time` of `StepTime`, `step_time` and `STEP TIME`.
std::vector<std::string> wordsOf(std::string_view name) {
    std::vector<std::string> words;
    bool isAmidWord = false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (separators.find(c) != std::string_view::npos) {
            isAmidWord = false;
            continue;
        }
        const bool beginsWord = isUpperCase(c) && i > 0 && !isUpperCase(name[i - 1]);
        if (!isAmidWord || beginsWord) {
            words.emplace_back();
        }
        isAmidWord = true;
        words.back() += c;
    }
    std::transform(words.begin(), words.end(), words.begin(), lowerCase);
    return words;
}

std::string_view nameWithoutUnit(const ColumnHeader& header) {
    const std::string_view name = header.isOneOfSeveral ? header.text : header.name;
    return name.substr(0, suffixBegin(name));
}

template <class Names>
bool holds(const Names& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

template <class Names>
bool holdsAny(const Names& names, const std::vector<std::string>& parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [&](const std::string& part) { return holds(names, part); });
}

}  // namespace

std::vector<ColumnHeader> columnHeaders(const std::vector<std::string>& texts,
                                        const std::vector<std::string>& units) {
    std::vector<ColumnHeader> headers;
    std::map<std::string, int> names;
    std::map<std::string, int> uses;
    for (const std::string& text : texts) {
        headers.push_back(columnHeader(text));
        ++names[headers.back().name];
        ++uses[text];
    }
    std::map<std::string, int> numbers;
    for (std::size_t i = 0; i < headers.size(); ++i) {
        ColumnHeader& header = headers[i];
        if (i < units.size() && header.unit.empty()) {
            header.unit = units[i];
        }
        if (names[header.name] > 1) {
            header.name = header.text;
        }
        if (!header.text.empty() && uses[header.text] > 1) {
            header.isOneOfSeveral = true;
            header.name += '#' + std::to_string(++numbers[header.text]);
        }
    }
    return headers;
}

std::optional<TimeUnit> timeUnitIn(const ColumnHeader& header) {
    if (!header.unit.empty()) {
        return unitOfText(header.unit);
    }
    return lastUnit(header.name);
}

TimeName timeNameOf(const ColumnHeader& header) {
    constexpr auto times = std::to_array<std::string_view>(
        {"t", "time", "timestamp", "elapsedtime", "elapsed", "times"});
    constexpr auto usual = std::to_array<std::string_view>(
        {"date",       "datetime",   "dateandtime",     "datum",     "zeit",      "zeitstempel",
         "zeitpunkt",  "uhrzeit",    "testtime",        "totaltime", "runtime",   "logtime",
         "recordtime", "sampletime", "measurementtime", "utctime",   "localtime", "systemtime",
         "timeofday",  "utc",        "epoch",           "xvalue",    "seconds",   "sekunden"});
    constexpr auto words =
        std::to_array<std::string_view>({"time", "timestamp", "date", "datetime", "zeit"});
    const auto parts = wordsOf(nameWithoutUnit(header));
    std::string whole;
    for (const std::string& part : parts) {
        whole += part;
    }
    if (holds(times, whole)) {
        return TimeName::Time;
    }
    if (holds(usual, whole)) {
        return TimeName::Usual;
    }
    return holdsAny(words, parts) ? TimeName::Some : TimeName::None;
}

bool isCalledLikeDate(const ColumnHeader& header) {
    constexpr auto words = std::to_array<std::string_view>({"date", "datetime", "datum"});
    return holdsAny(words, wordsOf(nameWithoutUnit(header)));
}

bool isCalledLikeMilliseconds(const ColumnHeader& header) {
    constexpr auto names = std::to_array<std::string_view>(
        {"ms", "msec", "msecs", "millis", "millisec", "millisecs", "millisecond", "milliseconds",
         "millisekunde", "millisekunden"});
    std::string whole;
    for (const std::string& part : wordsOf(header.text)) {
        whole += part;
    }
    return holds(names, whole);
}

bool isCalledLikeCount(const ColumnHeader& header) {
    constexpr auto counts = std::to_array<std::string_view>(
        {"index", "idx", "row", "no", "nr", "number", "id", "count", "counter", "rec", "record",
         "sample", "frame", "line", "step", "cycle", "seq"});
    const auto parts = wordsOf(header.name);
    return parts.empty() || (parts.size() == 1 && holds(counts, parts.front()));
}

}  // namespace vorm::evaluation
