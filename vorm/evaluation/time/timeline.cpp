#include "timeline.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace vorm::evaluation {
namespace {

// The decimal with the fewest digits behind the point that stands for the same double. A whole tick
// stands for some doubles beside it, too: what just begins after it may only just have begun there.
ExactTime shortestDecimal(double ticks, double step, ExactTime tick) {
    const double whole = std::floor(ticks);
    const double fraction = ticks - whole;
    // Numbers of ticks are below 1e38, as ExactTime ends there.
    const ExactTime wholeTicks = static_cast<WideInteger>(whole) * tick;
    double tolerance = std::max(1.5 * step, std::min(8.0 * step, 0.25));
    double scale = 1;
    for (WideInteger unit = tick.attoseconds();; unit /= 10, scale *= 10) {
        const double digits = std::nearbyint(fraction * scale);
        if (std::fabs(digits - fraction * scale) <= tolerance * scale || unit % 10 != 0) {
            return wholeTicks + ExactTime(static_cast<WideInteger>(digits) * unit);
        }
        // Rounding to the count and to its steps.
        tolerance = 0.75 * step;
    }
}

// The nearest double, or one beside it: an exact conversion takes longer.
double roughly(WideInteger number) {
    const auto low = static_cast<std::int64_t>(number);
    const auto high = static_cast<std::int64_t>((number - low) >> 64);
    return static_cast<double>(high) * 0x1p64 + static_cast<double>(low);
}

// The quotient, where it is a whole number of less than 50 bits. Doubles find that one much faster
// than a division of wide integers does.
std::optional<double> wholeQuotient(WideInteger dividend, WideInteger divisor) {
    constexpr double most = 0x1p50;
    const double quotient = roughly(dividend) / roughly(divisor);
    if (!(std::fabs(quotient) < most)) {
        return std::nullopt;
    }
    // No bit behind the point is left beside this number.
    constexpr double rounder = 0x1.8p52;
    const double whole = (quotient + rounder) - rounder;
    return static_cast<std::int64_t>(whole) * divisor == dividend ? std::optional(whole)
                                                                  : std::nullopt;
}

}  // namespace

Timeline Timeline::over(double first, double last) const {
    // Room for windows and shifts on both sides, half as long as the recording at least.
    const double span = std::max(last - first, 1.0);
    constexpr int leastExponent = 32;  // steps below a femtosecond serve nobody
    const int exponent = std::max(leastExponent, std::ilogb(span) + 2);
    const double begin = std::ldexp(1.0, exponent);
    Timeline placed = *this;
    placed.step_ = std::ldexp(1.0, exponent - 52);
    // The bias is a whole number of ticks and of steps.
    const double grain = std::max(1.0, placed.step_);
    placed.bias_ = begin + grain * std::ceil(((begin - span) / 2 - first) / grain);
    return placed;
}

double Timeline::ticksIn(ExactTime length) const {
    const WideInteger tick = tick_.attoseconds();
    if (const auto ticks = wholeQuotient(length.attoseconds(), tick)) [[likely]] {
        return *ticks;
    }
    const WideInteger whole = length.attoseconds() / tick;
    const WideInteger rest = length.attoseconds() - whole * tick;
    if (rest == 0) {
        return static_cast<double>(whole);
    }
    constexpr int bits = 63;  // behind the binary point
    constexpr WideInteger most = WideInteger{1} << bits;
    constexpr auto scale = static_cast<double>(most);
    if (whole != 0 && -most < whole && whole < most) {
        // More bits than a double has, the last one set where any follow: rounding these is
        // rounding the exact quotient.
        const bool isNegative = rest < 0;
        const WideInteger dividend = (isNegative ? -rest : rest) << bits;
        const WideInteger quotient = dividend / tick | (dividend % tick != 0 ? 1 : 0);
        const WideInteger fixed = whole * most + (isNegative ? -quotient : quotient);
        return static_cast<double>(fixed) / scale;
    }
    // A second has the zeros of the attoseconds that a tick lacks.
    return ExactTime(length.attoseconds() * (second.attoseconds() / tick)).seconds();
}

double Timeline::counted(ExactTime time) const {
    constexpr double exactTicks = 0x1p53;
    const double ticks = at(time);
    if (std::fabs(ticks) > exactTicks) [[unlikely]] {
        const ExactTime difference = static_cast<WideInteger>(ticks) * tick_ - (time - zero_);
        if (difference >= tick_ || -difference >= tick_) {
            failForSpan(std::nextafter(std::fabs(ticks), HUGE_VAL) - std::fabs(ticks));
        }
    }
    return ticks;
}

void Timeline::failForSpan(double step) const {
    failAt({},
           "the recording is too long for its times: doubles tell times apart by " +
               timeWithUnit(lengthOf(step)) + " over its length, and some of its times are finer",
           "count in a coarser unit, in which finer digits are rounded: [recording] resolution = "
           "\"us\"; or assess it in parts");
}

ExactTime Timeline::timeAt(double counted) const {
    return zero_ + lengthOf(counted - bias_);
}

ExactTime Timeline::lengthOf(double ticks) const {
    return step_ > 0 ? shortestDecimal(ticks, step_, tick_)
                     : ExactTime::of(shortestNumber(ticks), tick_).value_or(ExactTime());
}

}  // namespace vorm::evaluation
