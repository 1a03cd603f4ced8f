#include "time_column.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/number_text.hpp>
#include <vorm/evaluation/time/counted_time.hpp>
#include <vorm/evaluation/time/likely_format.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr const char* dayFirstOrder = "day first";
constexpr const char* monthFirstOrder = "month first";
constexpr const char* skipAdvice = "rows that do not fit can be left out: bad_rows = \"skip\"";

// The header's unit, or nothing where it has none.
std::optional<TimeUnit> headerUnit(const ColumnHeader& header, const SourceLocation& place) {
    const auto unit = timeUnitIn(header);
    if (!unit && !header.unit.empty()) {
        std::vector<std::string> known;
        for (const TimeUnit& each : timeUnits) {
            known.emplace_back(each.name);
        }
        failAt(place,
               "the unit " + shown(header.unit) + " of the time column " + shown(header.text) +
                   " is not known",
               "name one of " + quotedList(known) +
                   " in the assessment file: [recording] unit = \"...\"");
    }
    return unit;
}

const char* described(TimeNotation notation) {
    switch (notation) {
        case TimeNotation::Iso:
            return "as dates";
        case TimeNotation::DayFirst:
            return "as dates, day first";
        case TimeNotation::MonthFirst:
            return "as dates, month first";
        case TimeNotation::DayMonthName:
            return "as dates with names of months";
        case TimeNotation::Clock:
            return "as hours, minutes and seconds";
    }
    return "";
}

// As it is declared; empty for a notation that has one order only.
std::string orderText(TimeNotation notation) {
    return notation == TimeNotation::DayFirst     ? dayFirstOrder
           : notation == TimeNotation::MonthFirst ? monthFirstOrder
                                                  : "";
}

// In quotes; one to be adapted for a text that tells none.
std::string proposedFormats(std::string_view text) {
    const auto dayFirst = likelyFormat(text, ShortDate::DayFirst);
    if (dayFirst == "%H:%M") {
        return R"("%H:%M" or "%M:%S")";
    }
    const auto monthFirst = likelyFormat(text, ShortDate::MonthFirst);
    const std::string one =
        '"' + (dayFirst ? *dayFirst : monthFirst.value_or("%Y-%m-%d %H:%M:%S")) + '"';
    return dayFirst && monthFirst && dayFirst != monthFirst ? one + " or \"" + *monthFirst + '"'
                                                            : one;
}

std::string firstTextOf(const CellTexts& rows, const TimeCells& cells) {
    for (const auto& row : rows) {
        if (std::string text = joined(row, cells); !text.empty()) {
            return text;
        }
    }
    return {};
}

}  // namespace

TimeColumn::TimeColumn(TimeCells cells, const TimeLayout& layout,
                       const std::vector<ColumnHeader>& headers, const CellTexts& rows,
                       const SourceLocation& place)
    : cells_(std::move(cells)), unit_(second) {
    name_ = quotedList(columns(headers));
    const ColumnHeader& header = headers[column()];
    isGuess_ = layout.columns.empty() && timeNameOf(header) == TimeName::None;
    isPlain_ = cells_.columns.size() == 1 && timeNameOf(header) == TimeName::Time &&
               header.text.find(header.unit) != std::string::npos;
    if (!layout.zone.empty()) {
        zone_ = TimeZone::called(layout.zone);
    }
    if (layout.format == "serial") {
        isSerial_ = true;
    } else if (layout.format == dayFirstOrder || layout.format == monthFirstOrder) {
        notation_ =
            layout.format == dayFirstOrder ? TimeNotation::DayFirst : TimeNotation::MonthFirst;
    } else if (!layout.format.empty()) {
        format_.emplace(layout.format);
        tellsOffset_ = layout.format.find("%z") != std::string::npos;
    } else if (layout.unit) {
        takeUnit(layout, headers[column()], rows, place);
    } else {
        takeNotation(rows, place);
        if (!notation_) {
            refuseClockDigits(headers, rows, place);
            takeUnit(layout, headers[column()], rows, place);
        }
    }
}

// 95958 and 100000 are a second apart where they are hours, minutes and seconds.
void TimeColumn::refuseClockDigits(const std::vector<ColumnHeader>& headers, const CellTexts& rows,
                                   const SourceLocation& place) const {
    const std::string text = firstTextOf(rows, cells_);
    std::string whole = text.substr(0, text.find('.'));
    const bool isFull = whole.size() == 6 && whole.front() == '0';
    whole.insert(0, whole.size() == 5 ? "0" : "");
    const bool isClock = whole.size() == 6 && std::all_of(whole.begin(), whole.end(), isDigit) &&
                         whole < "240000" && whole[2] < '6' && whole[4] < '6';
    const auto isDateBeside = [&](const ColumnHeader& header) {
        return &header != &headers[column()] && isCalledLikeDate(header);
    };
    if (isClock && !timeUnitIn(headers[column()]) &&
        (isFull || std::any_of(headers.begin(), headers.end(), isDateBeside))) {
        failAt(place,
               shown(text) + " in the time column " + name_ +
                   " may be hours, minutes and seconds, or a number of seconds",
               R"(say which: [recording] time_format = "%H%M%S" or unit = "s")");
    }
}

TimeColumn::TimeColumn(TimeCells cells, ExactTime start, ExactTime step)
    : cells_(std::move(cells)), counted_(Counted{start, step}), unit_(second) {}

void TimeColumn::takeNotation(const CellTexts& rows, const SourceLocation& place) {
    const auto notations = commonNotations(rows, cells_);
    if (notations.size() > 1) {
        failAt(
            place,
            shown(firstTextOf(rows, cells_)) + " in the time column " + name_ +
                " may begin with the day or with the month",
            "say which: [recording] time_format = " + proposedFormats(firstTextOf(rows, cells_)));
    }
    if (!notations.empty()) {
        notation_ = notations.front();
        const std::string text = firstTextOf(rows, cells_);
        isOrderFound_ = !orderText(*notation_).empty() && text[text.find_first_of("./-")] != '.';
    } else if (cells_.columns.size() > 1) {
        failAt(place, "the time in the columns " + name_ + " has no format",
               "add one, such as [recording] time_format = " +
                   proposedFormats(firstTextOf(rows, cells_)));
    }
}

void TimeColumn::takeUnit(const TimeLayout& layout, const ColumnHeader& header,
                          const CellTexts& rows, const SourceLocation& place) {
    auto known = layout.unit ? layout.unit : headerUnit(header, place);
    if (!known) {
        const auto first = ExactTime::of(firstTextOf(rows, cells_), second);
        known = first ? epochUnitOf(*first) : std::nullopt;
        isEpoch_ = known.has_value();
        if (first && !known && isCalledLikeDate(header)) {
            failAt(place,
                   "numbers such as " + shown(firstTextOf(rows, cells_)) + " in the time column " +
                       name_ + " are no dates",
                   "say what they are: [recording] time_format = \"serial\" for days as "
                   "spreadsheets count them, time_format = \"%Y%m%d\", or unit = \"s\"");
        }
    }
    isUnitKnown_ = known.has_value();
    if (known) {
        unit_ = known->length;
        unitName_ = known->name;
    }
}

std::vector<std::string> TimeColumn::columns(const std::vector<ColumnHeader>& headers) const {
    std::vector<std::string> names;
    for (const std::size_t cell : cells_.columns) {
        names.push_back(headers[cell].text);
    }
    return names;
}

std::optional<TimeUnit> TimeColumn::unit() const {
    return isUnitKnown_ && !isEpoch_ ? timeUnitOf(unitName_) : std::nullopt;
}

std::string TimeColumn::foundOrder() const {
    return isOrderFound_ ? orderText(*notation_) : "";
}

bool TimeColumn::tellsDates() const {
    if (format_) {
        return format_->tellsDates();
    }
    return isSerial_ || isEpoch_ || (notation_ && *notation_ != TimeNotation::Clock);
}

bool TimeColumn::contains(std::size_t column) const {
    return std::find(cells_.columns.begin(), cells_.columns.end(), column) != cells_.columns.end();
}

std::string_view TimeColumn::textOf(const std::vector<Cell>& cells) const {
    if (cells_.columns.size() == 1) {
        return cells[column()].text;
    }
    join(
        cells_, [&](std::size_t column) { return cells[column].text; }, joined_);
    return joined_;
}

ExactTime TimeColumn::timeOf(std::string_view text) const {
    if (text.empty()) {
        failAt({}, "the row has no time", "each row needs one; " + std::string(skipAdvice));
    }
    return format_     ? dateTime(text)
           : notation_ ? notedTime(text)
           : isSerial_ ? serialTime(text)
                       : numberTime(text);
}

ExactTime TimeColumn::numberTime(std::string_view text) const {
    if (const auto time = ExactTime::of(text, unit_)) {
        checkMagnitude(*time, text);
        return *time;
    }
    const auto number = numberOf<double>(text);
    if (!number) {
        failAt({}, shown(text) + " in the time column " + name_ + " is no number",
               "for a date or a time of day: [recording] time_format = " + proposedFormats(text) +
                   "; " + std::string(skipAdvice));
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
               "name their unit in the assessment file: [recording] unit = \"" +
                   std::string(epochUnitOf(time).value_or(*timeUnitOf("ns")).name) + '"');
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
    return tellsOffset_ ? *time : inUtc(*time);
}

ExactTime TimeColumn::notedTime(std::string_view text) const {
    const auto time = read(text, *notation_);
    if (!time) {
        failAt({},
               shown(text) + " in the time column " + name_ +
                   " is not written as the times before it, " + described(*notation_),
               "for others: [recording] time_format = " + proposedFormats(text) + "; " +
                   std::string(skipAdvice));
    }
    const bool isLocal = !time->hasOffset && *notation_ != TimeNotation::Clock;
    return isLocal ? inUtc(time->time) : time->time;
}

ExactTime TimeColumn::inUtc(ExactTime local) const {
    return zone_ ? zone_->utcOf(local) : local;
}

ExactTime TimeColumn::serialTime(std::string_view text) const {
    const auto time = timeOfSerialDate(text);
    if (!time) {
        failAt({}, shown(text) + " in the time column " + name_ + " is no number of days",
               "times of the format 'serial' are numbers such as 43374.42");
    }
    return inUtc(*time);
}

std::string TimeColumn::warning() const {
    return isGuess_ && !notation_ ? name_ + " is taken for the time, in " + unitName_ +
                                        ", since no other column increases; time = says another"
                                  : "";
}

std::string TimeColumn::remark() const {
    if (counted_) {
        return "times are counted from " + counted_->start.text() + " s in steps of " +
               counted_->step.text() + " s";
    }
    if (format_ || isSerial_) {
        return "times are in " + name_;
    }
    if (notation_) {
        return "times are in " + name_ + ", " + described(*notation_) +
               (zone_ ? " in " + zone_->name() : "");
    }
    if (isPlain_ && !isEpoch_) {
        return {};
    }
    return "times are in " + name_ + ", in " + unitName_ +
           (isEpoch_       ? " since 1970 by their size"
            : isUnitKnown_ ? ""
                           : " since nothing says otherwise");
}

}  // namespace vorm::evaluation
