#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

namespace vorm::evaluation {

/// From the first to the last time of it, as traces count. Spans of doubles have a last time, since
/// doubles are discrete: what ends just before 3 ends at the double before 3.
struct CountedSpan {
    double first;
    double last;

    friend bool operator==(const CountedSpan&, const CountedSpan&) = default;
};

/// A stretch of time throughout which something is so: from its first time to the next one at which
/// it is not, or to the end of what was looked at. Both ends are equal for one instant. A stretch
/// that begins just after a time begins at that time.
struct TimeSpan {
    ExactTime start;
    ExactTime end;

    bool isInstant() const { return start == end; }
    ExactTime length() const { return end - start; }

    friend bool operator==(const TimeSpan&, const TimeSpan&) = default;
};

}  // namespace vorm::evaluation
