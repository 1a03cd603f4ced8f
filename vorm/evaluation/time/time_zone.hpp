#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorm::evaluation {

/// The rules of local time somewhere: a zone of the IANA time zone database as the system has it.
/// Threads use copies of their own, since each remembers what it looked up last.
class TimeZone {
public:
    /// The zone of that name: `Europe/Berlin`, `UTC`. Throws InputError, which names no place,
    /// where the system has none.
    static TimeZone called(std::string_view name);

    /// The time in UTC at which clocks of the zone show `local`, both from 1970-01-01 on. Throws
    /// InputError, which names no place, for a time that clocks show twice or never because they
    /// are put back or forward, and for one that the system's rules do not reach.
    ExactTime utcOf(ExactTime local) const;

    /// How clocks of the zone show an instant.
    struct Shown {
        ExactTime ahead;  ///< of UTC
        bool isTwice;     ///< whether they show the same time at another instant
    };

    /// For an instant within the years 1 to 9999 of UTC; nothing where the system's rules do not
    /// reach it.
    std::optional<Shown> shownAt(ExactTime utc) const;

    /// Clocks that stay ahead of UTC by the same.
    struct Offset {
        ExactTime since;  ///< in UTC, from 1970-01-01 on
        ExactTime ahead;
    };

    /// Those from one instant to another, both within the years 1 to 9999 of UTC, the first since
    /// the second in which `first` lies. Empty where the system's rules do not reach one of them.
    /// Linear in their number.
    std::vector<Offset> offsets(ExactTime first, ExactTime last) const;

    const std::string& name() const { return name_; }

private:
    /// Local times at which clocks of the zone are ahead of UTC by the same.
    struct Steady {
        ExactTime first;
        ExactTime end;  ///< the first one after it
        ExactTime ahead;
    };

    explicit TimeZone(std::string name) : name_(std::move(name)) {}

    /// How far clocks are ahead at that time, and other times at which they certainly are.
    Steady around(ExactTime local) const;

    std::string name_;
    mutable Steady last_;
};

}  // namespace vorm::evaluation
