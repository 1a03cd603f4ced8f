#pragma once

#include <array>
#include <string_view>

namespace vorm::evaluation {

/// How bad it is where an assessment fails. A run has failed where an error has.
enum class Severity { Error, Warning, Info };

/// As assessment files and reports write them, in their order.
inline constexpr std::array<std::string_view, 3> severityNames{"error", "warning", "info"};

constexpr std::string_view nameOf(Severity severity) {
    return severityNames[static_cast<std::size_t>(severity)];
}

}  // namespace vorm::evaluation
