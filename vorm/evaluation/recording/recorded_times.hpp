#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/time/rounded_time.hpp>

#include <optional>

namespace vorm::evaluation {

/// What people read the times of a recording by.
struct RecordedTimes {
    std::optional<WallClock> clock;  ///< of a recording with dates
    /// Behind the point of seconds: those that the times of its samples have, down to a tenth of
    /// the least distance between two of them; milliseconds at least.
    int digits = allDigits;
};

/// Looks at some of the samples, at the same ones each time.
RecordedTimes recordedTimes(const Recording& recording);

}  // namespace vorm::evaluation
