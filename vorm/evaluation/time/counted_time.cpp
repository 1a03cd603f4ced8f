#include "counted_time.hpp"

namespace vorm::evaluation {

std::optional<ExactTime> timeOfSerialDate(std::string_view days) {
    constexpr ExactTime::Unit day(oneDay);
    constexpr WideInteger serialOf1970 = 25'569;
    const auto time = ExactTime::of(days, day);
    return time ? std::optional(*time - serialOf1970 * oneDay) : std::nullopt;
}

std::optional<TimeUnit> epochUnitOf(ExactTime asSeconds) {
    WideInteger from = 1'000'000'000;
    for (const char* name : {"s", "ms", "us", "ns"}) {
        if (asSeconds >= from * second && asSeconds < 10 * from * second) {
            return timeUnitOf(name);
        }
        from *= 1'000;
    }
    return std::nullopt;
}

}  // namespace vorm::evaluation
