#pragma once

// Numbers of doubles that have short names.

#include <limits>

namespace vorm::test {

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();

}  // namespace vorm::test
