#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <string>
#include <utility>
#include <variant>

namespace vorm::evaluation {

/// Where the range of an assessment begins or ends: a time, or a date, which is a time of
/// recordings that have dates only.
class RangeLimit {
public:
    /// `place` is where it stands, for messages.
    RangeLimit(ExactTime time, InputProblem place) : limit_(time), place_(std::move(place)) {}

    /// A date as WallClock reads it.
    RangeLimit(std::string date, InputProblem place)
        : limit_(std::move(date)), place_(std::move(place)) {}

    /// Whether it is before the other one whatever the recording; of dates nobody knows.
    bool isSurelyBefore(const RangeLimit& other) const;

    /// The time in a recording at which a range begins. Throws InputError, placed in the file, for
    /// a date where the recording has none, and for one that its clocks show twice or never.
    ExactTime firstTimeIn(const Recording& recording) const;

    /// The time at which a range ends: of a date without a time of day the end of that day. Throws
    /// as firstTimeIn does.
    ExactTime lastTimeIn(const Recording& recording) const;

    /// That something is wrong with it, placed in the file.
    InputError error(std::string message, std::string advice = {}) const;

private:
    template <class OfDate>
    ExactTime timeIn(const Recording& recording, OfDate ofDate) const;

    std::variant<ExactTime, std::string> limit_;
    InputProblem place_;
};

}  // namespace vorm::evaluation
