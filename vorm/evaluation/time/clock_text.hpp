#pragma once

// For what reads times of day and elapsed times as clocks show them.

#include "text_cursor.hpp"

#include <vorm/evaluation/time/exact_time.hpp>

namespace vorm::evaluation {

/// A time of day behind a date, from midnight on; `093919` only where it may be compact. Nothing,
/// and the cursor anywhere, where the text begins otherwise.
std::optional<ExactTime> takeTimeOfDay(TextCursor& cursor, bool mayBeCompact);

/// Whether the whole text is a time of day, `9:39`, `09:39:19.25` or `9:39 PM`.
bool isTimeOfDay(std::string_view text);

/// `Z` or `+02:00`: how far a time of day is ahead of UTC. Nothing as for that.
std::optional<ExactTime> takeOffset(TextCursor& cursor);

/// The elapsed time or the time of day that is the whole text.
std::optional<ExactTime> readClock(std::string_view text);

}  // namespace vorm::evaluation
