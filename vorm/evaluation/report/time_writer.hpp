#pragma once

#include <vorm/evaluation/recording/recorded_times.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// How a report writes the times of a recording: in seconds, and beside them in brackets as dates
/// where the recording has dates.
class TimeWriter {
public:
    /// In full and without dates.
    TimeWriter() = default;

    /// In full.
    explicit TimeWriter(std::optional<WallClock> clock) : times_{std::move(clock), allDigits} {}

    /// Rounded to the digits of the recording.
    explicit TimeWriter(RecordedTimes times) : times_(std::move(times)) {}

    /// With as many more digits as tell these times apart. Their number times its logarithm.
    TimeWriter tellingApart(std::vector<ExactTime> times) const;

    /// `4.5`
    std::string number(ExactTime time) const;
    /// With zeros up to the last digit, `4.500`, so that points stand below each other; of times
    /// that are written in full as number.
    std::string alignedNumber(ExactTime time) const;
    /// `4.5`, `just after 4.5`
    std::string number(ExactTime time, Beside beside) const;
    /// `2026-11-22 10:30:00.25`; empty for a recording without dates.
    std::string date(ExactTime time) const;
    /// `4.5 s (2026-11-22 10:30:00.25)`
    std::string moment(ExactTime time) const;
    /// `at 4.5 s`, `just after 4.5 s`
    std::string instant(ExactTime time, Beside beside = Beside::At) const;
    /// `from 3 s to 4.5 s (2026-11-22 10:30:00 to 10:30:01.5)`, or `at 3 s` for one instant.
    std::string interval(const TimeSpan& span) const;

private:
    RecordedTimes times_;
};

}  // namespace vorm::evaluation
