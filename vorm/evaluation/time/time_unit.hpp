#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

#include <array>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

/// A unit of time.
struct TimeUnit {
    std::string_view name;
    ExactTime length;
};

inline constexpr ExactTime nanosecond(1'000'000'000);
inline constexpr ExactTime second = 1'000'000'000 * nanosecond;
inline constexpr ExactTime oneDay = 86'400 * second;

/// From the shortest to the longest: fs, ps, ns, us, ms, s, min, h.
inline constexpr std::array<TimeUnit, 8> timeUnits{{{"fs", ExactTime(1'000)},
                                                    {"ps", ExactTime(1'000'000)},
                                                    {"ns", nanosecond},
                                                    {"us", 1'000 * nanosecond},
                                                    {"ms", 1'000'000 * nanosecond},
                                                    {"s", second},
                                                    {"min", 60 * second},
                                                    {"h", 3'600 * second}}};

/// The unit of that name (case matters), or nothing.
constexpr std::optional<TimeUnit> timeUnitOf(std::string_view name) {
    for (const TimeUnit& unit : timeUnits) {
        if (unit.name == name) {
            return unit;
        }
    }
    return std::nullopt;
}

/// The names of all units: `fs, ps, ns, us, ms, s, min and h`.
inline constexpr const char* timeUnitNames = "fs, ps, ns, us, ms, s, min and h";

}  // namespace vorm::evaluation
