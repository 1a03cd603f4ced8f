#pragma once

#include <vorm/assessments/export.hpp>

#include <cstdint>
#include <string>

namespace vorm::assessments {

/// The identifier under which half-precision values are named; no host knows it.
inline constexpr std::int32_t halfClassId = -2357;

/// The name of a numeric class: "half" for halfClassId, for any other identifier the name that the
/// installed naming service gives, or an empty name where it gives none.
VORM_ASSESSMENTS_EXPORT std::string ArrayClassIdName(std::int32_t classId);

}  // namespace vorm::assessments
