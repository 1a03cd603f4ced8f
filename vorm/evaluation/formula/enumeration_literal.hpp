#pragma once

#include <cstdint>
#include <string_view>

namespace vorm::evaluation {

/// The tag of the literals of an enumeration, never 1, the tag of a plain literal. It depends on
/// the name alone, so that members of two enumerations are different literals.
std::int32_t enumerationTag(std::string_view enumeration);

}  // namespace vorm::evaluation
