#include "wall_clock.hpp"

#include <vorm/evaluation/time/rounded_time.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <date/date.h>

namespace vorm::evaluation {
namespace {

constexpr ExactTime yearOne = -62'135'596'800 * second;
constexpr ExactTime yearTenThousand = 253'402'300'800 * second;

// Whether it is within the years 1 to 9999 wherever on earth.
bool isShown(ExactTime utc) {
    return utc >= yearOne + oneDay && utc < yearTenThousand - oneDay;
}

// `2026-11-22 10:30:00.25`
std::string textOf(ExactTime local) {
    const WideInteger begun = local.attoseconds() / second.attoseconds();
    const WideInteger seconds = begun * second > local ? begun - 1 : begun;
    const date::local_seconds shown(std::chrono::seconds(static_cast<std::int64_t>(seconds)));
    const std::string fraction = (local - seconds * second).text();
    return date::format("%F %T", shown) + fraction.substr(1);
}

// `+02:00`
std::string offsetText(ExactTime ahead) {
    const auto minutes = static_cast<int>(ahead.attoseconds() / (60 * second).attoseconds());
    const auto twoDigits = [](int number) {
        return (number < 10 ? "0" : "") + std::to_string(number);
    };
    const int length = std::abs(minutes);
    return (minutes < 0 ? "-" : "+") + twoDigits(length / 60) + ":" + twoDigits(length % 60);
}

}  // namespace

std::string WallClock::dateTimeOf(ExactTime time, int digits) const {
    const ExactTime utc = rounded(zero_ + time, digits);
    if (!isShown(utc)) {
        return "";
    }
    if (!zone_) {
        return textOf(utc);
    }
    const auto shown = zone_->shownAt(utc);
    if (!shown) {
        return "";
    }
    return textOf(utc + shown->ahead) + (shown->isTwice ? offsetText(shown->ahead) : "");
}

std::optional<ExactTime> WallClock::timeOf(std::string_view date) const {
    const auto local = read(date, TimeNotation::Iso);
    if (!local) {
        return std::nullopt;
    }
    return (local->hasOffset || !zone_ ? local->time : zone_->utcOf(local->time)) - zero_;
}

std::optional<ExactTime> WallClock::lastTimeOf(std::string_view date) const {
    const std::optional<ExactTime> first = timeOf(date);
    constexpr std::size_t lengthOfDay = std::string_view("2026-11-22").size();
    if (!first || date.size() != lengthOfDay) {
        return first;
    }
    const auto local = read(date, TimeNotation::Iso)->time + oneDay;
    return (zone_ ? zone_->utcOf(local) : local) - zero_ - nanosecond;
}

std::vector<TimeZone::Offset> WallClock::offsets(ExactTime from, ExactTime to) const {
    const ExactTime first = zero_ + from - oneDay;
    const ExactTime last = zero_ + to + oneDay;
    if (!isShown(first) || !isShown(last)) {
        return {};
    }
    return zone_ ? zone_->offsets(first, last)
                 : std::vector<TimeZone::Offset>{{first, ExactTime()}};
}

}  // namespace vorm::evaluation
