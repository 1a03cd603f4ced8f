#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

#include <optional>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// The usual ways to write times that are no plain number.
///
/// A date may stand alone; else a time of day follows behind a blank, `, `, `T`, `t` or `_`:
/// `9:39`, `09:39:19`, `09:39:19.25` or `09:39:19,25` with a fraction of any length, `9:39 PM`, and
/// behind that an offset from UTC: `Z`, `UTC`, `GMT`, `+02:00`, `+0200` or `+02`, with or without a
/// blank. 24:00:00 is the next day's beginning, and a leap second :60 is the same time as the
/// second after it. Years have four digits, from 0001 on. The case of letters never matters.
enum class TimeNotation {
    Iso,         ///< `2021-06-30`, `2021/6/30`, `2021.06.30`; `20210630T093919.5Z`, not `20210630`
    DayFirst,    ///< `30.06.2021`, `30/06/2021`, `30-6-2021`
    MonthFirst,  ///< `06/30/2021`, `6-30-2021`; not with points
    DayMonthName,  ///< `30-Jun-2021`, `30 June 2021`, `Jun 30, 2021`, `2021-Jun-30`, in English
    /// An elapsed time or a time of day: `144:02:18.5`, `-0:00:03`, `05:12.3` (minutes and seconds,
    /// only with a fraction), `9:39 PM`; behind days, of at most five digits, `2.03:04:05`,
    /// `2 03:04:05`, `2d 03:04:05`, `1 day, 2:03:04`. Not `-1 day, 2:03:04`, of which the sign may
    /// be meant for the days alone, and not `09:39`, hours and minutes or minutes and seconds.
    Clock
};

/// A time as its text says it.
struct LocalTime {
    /// From 1970-01-01 on, or of a clock from 0:00:00 on. In UTC where the text has an offset.
    ExactTime time;
    bool hasOffset = false;  ///< the text says how far from UTC it is

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// The notations in which the text is a time, in their order: none for a plain number, two for
/// `06/05/2021`.
std::vector<TimeNotation> notationsOf(std::string_view text);

/// The time that the whole text says in a notation; what is finer than an attosecond is rounded,
/// halves away from zero or, of dates, to the later one. Nothing for any other text, for a day that
/// its month does not have, and for a text with blanks around it. Linear in the text.
std::optional<LocalTime> read(std::string_view text, TimeNotation notation);

}  // namespace vorm::evaluation
