#include "enumeration_literal.hpp"

namespace vorm::evaluation {

// FNV-1a (Fowler, Noll, Vo, 1991), which is the same in every run and on every machine.
std::int32_t enumerationTag(std::string_view enumeration) {
    std::uint32_t hash = 2'166'136'261U;
    for (const char character : enumeration) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16'777'619U;
    }
    constexpr std::int32_t plainLiteral = 1;
    const auto tag = static_cast<std::int32_t>(hash);
    return tag == plainLiteral ? ~plainLiteral : tag;
}

}  // namespace vorm::evaluation
