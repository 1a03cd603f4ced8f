#pragma once

// What the text of a cell looks like.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorm::evaluation {

enum class CellKind : std::uint8_t {
    Empty,        ///< also a text for a missing value
    Number,       ///< with a decimal point, or without one
    CommaNumber,  ///< with a decimal comma
    Time,         ///< a date, a time of day, an elapsed time
    Text
};

CellKind kindOf(std::string_view text);

/// Whether it is a number or begins like one, with a digit behind a sign and a point, if there are
/// such.
bool isLikeNumber(std::string_view text);

/// Whether the mark may as well stand between thousands: `1.000`, `-12,345,678`, not `0.125`.
bool mayHaveThousands(std::string_view text, char mark);

/// Whether it is one of the texts that stand for a missing value where numbers do: `NA`, `N/A`,
/// `n/a`, `null`, `NULL` or `-`.
bool isMissingText(std::string_view text);

/// Whether it is a number with a decimal point.
bool hasDecimalPoint(std::string_view text);

/// The number with a point in the place of its decimal comma, behind which something stands;
/// nothing for any other text.
std::optional<std::string> withDecimalPoint(std::string_view text);

}  // namespace vorm::evaluation
