#pragma once

// How the numbers and the texts in a formula are written.

#include <string>
#include <string_view>

namespace vorm::assessments::detail {

/// A number as a stream writes it by default, with six digits, but the same in every locale.
std::string numberText(double number);

/// The characters of a text argument of an alias.
inline std::string_view charactersOf(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace vorm::assessments::detail
