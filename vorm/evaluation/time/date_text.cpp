#include "date_text.hpp"

#include <vorm/evaluation/time/time_unit.hpp>

#include <algorithm>
#include <array>
#include <chrono>

namespace vorm::evaluation {
namespace {

// A part of a date as it is written: digits, or a month's name, which has none.
struct DatePart {
    int value = 0;
    std::size_t digits = 0;

    bool isName() const { return digits == 0; }
    bool isYear() const { return digits == 4; }
    bool isShort() const { return digits == 1 || digits == 2; }
};

// A date as it is written: three parts and what separates them.
struct WrittenDate {
    std::array<DatePart, 3> parts;
    char separator;
};

// Which part of a date is what.
struct DateOrder {
    TimeNotation notation;
    std::size_t year;
    std::size_t month;
    std::size_t day;
};

constexpr std::array<DateOrder, 6> dateOrders{{{TimeNotation::Iso, 0, 1, 2},
                                               {TimeNotation::DayFirst, 2, 1, 0},
                                               {TimeNotation::MonthFirst, 2, 0, 1},
                                               {TimeNotation::DayMonthName, 2, 1, 0},
                                               {TimeNotation::DayMonthName, 2, 0, 1},
                                               {TimeNotation::DayMonthName, 0, 1, 2}}};

// The number of a month; 0 for what is no name of one.
int monthCalled(std::string_view name) {
    constexpr std::array<std::string_view, 12> months{
        "january", "february", "march",     "april",   "may",      "june",
        "july",    "august",   "september", "october", "november", "december"};
    const auto isThis = [name](std::string_view month) {
        return TextCursor::equalsInAnyCase(name, month) ||
               TextCursor::equalsInAnyCase(name, month.substr(0, 3));
    };
    const auto* const found = std::find_if(months.begin(), months.end(), isThis);
    return found == months.end() ? 0 : static_cast<int>(found - months.begin()) + 1;
}

std::optional<DatePart> takePart(TextCursor& cursor) {
    const std::size_t before = cursor.size();
    if (const auto number = cursor.takeNumber(1, 4)) {
        return DatePart{static_cast<int>(*number), before - cursor.size()};
    }
    const int month = monthCalled(cursor.takeLetters());
    return month == 0 ? std::nullopt : std::optional(DatePart{month});
}

// What stands between the parts of a date: one of these, or several blanks, which count as one.
std::optional<char> takeSeparator(TextCursor& cursor) {
    for (const char separator : {'-', '/', '.'}) {
        if (cursor.take(separator)) {
            return separator;
        }
    }
    return cursor.takeBlanks() ? std::optional(' ') : std::nullopt;
}

std::optional<WrittenDate> takeWrittenDate(TextCursor& cursor) {
    const auto first = takePart(cursor);
    const auto separator = takeSeparator(cursor);
    const auto second = takePart(cursor);
    // `Jun 30, 2021`
    if (first && first->isName() && separator == ' ') {
        cursor.take(',');
    }
    const auto again = takeSeparator(cursor);
    const auto third = takePart(cursor);
    if (!first || !separator || !second || again != separator || !third) {
        return std::nullopt;
    }
    return WrittenDate{{*first, *second, *third}, *separator};
}

bool isInOrder(const WrittenDate& date, const DateOrder& order) {
    const bool isNamed = order.notation == TimeNotation::DayMonthName;
    const DatePart& month = date.parts[order.month];
    return date.parts[order.year].isYear() && date.parts[order.day].isShort() &&
           (isNamed ? month.isName() : month.isShort() && date.separator != ' ') &&
           (order.notation != TimeNotation::MonthFirst || date.separator != '.');
}

// Of a day that there is.
std::optional<ExactTime> startOfDay(int year, int month, int day) {
    const std::chrono::year_month_day date(std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    if (!date.ok() || year == 0) {
        return std::nullopt;
    }
    return WideInteger{std::chrono::sys_days(date).time_since_epoch().count()} * oneDay;
}

std::optional<ExactTime> dateOf(const WrittenDate& date, TimeNotation notation) {
    for (const DateOrder& order : dateOrders) {
        if (order.notation == notation && isInOrder(date, order)) {
            return startOfDay(date.parts[order.year].value, date.parts[order.month].value,
                              date.parts[order.day].value);
        }
    }
    return std::nullopt;
}

// `20210630`, which is a number unless a time of day follows.
std::optional<ExactTime> takeCompactDate(TextCursor& cursor) {
    const auto digits = cursor.takeNumber(8, 8);
    if (!digits || cursor.isAtEnd()) {
        return std::nullopt;
    }
    const int date = static_cast<int>(*digits);
    return startOfDay(date / 10'000, date / 100 % 100, date % 100);
}

}  // namespace

std::optional<ExactTime> takeDate(TextCursor& cursor, TimeNotation notation) {
    const TextCursor begin = cursor;
    if (notation == TimeNotation::Iso) {
        if (const auto day = takeCompactDate(cursor)) {
            return day;
        }
        cursor = begin;
    }
    const auto date = takeWrittenDate(cursor);
    return date ? dateOf(*date, notation) : std::nullopt;
}

}  // namespace vorm::evaluation
