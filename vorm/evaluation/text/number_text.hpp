#pragma once

// Numbers as cells write them.

#include <fast_float/fast_float.h>

#include <charconv>
#include <cmath>
#include <concepts>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

inline std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

/// The nearest number, also of `nan` and `inf`. Nothing for what is no number as a whole, and for
/// digits beyond the range of T.
template <std::floating_point T>
std::optional<T> numberOf(std::string_view text) {
    const std::string_view digits = withoutPlus(text);
    const char* const end = digits.data() + digits.size();
    T number{};
    const auto result = fast_float::from_chars(digits.data(), end, number);
    if (result.ptr != end || result.ec == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (std::isinf(number) && digits.find_first_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return number;
}

/// The integer of just these digits. Nothing for anything else, and beyond the range of T.
template <std::integral T>
std::optional<T> numberOf(std::string_view text) {
    const std::string_view digits = withoutPlus(text);
    const char* const end = digits.data() + digits.size();
    T number{};
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ptr != end || result.ec != std::errc()) {
        return std::nullopt;
    }
    return number;
}

}  // namespace vorm::evaluation
