#include "range_limit.hpp"

#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/time/clock_text.hpp>
#include <vorm/evaluation/time/rounded_time.hpp>

namespace vorm::evaluation {

bool RangeLimit::isSurelyBefore(const RangeLimit& other) const {
    const auto* time = std::get_if<ExactTime>(&limit_);
    const auto* otherTime = std::get_if<ExactTime>(&other.limit_);
    return time != nullptr && otherTime != nullptr && *time < *otherTime;
}

ExactTime RangeLimit::firstTimeIn(const Recording& recording) const {
    return timeIn(recording, &WallClock::timeOf);
}

ExactTime RangeLimit::lastTimeIn(const Recording& recording) const {
    return timeIn(recording, &WallClock::lastTimeOf);
}

ExactTime RangeLimit::timeIn(const Recording& recording, TimeOfDate timeOfDate) const {
    if (const auto* time = std::get_if<ExactTime>(&limit_)) {
        return *time;
    }
    return clockTimeIn(recording, std::get<std::string>(limit_), timeOfDate);
}

ExactTime RangeLimit::clockTimeIn(const Recording& recording, const std::string& written,
                                  TimeOfDate timeOfDate) const {
    const bool needsDay = isTimeOfDay(written);
    if (!recording.clock) {
        throw error("'" + written + "' is a " + (needsDay ? "time of day" : "date") +
                        ", and the times of " + recording.name + " are no dates",
                    "write a number of seconds, as its times count them");
    }
    const std::string date = needsDay ? dayOf(recording, written) + " " + written : written;
    try {
        return ((*recording.clock).*timeOfDate)(date).value();
    } catch (const InputError& problem) {
        throw error(problem.problem().message, problem.problem().advice);
    }
}

// The day that clocks show throughout, `2026-11-22`.
std::string RangeLimit::dayOf(const Recording& recording, const std::string& timeOfDay) const {
    std::vector<const Signal*> signals;
    for (const Signal& signal : recording.signals) {
        signals.push_back(&signal);
    }
    const auto known = knownRange(signals);
    const auto dayAt = [&](double counted) {
        constexpr std::size_t dayLength = std::string_view("2026-11-22").size();
        const ExactTime time = recording.timeline.timeAt(counted);
        return recording.clock->dateTimeOf(time, allDigits).substr(0, dayLength);
    };
    const std::string first = known ? dayAt(known->first) : "";
    const std::string last = known ? dayAt(known->last) : "";
    if (first.empty() || first != last) {
        throw error("'" + timeOfDay + "' is a time of day without a date, and " +
                        (first.empty() || last.empty()
                             ? "nothing tells the day of " + recording.name
                             : recording.name + " reaches from " + first + " to " + last),
                    "write the date in front of it: \"" + (first.empty() ? "2026-11-22" : first) +
                        " " + timeOfDay + "\"");
    }
    return first;
}

InputError RangeLimit::error(std::string message, std::string advice) const {
    InputProblem problem = place_;
    problem.message = std::move(message);
    problem.advice = std::move(advice);
    return InputError(std::move(problem));
}

}  // namespace vorm::evaluation
