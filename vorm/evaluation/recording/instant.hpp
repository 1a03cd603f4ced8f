#pragma once

// Times as recordings write them, exact where they are integers.

#include <vorm/evaluation/text/time_unit.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace vorm::evaluation {

__extension__ typedef __int128 WideInteger;

/// A time in some unit, counted from wherever the recording counts.
struct Instant {
    TimeUnit unit;
    /// The number as an integer; nothing where it is none, and `number` is all there is.
    std::optional<std::int64_t> ticks;
    double number = 0;

    WideInteger nanoseconds() const;  ///< where it has ticks
    double seconds() const;
    std::string text() const;
};

/// Whether a is before b: exactly where both have ticks.
bool isBefore(const Instant& a, const Instant& b);

/// The nearest double to a number of nanoseconds in seconds.
double secondsOfNanoseconds(WideInteger nanoseconds);

/// The instant that is time 0, made ready for instants of one unit.
class Origin {
public:
    Origin(const Instant& instant, const TimeUnit& unit);

    /// The time from the origin on, in seconds. Rounded once where both have ticks; else the
    /// difference of the two numbers in the instants' unit.
    double secondsTo(const Instant& instant) const;

private:
    TimeUnit unit_;
    bool isExact_;
    WideInteger nanoseconds_ = 0;
    std::optional<std::int64_t> ticks_;  // where the origin has the same unit
    double number_;
};

}  // namespace vorm::evaluation
