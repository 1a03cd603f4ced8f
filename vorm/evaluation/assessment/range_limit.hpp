#pragma once

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace vorm::evaluation {

/// Where the range of an assessment begins or ends: a time, or a date or a time of day, which are
/// times of recordings that have dates only.
class RangeLimit {
public:
    /// `place` is where it stands, for messages.
    RangeLimit(ExactTime time, InputProblem place) : limit_(time), place_(std::move(place)) {}

    /// A date as WallClock reads it, or a time of day of the one that all signals lie on.
    RangeLimit(std::string written, InputProblem place)
        : limit_(std::move(written)), place_(std::move(place)) {}

    /// Whether it is before the other one whatever the recording; of what clocks show nobody knows.
    bool isSurelyBefore(const RangeLimit& other) const;

    /// The time in a recording at which a range begins. Throws InputError, placed in the file, for
    /// a date or a time of day where the recording has no dates, for one that its clocks show twice
    /// or never, and for a time of day where its signals lie on several days.
    ExactTime firstTimeIn(const Recording& recording) const;

    /// The time at which a range ends: of a date without a time of day the end of that day. Throws
    /// as firstTimeIn does.
    ExactTime lastTimeIn(const Recording& recording) const;

    /// That something is wrong with it, placed in the file.
    InputError error(std::string message, std::string advice = {}) const;

private:
    using TimeOfDate = std::optional<ExactTime> (WallClock::*)(std::string_view) const;
    ExactTime timeIn(const Recording& recording, TimeOfDate timeOfDate) const;
    ExactTime clockTimeIn(const Recording& recording, const std::string& written,
                          TimeOfDate timeOfDate) const;
    std::string dayOf(const Recording& recording, const std::string& timeOfDay) const;

    std::variant<ExactTime, std::string> limit_;
    InputProblem place_;
};

}  // namespace vorm::evaluation
