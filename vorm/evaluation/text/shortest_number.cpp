#include "shortest_number.hpp"

#include <array>
#include <charconv>

namespace vorm::evaluation {

std::string shortestNumber(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
    return std::string(text.data(), end.ptr);
}

}  // namespace vorm::evaluation
