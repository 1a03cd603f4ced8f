#pragma once

#include <string_view>

namespace vorm::assessments::detail {

/// The characters of a text argument of an alias.
inline std::string_view charactersOf(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace vorm::assessments::detail
