#include "time_column.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/number_text.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

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
const char* likelyUnit(ExactTime asSeconds) {
    constexpr WideInteger milliseconds = 100'000'000'000'000;
    const ExactTime magnitude = std::max(asSeconds, -asSeconds);
    return magnitude < milliseconds * second           ? "ms"
           : magnitude < 1'000 * milliseconds * second ? "us"
                                                       : "ns";
}

}  // namespace

TimeColumn::TimeColumn(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
                       const std::string& path)
    : unit_(second) {
    find(layout, headers, path);
    if (!layout.format.empty()) {
        format_.emplace(layout.format);
        return;
    }
    if (columns_.size() > 1) {
        failAt({path, 1}, "the time in the columns " + name_ + " has no format",
               "add one, such as [recording] time_format = \"%Y-%m-%d %H:%M:%S\"");
    }
    const auto known = layout.unit ? layout.unit : headerUnit(headers[column()], path);
    isUnitKnown_ = known.has_value();
    unit_ = known ? known->length : second;
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

std::string_view TimeColumn::textOf(const std::vector<Cell>& cells) const {
    if (columns_.size() == 1) {
        return cells[column()].text;
    }
    joined_.clear();
    for (const std::size_t column : columns_) {
        joined_ += (joined_.empty() ? "" : " ") + std::string(cells[column].text);
    }
    return joined_;
}

ExactTime TimeColumn::timeOf(std::string_view text) const {
    if (text.empty()) {
        failAt({}, "the row has no time", "each row needs one");
    }
    return format_ ? dateTime(text) : numberTime(text);
}

ExactTime TimeColumn::numberTime(std::string_view text) const {
    if (const auto time = ExactTime::of(text, unit_)) {
        checkMagnitude(*time, text);
        return *time;
    }
    const auto number = numberOf<double>(text);
    if (!number) {
        failAt({}, shown(text) + " in the time column " + name_ + " is no number",
               "for a date or a time of day: [recording] time_format = \"%Y-%m-%d %H:%M:%S\"");
    }
    if (!std::isfinite(*number)) {
        failAt({}, "the time " + shown(text) + " is not finite", "each row needs a time");
    }
    failAt({}, "the time " + shown(text) + " is beyond the range of times", "check its unit");
}

void TimeColumn::checkMagnitude(ExactTime time, std::string_view text) const {
    constexpr ExactTime most = 100'000'000'000 * second;
    if (!isUnitKnown_ && (time > most || time < -most)) [[unlikely]] {
        failAt({}, "times such as " + std::string(text) + " are no seconds",
               std::string("name their unit in the assessment file: [recording] unit = \"") +
                   likelyUnit(time) + '"');
    }
}

ExactTime TimeColumn::dateTime(std::string_view text) const {
    const auto time = format_->read(std::string(text));
    if (!time) {
        failAt({},
               shown(text) + " in the time column " + name_ + " is no time of the format '" +
                   format_->text() + "'",
               "times are UTC unless %z tells an offset; a fraction may follow the seconds");
    }
    return *time;
}

}  // namespace vorm::evaluation
