#include "time_text.hpp"

#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/timeline.hpp>

namespace vorm::evaluation {

std::string timeWithUnit(ExactTime length) {
    if (length == ExactTime()) {
        return "0";
    }
    // Of equally short ones a whole number, and else the longer unit.
    const auto cost = [](const std::string& number) {
        return 2 * number.size() + (number.find('.') == std::string::npos ? 0U : 1U);
    };
    std::string shortest;
    std::string_view itsUnit;
    for (const TimeUnit& unit : timeUnits) {
        const auto number = length.textIn(unit.length);
        if (number && (shortest.empty() || cost(*number) <= cost(shortest))) {
            shortest = *number;
            itsUnit = unit.name;
        }
    }
    return shortest + " " + std::string(itsUnit);
}

std::string TimeTexts::of(double ticks) const {
    const auto written = written_.find(ticks);
    if (written != written_.end()) {
        return written->second;
    }
    // What no ExactTime holds stays the number of ticks that it is.
    const std::string number = shortestNumber(ticks);
    const auto time = ExactTime::of(number, tick_);
    return time && Timeline(tick_).ticksIn(*time) == ticks ? timeWithUnit(*time) : number;
}

}  // namespace vorm::evaluation
