#include "time_column.hpp"

#include <vorm/evaluation/recording/number_text.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <time.h>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

constexpr TimeUnit nanosecond = *timeUnitOf("ns");
constexpr TimeUnit second = *timeUnitOf("s");

std::vector<std::string> namesOf(const std::vector<ColumnHeader>& headers) {
    std::vector<std::string> names;
    for (const ColumnHeader& header : headers) {
        names.push_back(header.name);
    }
    return names;
}

std::size_t timeCalled(const std::string& name, const std::vector<ColumnHeader>& headers,
                       const std::string& path) {
    for (std::size_t i = 0; i < headers.size(); ++i) {
        if (headers[i].isCalled(name)) {
            return i;
        }
    }
    failAt({path, 1}, "has no column " + shown(name) + " for the time",
           suggestion(name, namesOf(headers)));
}

std::size_t timeByItsName(const std::vector<ColumnHeader>& headers, const std::string& path) {
    std::vector<std::size_t> found;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < headers.size(); ++i) {
        if (isCalledLikeTime(headers[i])) {
            found.push_back(i);
            names.push_back(headers[i].text);
        }
    }
    constexpr const char* advice = "name it in the assessment file: [recording] time = \"...\"";
    if (found.empty()) {
        failAt({path, 1}, "has no time column among " + quotedList(namesOf(headers)), advice);
    }
    if (found.size() > 1) {
        failAt({path, 1}, "any of " + quotedList(names) + " may be the time column", advice);
    }
    return found.front();
}

// The header's unit, or nothing where it has none.
std::optional<TimeUnit> headerUnit(const ColumnHeader& header, const std::string& path) {
    const auto unit = timeUnitIn(header);
    if (!unit && !header.unit.empty()) {
        std::vector<std::string> known;
        for (const TimeUnit& each : timeUnits) {
            known.emplace_back(each.name);
        }
        failAt({path, 1},
               "the unit " + shown(header.unit) + " of the time column " + shown(header.text) +
                   " is not known",
               "name one of " + quotedList(known) +
                   " in the assessment file: [recording] unit = \"...\"");
    }
    return unit;
}

// Times such as these count from 1970 in a unit much below a second.
const char* likelyUnit(double time) {
    const double magnitude = std::abs(time);
    return magnitude < 1e14 ? "ms" : magnitude < 1e17 ? "us" : "ns";
}

struct CalendarText {
    std::int64_t seconds;    // since 1970
    std::string_view after;  // what the format leaves
};

std::optional<CalendarText> calendarText(const std::string& text, const std::string& format) {
    tm fields{};
    fields.tm_year = 70;
    fields.tm_mday = 1;
    const char* const end = ::strptime(text.c_str(), format.c_str(), &fields);
    if (end == nullptr) {
        return std::nullopt;
    }
    const int day = fields.tm_mday;
    const bool isLeapSecond = fields.tm_sec == 60;
    const long offset = fields.tm_gmtoff;
    const std::int64_t seconds = ::timegm(&fields);
    // A day that the month does not have has become one of the next month.
    if (fields.tm_mday != day && !isLeapSecond) {
        return std::nullopt;
    }
    return CalendarText{seconds - offset, std::string_view(text).substr(
                                              static_cast<std::size_t>(end - text.c_str()))};
}

// Of `.25` or `,25`; 0 of nothing. Digits after the ninth are cut off.
std::optional<std::int64_t> nanosecondsOf(std::string_view fraction) {
    if (fraction.empty()) {
        return 0;
    }
    const std::string_view digits = fraction.substr(1);
    const bool areDigits = digits.find_first_not_of("0123456789") == std::string_view::npos;
    if ((fraction[0] != '.' && fraction[0] != ',') || digits.empty() || !areDigits) {
        return std::nullopt;
    }
    std::string nine(digits.substr(0, 9));
    nine.resize(9, '0');
    return numberOf<std::int64_t>(nine);
}

}  // namespace

TimeColumn::TimeColumn(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                       const std::string& path)
    : format_(layout.format), unit_(second) {
    find(layout, headers, path);
    if (!format_.empty()) {
        unit_ = nanosecond;
        return;
    }
    if (columns_.size() > 1) {
        failAt({path, 1}, "the time in the columns " + name_ + " has no format",
               "add one, such as [recording] time_format = \"%Y-%m-%d %H:%M:%S\"");
    }
    const auto known = layout.unit ? layout.unit : headerUnit(headers[column()], path);
    isUnitKnown_ = known.has_value();
    unit_ = known.value_or(second);
}

void TimeColumn::find(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                      const std::string& path) {
    for (const std::string& name : layout.columns) {
        columns_.push_back(timeCalled(name, headers, path));
    }
    if (columns_.empty()) {
        columns_.push_back(timeByItsName(headers, path));
    }
    std::vector<std::string> names;
    for (const std::size_t column : columns_) {
        names.push_back(headers[column].text);
    }
    name_ = quotedList(names);
}

bool TimeColumn::contains(std::size_t column) const {
    return std::find(columns_.begin(), columns_.end(), column) != columns_.end();
}

Instant TimeColumn::instantOf(const std::vector<Cell>& cells) const {
    if (columns_.size() == 1) {
        return instantOf(cells[column()].text);
    }
    std::string text;
    for (const std::size_t column : columns_) {
        text += (text.empty() ? "" : " ") + std::string(cells[column].text);
    }
    return instantOf(text);
}

Instant TimeColumn::instantOf(std::string_view text) const {
    if (text.empty()) {
        fail("the row has no time", "each row needs one");
    }
    return format_.empty() ? numberInstant(text) : calendarInstant(text);
}

double TimeColumn::secondsFrom(const Origin& origin, const Instant& instant) const {
    const double seconds = origin.secondsTo(instant);
    if (!std::isfinite(seconds)) {
        fail("the time " + instant.text() + " is beyond the range of double", "check its unit");
    }
    return seconds;
}

Instant TimeColumn::numberInstant(std::string_view text) const {
    if (const auto ticks = numberOf<std::int64_t>(text)) {
        checkMagnitude(static_cast<double>(*ticks), text);
        return {unit_, ticks, static_cast<double>(*ticks)};
    }
    const auto number = numberOf<double>(text);
    if (!number) {
        fail(shown(text) + " in the time column " + name_ + " is no number",
             "for a date or a time of day: [recording] time_format = \"%Y-%m-%d %H:%M:%S\"");
    }
    if (!std::isfinite(*number)) {
        fail("the time " + shown(text) + " is not finite", "each row needs a time");
    }
    checkMagnitude(*number, text);
    return {unit_, std::nullopt, *number};
}

void TimeColumn::checkMagnitude(double time, std::string_view text) const {
    constexpr double mostSeconds = 1e11;
    if (!isUnitKnown_ && std::abs(time) > mostSeconds) {
        fail("times such as " + std::string(text) + " are no seconds",
             std::string("name their unit in the assessment file: [recording] unit = \"") +
                 likelyUnit(time) + '"');
    }
}

Instant TimeColumn::calendarInstant(std::string_view text) const {
    const std::string terminated(text);
    const auto calendar = calendarText(terminated, format_);
    const auto nanoseconds = calendar ? nanosecondsOf(calendar->after) : std::nullopt;
    std::int64_t ticks = 0;
    if (!nanoseconds ||
        __builtin_mul_overflow(calendar->seconds, std::int64_t{1'000'000'000}, &ticks) ||
        __builtin_add_overflow(ticks, *nanoseconds, &ticks)) {
        fail(shown(text) + " in the time column " + name_ + " is no time of the format '" +
                 format_ + "'",
             "times are UTC, between the years 1678 and 2261; a fraction of seconds may follow");
    }
    return {unit_, ticks, static_cast<double>(ticks)};
}

void TimeColumn::fail(std::string message, std::string advice) const {
    throw CellProblem{std::move(message), std::move(advice), column()};
}

}  // namespace vorm::evaluation
