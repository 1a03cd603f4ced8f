#pragma once

// For what reads a date as people write it, in front of a time of day or alone.

#include "text_cursor.hpp"

#include <vorm/evaluation/time/time_notation.hpp>

namespace vorm::evaluation {

/// The beginning of the day, from 1970-01-01 on, in the notation of a date. Nothing, and the cursor
/// anywhere, where the text begins otherwise.
std::optional<ExactTime> takeDate(TextCursor& cursor, TimeNotation notation);

}  // namespace vorm::evaluation
