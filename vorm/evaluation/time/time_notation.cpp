#include "time_notation.hpp"

#include "clock_text.hpp"
#include "date_text.hpp"

#include <array>

namespace vorm::evaluation {
namespace {

constexpr std::array allNotations{TimeNotation::Iso, TimeNotation::DayFirst,
                                  TimeNotation::MonthFirst, TimeNotation::DayMonthName,
                                  TimeNotation::Clock};

bool takeBehindDate(TextCursor& cursor) {
    if (cursor.take('T') || cursor.take('t') || cursor.take('_')) {
        return true;
    }
    cursor.take(',');
    return cursor.takeBlanks();
}

std::optional<LocalTime> readDate(std::string_view text, TimeNotation notation) {
    TextCursor cursor(text);
    const auto day = takeDate(cursor, notation);
    if (!day || cursor.isAtEnd()) {
        return day ? std::optional(LocalTime{*day}) : std::nullopt;
    }
    const bool mayBeCompact = notation == TimeNotation::Iso;
    const auto time = takeBehindDate(cursor) ? takeTimeOfDay(cursor, mayBeCompact) : std::nullopt;
    if (!time || cursor.isAtEnd()) {
        return time ? std::optional(LocalTime{*day + *time}) : std::nullopt;
    }
    cursor.takeBlanks();
    const auto offset = takeOffset(cursor);
    if (!offset || !cursor.isAtEnd()) {
        return std::nullopt;
    }
    return LocalTime{*day + *time - *offset, true};
}

}  // namespace

std::vector<TimeNotation> notationsOf(std::string_view text) {
    std::vector<TimeNotation> notations;
    for (const TimeNotation notation : allNotations) {
        if (read(text, notation)) {
            notations.push_back(notation);
        }
    }
    return notations;
}

std::optional<LocalTime> read(std::string_view text, TimeNotation notation) {
    if (notation != TimeNotation::Clock) {
        return readDate(text, notation);
    }
    const auto time = readClock(text);
    return time ? std::optional(LocalTime{*time}) : std::nullopt;
}

}  // namespace vorm::evaluation
