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

std::optional<TimeUnit> unitOfText(std::string_view text) {
    static const std::map<std::string_view, std::string_view> spellings{
        {"µs", "us"},       {"μs", "us"},          {"usec", "us"},  {"microseconds", "us"},
        {"nsec", "ns"},     {"nanoseconds", "ns"}, {"msec", "ms"},  {"milliseconds", "ms"},
        {"sec", "s"},       {"secs", "s"},         {"second", "s"}, {"seconds", "s"},
        {"minutes", "min"}, {"hours", "h"}};
    const auto spelling = spellings.find(text);
    return timeUnitOf(spelling == spellings.end() ? text : spelling->second);
}

// The position of the underscore before a unit, or the end.
std::size_t suffixBegin(std::string_view name) {
    const std::size_t begin = name.rfind('_');
    if (begin != std::string_view::npos && unitOfText(name.substr(begin + 1))) {
        return begin;
    }
    return name.size();
}

}  // namespace

std::vector<ColumnHeader> columnHeaders(const std::vector<std::string>& texts) {
    std::vector<ColumnHeader> headers;
    std::map<std::string, int> uses;
    for (const std::string& text : texts) {
        headers.push_back(columnHeader(text));
        ++uses[headers.back().name];
    }
    for (ColumnHeader& header : headers) {
        if (uses[header.name] > 1) {
            header.name = header.text;
        }
    }
    return headers;
}

std::optional<TimeUnit> timeUnitIn(const ColumnHeader& header) {
    if (!header.unit.empty()) {
        return unitOfText(header.unit);
    }
    const std::string_view name = header.name;
    const std::size_t suffix = suffixBegin(name);
    return suffix < name.size() ? unitOfText(name.substr(suffix + 1)) : std::nullopt;
}

bool isCalledLikeTime(const ColumnHeader& header) {
    static constexpr std::array<std::string_view, 6> names{"t",           "time",    "timestamp",
                                                           "elapsedtime", "elapsed", "times"};
    std::string name;
    for (const char c : header.name.substr(0, suffixBegin(header.name))) {
        if (c != '_' && c != ' ') {
            name += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace vorm::evaluation
