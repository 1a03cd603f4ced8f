#include "label_text.hpp"

#include <array>
#include <charconv>

namespace vorm::assessments::detail {

std::string numberText(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                   std::chars_format::general, 6);
    return std::string(text.data(), end.ptr);
}

}  // namespace vorm::assessments::detail
