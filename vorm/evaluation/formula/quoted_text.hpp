#pragma once

// Names and members of enumerations between quotes. For the parser and the printer.

#include <optional>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The text between the quotes of a word, its escapes `\\ \" \' \n \r \t \xHH` replaced; nothing
/// where a backslash begins none of them.
std::optional<std::string> unquoted(std::string_view word);

/// The word that unquoted reads as that text.
std::string inQuotes(std::string_view text, char quote);

}  // namespace vorm::evaluation
