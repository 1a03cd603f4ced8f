#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

/// A unit of time. Traces are in seconds; everything else says its unit.
struct TimeUnit {
    std::string_view name;
    // One of the two is 1.
    std::int64_t unitsPerSecond;
    std::int64_t secondsPerUnit;

    /// A number of this unit in seconds, rounded once.
    constexpr double inSeconds(double number) const {
        return number * static_cast<double>(secondsPerUnit) / static_cast<double>(unitsPerSecond);
    }
};

/// From the shortest to the longest: ns, us, ms, s, min, h.
inline constexpr std::array<TimeUnit, 6> timeUnits{{{"ns", 1'000'000'000, 1},
                                                    {"us", 1'000'000, 1},
                                                    {"ms", 1'000, 1},
                                                    {"s", 1, 1},
                                                    {"min", 1, 60},
                                                    {"h", 1, 3600}}};

/// The unit of that name (case matters), or nothing.
constexpr std::optional<TimeUnit> timeUnitOf(std::string_view name) {
    for (const TimeUnit& unit : timeUnits) {
        if (unit.name == name) {
            return unit;
        }
    }
    return std::nullopt;
}

}  // namespace vorm::evaluation
