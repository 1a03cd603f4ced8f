#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

/// How bad it is where an assessment fails. A run has failed where an error has.
enum class Severity { Error, Warning, Info };

/// As assessment files and reports write them, in their order.
inline constexpr std::array<std::string_view, 3> severityNames{"error", "warning", "info"};

constexpr std::string_view nameOf(Severity severity) {
    return severityNames[static_cast<std::size_t>(severity)];
}

/// Nothing for another name.
constexpr std::optional<Severity> severityNamed(std::string_view name) {
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Info}) {
        if (nameOf(severity) == name) {
            return severity;
        }
    }
    return std::nullopt;
}

}  // namespace vorm::evaluation
