#include "row_reader.hpp"

#include <algorithm>

namespace vorm::evaluation {

std::string shown(std::string_view text) {
    constexpr std::size_t most = 40;
    std::string result(text.substr(0, most));
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    std::replace_if(result.begin(), result.end(), isControl, '?');
    return "'" + result + (text.size() > most ? "...'" : "'");
}

}  // namespace vorm::evaluation
