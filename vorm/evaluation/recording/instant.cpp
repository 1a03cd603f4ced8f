#include "instant.hpp"

#include <vorm/evaluation/text/shortest_number.hpp>

#include <cmath>

namespace vorm::evaluation {
namespace {

__extension__ typedef unsigned __int128 WideNatural;

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
constexpr std::int64_t exactDoubles = std::int64_t{1} << 53;

bool sameUnit(const TimeUnit& a, const TimeUnit& b) {
    return a.name == b.name;
}

}  // namespace

WideInteger Instant::nanoseconds() const {
    return WideInteger{*ticks} * unit.secondsPerUnit * (nanosecondsPerSecond / unit.unitsPerSecond);
}

double Instant::seconds() const {
    return ticks ? secondsOfNanoseconds(nanoseconds()) : unit.inSeconds(number);
}

std::string Instant::text() const {
    return ticks ? std::to_string(*ticks) : shortestNumber(number);
}

bool isBefore(const Instant& a, const Instant& b) {
    if (a.ticks && b.ticks) {
        return a.nanoseconds() < b.nanoseconds();
    }
    return a.seconds() < b.seconds();
}

double secondsOfNanoseconds(WideInteger nanoseconds) {
    if (-exactDoubles <= nanoseconds && nanoseconds <= exactDoubles) {
        return static_cast<double>(nanoseconds) / static_cast<double>(nanosecondsPerSecond);
    }
    const bool isNegative = nanoseconds < 0;
    const auto magnitude = static_cast<WideNatural>(isNegative ? -nanoseconds : nanoseconds);
    // More bits of the quotient than a double has, the last one set where any follow: rounding
    // these is rounding the exact quotient.
    const int shift = magnitude >> 86U == 0 ? 40 : 0;
    const WideNatural dividend = magnitude << static_cast<unsigned>(shift);
    const WideNatural divisor = nanosecondsPerSecond;
    const WideNatural quotient = dividend / divisor | (dividend % divisor != 0 ? 1U : 0U);
    const double seconds = std::ldexp(static_cast<double>(quotient), -shift);
    return isNegative ? -seconds : seconds;
}

Origin::Origin(const Instant& instant, const TimeUnit& unit)
    : unit_(unit), isExact_(instant.ticks.has_value()), number_(instant.number) {
    if (isExact_) {
        nanoseconds_ = instant.nanoseconds();
    }
    if (sameUnit(instant.unit, unit)) {
        ticks_ = instant.ticks;
    } else {
        number_ = instant.seconds() * static_cast<double>(unit.unitsPerSecond) /
                  static_cast<double>(unit.secondsPerUnit);
    }
}

double Origin::secondsTo(const Instant& instant) const {
    if (!instant.ticks || !isExact_) {
        return unit_.inSeconds(instant.number - number_);
    }
    if (ticks_) {
        const WideInteger difference = WideInteger{*instant.ticks} - *ticks_;
        if (-exactDoubles <= difference && difference <= exactDoubles) {
            return unit_.inSeconds(static_cast<double>(difference));
        }
    }
    return secondsOfNanoseconds(instant.nanoseconds() - nanoseconds_);
}

}  // namespace vorm::evaluation
