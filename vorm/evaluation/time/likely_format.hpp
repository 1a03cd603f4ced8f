#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// Which of two short numbers of a date comes first.
enum class ShortDate { DayFirst, MonthFirst };

/// A time format that reads the text, to be proposed: `%d/%m/%y %I:%M %p` for `01/02/24 9:39 PM`.
/// Nothing where none comes to mind.
std::optional<std::string> likelyFormat(std::string_view time, ShortDate order);

}  // namespace vorm::evaluation
