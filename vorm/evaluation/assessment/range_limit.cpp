#include "range_limit.hpp"

namespace vorm::evaluation {

bool RangeLimit::isSurelyBefore(const RangeLimit& other) const {
    const auto* time = std::get_if<ExactTime>(&limit_);
    const auto* otherTime = std::get_if<ExactTime>(&other.limit_);
    return time != nullptr && otherTime != nullptr && *time < *otherTime;
}

ExactTime RangeLimit::firstTimeIn(const Recording& recording) const {
    return timeIn(recording, [](const WallClock& clock, const std::string& date) {
        return clock.timeOf(date).value();
    });
}

ExactTime RangeLimit::lastTimeIn(const Recording& recording) const {
    return timeIn(recording, [](const WallClock& clock, const std::string& date) {
        return clock.lastTimeOf(date).value();
    });
}

template <class OfDate>
ExactTime RangeLimit::timeIn(const Recording& recording, OfDate ofDate) const {
    if (const auto* time = std::get_if<ExactTime>(&limit_)) {
        return *time;
    }
    const auto& date = std::get<std::string>(limit_);
    if (!recording.clock) {
        throw error("'" + date + "' is a date, and the times of " + recording.name + " are none",
                    "write a number of seconds, as its times count them");
    }
    try {
        return ofDate(*recording.clock, date);
    } catch (const InputError& problem) {
        throw error(problem.problem().message, problem.problem().advice);
    }
}

InputError RangeLimit::error(std::string message, std::string advice) const {
    InputProblem problem = place_;
    problem.message = std::move(message);
    problem.advice = std::move(advice);
    return InputError(std::move(problem));
}

}  // namespace vorm::evaluation
