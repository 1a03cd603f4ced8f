#pragma once

#include <vorm/evaluation/time/exact_time.hpp>
#include <vorm/evaluation/time/time_zone.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// What calendars and clocks show at the times of a recording that has dates.
class WallClock {
public:
    /// `zero` is the instant of time 0, from 1970-01-01 on in UTC, where clocks show UTC without a
    /// zone.
    explicit WallClock(ExactTime zero, std::optional<TimeZone> zone = std::nullopt)
        : zero_(zero), zone_(std::move(zone)) {}

    /// `2026-11-22 10:30:00.25`, rounded to so many digits of a second, halves to the later time,
    /// and written without zeros at the end. A time that clocks show twice is followed by how far
    /// it is from UTC. Empty for a time outside the years 1 to 9999, or one that the system does
    /// not know the rules of the zone for.
    std::string dateTimeOf(ExactTime time, int digits) const;

    /// The time at which clocks show that, a date with or without a time of day: `2026-11-22`,
    /// `2026-11-22 10:30:00`, `2026-11-22T10:30Z`. Nothing for any other text. Throws InputError,
    /// which names no place, for what clocks of the zone show twice or never.
    std::optional<ExactTime> timeOf(std::string_view date) const;

    /// The last time that a date means, as the end of a range: that of the day, to the nanosecond,
    /// where it has no time of day, and else timeOf.
    std::optional<ExactTime> lastTimeOf(std::string_view date) const;

    /// The instant of a time, from 1970-01-01 on in UTC.
    ExactTime utcOf(ExactTime time) const { return zero_ + time; }

    /// How far clocks are ahead of UTC from a day before one time to a day after another: enough to
    /// tell of each time between them what clocks show, and whether they show it twice. Empty where
    /// dateTimeOf is, for one of all these times.
    std::vector<TimeZone::Offset> offsets(ExactTime from, ExactTime to) const;

    /// `Europe/Berlin`; `UTC` without a zone.
    std::string zoneName() const { return zone_ ? zone_->name() : "UTC"; }

private:
    ExactTime zero_;
    std::optional<TimeZone> zone_;
};

}  // namespace vorm::evaluation
