#include "utf.hpp"

#include <boost/locale/utf.hpp>

#include <iterator>

namespace vorm::platform {
namespace {

template <class Target, class Source>
std::basic_string<Target> convert(std::basic_string_view<Source> text) {
    namespace utf = boost::locale::utf;
    constexpr utf::code_point replacement = 0xFFFD;

    std::basic_string<Target> result;
    result.reserve(text.size());
    for (auto position = text.begin(); position != text.end();) {
        const auto start = position;
        utf::code_point point = utf::utf_traits<Source>::decode(position, text.end());
        if (point == utf::illegal || point == utf::incomplete) {
            // Decoding has passed what made it fail, which may begin a well-formed sequence.
            position = std::next(start);
            point = replacement;
        }
        utf::utf_traits<Target>::encode(point, std::back_inserter(result));
    }
    return result;
}

}  // namespace

std::u16string toUtf16(std::string_view text) {
    return convert<char16_t>(text);
}

std::string toUtf8(std::u16string_view text) {
    return convert<char>(text);
}

}  // namespace vorm::platform
