#include "clock_text.hpp"

#include <vorm/evaluation/time/time_unit.hpp>

namespace vorm::evaluation {
namespace {

constexpr std::size_t mostHourDigits = 9;  // beyond any recording
// `20210630 09:39:19` and `210630 09:39:19` are dates, though not all of these are read.
constexpr std::size_t mostDayDigits = 5;

// What is behind the hours of a time: `:39`, `:39:19`, `:39:19.25`, or `:39.25`.
struct BehindHours {
    std::int64_t minutes;
    std::optional<std::int64_t> seconds;
    std::optional<ExactTime> fraction;  // of the last one
};

bool isAtFraction(const TextCursor& cursor) {
    return cursor.isAt('.') || cursor.isAt(',');
}

// `.25` or `,25`; nothing for a point without digits.
std::optional<ExactTime> takeFraction(TextCursor& cursor) {
    constexpr std::size_t fractionDigits = 18;  // of attoseconds behind the point
    if (!cursor.take('.') && !cursor.take(',')) {
        return std::nullopt;
    }
    const std::size_t before = cursor.size();
    auto attoseconds = cursor.takeNumber(1, fractionDigits);
    if (!attoseconds) {
        return std::nullopt;
    }
    for (std::size_t digits = before - cursor.size(); digits < fractionDigits; ++digits) {
        *attoseconds *= 10;
    }
    // The first digit that no longer fits tells how to round; the others change nothing.
    *attoseconds += cursor.takeNumber(1, 1).value_or(0) >= 5 ? 1 : 0;
    while (cursor.takeNumber(1, fractionDigits)) {
    }
    return ExactTime(*attoseconds);
}

// Of times without colons, too, where that is allowed: `3919.25`.
std::optional<BehindHours> takeBehindHours(TextCursor& cursor, bool mayBeCompact) {
    const bool hasColons = cursor.take(':');
    if (!hasColons && !mayBeCompact) {
        return std::nullopt;
    }
    const auto minutes = cursor.takeNumber(2, 2);
    if (!minutes || *minutes > 59) {
        return std::nullopt;
    }
    BehindHours behind{*minutes, {}, {}};
    if (hasColons ? cursor.take(':') : cursor.isAtDigit()) {
        behind.seconds = cursor.takeNumber(2, 2);
        if (!behind.seconds || *behind.seconds > 60) {
            return std::nullopt;
        }
    }
    if (isAtFraction(cursor)) {
        behind.fraction = takeFraction(cursor);
        if (!behind.fraction) {
            return std::nullopt;
        }
    }
    return behind;
}

ExactTime timeOf(std::int64_t hours, const BehindHours& behind) {
    const WideInteger minutes = WideInteger{hours} * 60 + behind.minutes;
    return (minutes * 60 + behind.seconds.value_or(0)) * second +
           behind.fraction.value_or(ExactTime());
}

enum class HalfOfDay { None, Am, Pm };

HalfOfDay takeHalfOfDay(TextCursor& cursor) {
    TextCursor behind = cursor;
    behind.takeBlanks();
    const HalfOfDay half = behind.takeWord("am")   ? HalfOfDay::Am
                           : behind.takeWord("pm") ? HalfOfDay::Pm
                                                   : HalfOfDay::None;
    cursor = half == HalfOfDay::None ? cursor : behind;
    return half;
}

// The hour from midnight on; nothing for one that no half of a day has.
std::optional<std::int64_t> hourOf(std::int64_t written, HalfOfDay half) {
    if (half == HalfOfDay::None) {
        return written;
    }
    if (written < 1 || written > 12) {
        return std::nullopt;
    }
    return written % 12 + (half == HalfOfDay::Pm ? 12 : 0);
}

// What stands behind a number of days. A sign in front of words may be meant for the days alone.
bool takeBehindDays(TextCursor& cursor, bool hasSign) {
    if (cursor.take('.')) {
        return true;
    }
    const bool hasBlanks = cursor.takeBlanks();
    if (!cursor.takeWord("d") && !cursor.takeWord("day") && !cursor.takeWord("days")) {
        return hasBlanks;
    }
    cursor.take(',');
    cursor.takeBlanks();
    return !hasSign;
}

// `05:12.3` is minutes and seconds.
std::optional<ExactTime> timeOfMinutes(std::int64_t minutes, const BehindHours& seconds) {
    if (minutes > 59) {
        return std::nullopt;
    }
    return timeOf(0, {minutes, seconds.minutes, seconds.fraction});
}

// What is behind the hours of an elapsed time, which has no leap seconds.
std::optional<BehindHours> takeBehindElapsedHours(TextCursor& cursor) {
    const auto behind = takeBehindHours(cursor, false);
    return behind && behind->seconds != 60 ? behind : std::nullopt;
}

// `144:02:18`, `9:39 PM` or `05:12.3`, up to the end.
std::optional<ExactTime> readHours(TextCursor cursor, bool hasSign) {
    const auto written = cursor.takeNumber(1, mostHourDigits);
    const auto behind = takeBehindElapsedHours(cursor);
    const HalfOfDay half = takeHalfOfDay(cursor);
    if (!written || !behind || !cursor.isAtEnd()) {
        return std::nullopt;
    }
    const bool isOfDay = half != HalfOfDay::None;
    if (!behind->seconds && !isOfDay) {
        return behind->fraction ? timeOfMinutes(*written, *behind) : std::nullopt;
    }
    const auto hours = hourOf(*written, half);
    if (!hours || (isOfDay && hasSign) || (behind->fraction && !behind->seconds)) {
        return std::nullopt;
    }
    return timeOf(*hours, *behind);
}

// `2.03:04:05` or `1 day, 2:03:04`, up to the end.
std::optional<ExactTime> readDays(TextCursor cursor, bool hasSign) {
    const auto days = cursor.takeNumber(1, mostDayDigits);
    if (!days || !takeBehindDays(cursor, hasSign)) {
        return std::nullopt;
    }
    const auto hours = cursor.takeNumber(1, 2);
    const auto behind = takeBehindElapsedHours(cursor);
    if (!hours || *hours > 23 || !behind || !behind->seconds || !cursor.isAtEnd()) {
        return std::nullopt;
    }
    return *days * oneDay + timeOf(*hours, *behind);
}

}  // namespace

std::optional<ExactTime> takeTimeOfDay(TextCursor& cursor, bool mayBeCompact) {
    const auto written = cursor.takeNumber(1, 2);
    const auto behind = takeBehindHours(cursor, mayBeCompact);
    if (!written || !behind || (behind->fraction && !behind->seconds)) {
        return std::nullopt;
    }
    const auto hour = hourOf(*written, takeHalfOfDay(cursor));
    if (!hour || *hour > 24) {
        return std::nullopt;
    }
    const ExactTime time = timeOf(*hour, *behind);
    return *hour == 24 && time != oneDay ? std::nullopt : std::optional(time);
}

bool isTimeOfDay(std::string_view text) {
    TextCursor cursor(text);
    return takeTimeOfDay(cursor, false) && cursor.isAtEnd();
}

std::optional<ExactTime> takeOffset(TextCursor& cursor) {
    for (const char* utc : {"z", "utc", "gmt"}) {
        if (cursor.takeWord(utc)) {
            return ExactTime();
        }
    }
    const bool isBehind = cursor.take('-');
    if (!isBehind && !cursor.take('+')) {
        return std::nullopt;
    }
    const auto hours = cursor.takeNumber(2, 2);
    const bool hasMinutes = cursor.take(':') || cursor.isAtDigit();
    const auto minutes = hasMinutes ? cursor.takeNumber(2, 2) : std::optional<std::int64_t>(0);
    if (!hours || !minutes || *minutes > 59 || *hours * 60 + *minutes > 14 * 60) {
        return std::nullopt;
    }
    const ExactTime offset = timeOf(*hours, {*minutes, {}, {}});
    return isBehind ? -offset : offset;
}

std::optional<ExactTime> readClock(std::string_view text) {
    TextCursor cursor(text);
    const bool isNegative = cursor.take('-');
    const bool hasSign = isNegative || cursor.take('+');
    auto time = readHours(cursor, hasSign);
    if (!time) {
        time = readDays(cursor, hasSign);
    }
    return time && isNegative ? -*time : time;
}

}  // namespace vorm::evaluation
