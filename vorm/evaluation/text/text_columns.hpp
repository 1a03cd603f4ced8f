#pragma once

// Texts in the columns of a terminal, where a character takes one column, two or none.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// The columns of a terminal that a UTF-8 text takes that has no control characters: two for each
/// wide character of East Asian scripts and each emoji, none for marks that stand above another
/// character. Bytes that are no UTF-8 take one each.
std::size_t displayWidth(std::string_view text);

/// The text if it takes at most that many columns, at least one; else its beginning and its end
/// with `…` for what is between them.
std::string elided(std::string_view text, std::size_t columns);

/// The text in lines of at most that many columns, of which there are at least four (with fewer,
/// lines are longer): broken at blanks, which are left out there, and where a word is longer within
/// it. Blanks that the text begins with are kept, and the other lines begin with them, too, and
/// with two more.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns);

}  // namespace vorm::evaluation
