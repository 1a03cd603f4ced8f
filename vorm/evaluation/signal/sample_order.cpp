#include "sample_order.hpp"

namespace vorm::evaluation {

// Of a time that is not after the last one.
std::optional<SampleStep> SampleOrder::stepWithin(double time) const {
    const auto timeText = [this](double counted) {
        return rules_.timeline.timeAt(counted).text() + " s";
    };
    if (time < last_) {
        failAt({},
               "the time of " + rules_.subject + " goes back from " + timeText(last_) + " to " +
                   timeText(time),
               "samples stand in the order of their times");
    }
    if (rules_.equalTimes == EqualTimes::Refuse) {
        failAt({}, rules_.subject + " has a second sample at " + timeText(time),
               R"(say which one counts: equal_times = "first" or "last")");
    }
    return rules_.equalTimes == EqualTimes::Last ? std::optional(SampleStep::Again) : std::nullopt;
}

}  // namespace vorm::evaluation
