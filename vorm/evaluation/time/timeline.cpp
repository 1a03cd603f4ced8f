#include "timeline.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <algorithm>
#include <cmath>

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

}  // namespace

Timeline Timeline::over(double first, double last, double reach) const {
    // Room for windows and shifts on both sides: as long as the recording and half of it again, or,
    // where that would take exactness from whole ticks, half as long.
    const double span = std::max(last - first, 1.0);
    // Room for some seconds is there for the asking; of coarse ticks these are few, and their steps
    // would be coarse, too.
    constexpr int exponentOfSomeSeconds = 34;
    const int leastExponent = std::min(
        exponentOfSomeSeconds, std::ilogb(std::ldexp(ticksIn(nanosecond), exponentOfSomeSeconds)));
    constexpr int roomyExponent = 48;
    const int tight = std::ilogb(span) + 2;
    const int roomy = std::max({leastExponent, tight + 1, std::ilogb(span + 2 * reach) + 1});
    const int exponent = std::max(tight, std::min(roomy, roomyExponent));
    const double begin = std::ldexp(1.0, exponent);
    Timeline placed = *this;
    placed.step_ = std::ldexp(1.0, exponent - 52);
    // The bias is a whole number of ticks and of steps.
    const double grain = std::max(1.0, placed.step_);
    placed.bias_ = begin + grain * std::ceil(((begin - span) / 2 - first) / grain);
    return placed;
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
    const auto coarser = std::find_if(timeUnits.begin(), timeUnits.end(),
                                      [&](const TimeUnit& unit) { return unit.length > tick_; });
    const std::string advice = tick_ > nanosecond || coarser->length > second
                                   ? "its times are finer than the resolution: leave it out, or "
                                     "assess the recording in parts"
                                   : "count in a coarser unit, in which finer digits are rounded: "
                                     "[recording] resolution = "
                                     "\"" +
                                         std::string(coarser->name) + "\"; or assess it in parts";
    const auto length = ExactTime::of(shortestNumber(step), tick_);
    failAt({},
           "the recording is too long for its times: doubles tell times apart by " +
               (length ? timeWithUnit(*length) : shortestNumber(step) + " ticks") +
               " over its length, and some of its times are finer",
           advice);
}

ExactTime Timeline::timeAt(double counted) const {
    return zero_ + lengthOf(counted - bias_);
}

Beside Timeline::besideOf(double counted) const {
    const double exact = at(timeAt(counted));
    return counted < exact ? Beside::JustBefore : counted > exact ? Beside::JustAfter : Beside::At;
}

ExactTime Timeline::lengthOf(double ticks) const {
    return step_ > 0 ? shortestDecimal(ticks, step_, tick_)
                     : ExactTime::of(shortestNumber(ticks), tick_).value_or(ExactTime());
}

}  // namespace vorm::evaluation
