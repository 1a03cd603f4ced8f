#include "time_zone.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <date/tz.h>

#include <algorithm>
#include <exception>
#include <vector>

namespace vorm::evaluation {
namespace {

constexpr const char* installTheData = "install the package tzdata";

// What the system calls its own zone says something else on each system.
constexpr std::string_view zoneOfTheSystem = "localtime";

// Throws InputError where the system has none.
std::vector<std::string> zoneNames() {
    std::vector<std::string> names;
    try {
        for (const date::time_zone& zone : date::get_tzdb().zones) {
            if (zone.name() != zoneOfTheSystem) {
                names.push_back(zone.name());
            }
        }
    } catch (const std::exception&) {
        names.clear();
    }
    if (names.empty()) {
        failAt({}, "this system has no time zone database", installTheData);
    }
    return names;
}

ExactTime exact(std::chrono::seconds seconds) {
    return WideInteger{seconds.count()} * second;
}

// The beginning of a year in UTC, or anywhere as clocks show it.
std::chrono::seconds yearBegins(int year) {
    return date::sys_days(date::year(year) / 1 / 1).time_since_epoch();
}

// Changes that a rule makes for ever are listed up to this year, and known to nobody after it.
constexpr int lastYearOfRules = 2037;

// Of a database that leaves all changes that a rule makes to those who know rules, zones would seem
// to have stopped changing long ago.
void checkThatChangesAreListed() {
    const date::time_zone* const zone = date::locate_zone("America/New_York");
    const date::sys_seconds winter(yearBegins(lastYearOfRules));
    if (zone->get_info(winter).offset == zone->get_info(winter + date::days(180)).offset) {
        failAt({}, "the time zone database of this system lists no changes of clocks",
               installTheData);
    }
}

bool isUnknown(const date::sys_info& info) {
    return info.begin.time_since_epoch() >= yearBegins(lastYearOfRules) &&
           info.end.time_since_epoch() > yearBegins(10'000);
}

date::local_seconds wholeSeconds(ExactTime local) {
    const WideInteger seconds = local.attoseconds() / second.attoseconds();
    const int roundedUp = seconds * second > local ? 1 : 0;
    return date::local_seconds(
        std::chrono::seconds(static_cast<std::int64_t>(seconds) - roundedUp));
}

[[noreturn]] void failFor(const std::string& zone, const char* problem, date::local_seconds time,
                          const char* twice = "") {
    failAt({}, "clocks in " + zone + problem + date::format("%F %T", time) + twice,
           "write times in UTC, or how far they are from it: 2021-06-30 09:39:19+02:00");
}

}  // namespace

TimeZone TimeZone::called(std::string_view name) {
    const std::vector<std::string> names = zoneNames();
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        const std::string meant = suggestion(name, names);
        failAt({}, "unknown time zone " + shown(name),
               meant.empty() ? "zones have names such as 'Europe/Berlin'" : meant);
    }
    checkThatChangesAreListed();
    return TimeZone(std::string(name));
}

ExactTime TimeZone::utcOf(ExactTime local) const {
    if (local < last_.first || local >= last_.end) {
        last_ = around(local);
    }
    return local - last_.ahead;
}

std::optional<TimeZone::Shown> TimeZone::shownAt(ExactTime utc) const {
    const date::time_zone* const zone = date::locate_zone(name_);
    const date::sys_seconds instant(wholeSeconds(utc).time_since_epoch());
    const date::sys_info info = zone->get_info(instant);
    if (isUnknown(info)) {
        return std::nullopt;
    }
    const date::local_seconds local(instant.time_since_epoch() + info.offset);
    return Shown{exact(info.offset), zone->get_info(local).result == date::local_info::ambiguous};
}

std::vector<TimeZone::Offset> TimeZone::offsets(ExactTime first, ExactTime last) const {
    const date::time_zone* const zone = date::locate_zone(name_);
    std::chrono::seconds since = wholeSeconds(first).time_since_epoch();
    std::vector<Offset> all;
    while (exact(since) <= last) {
        const date::sys_info info = zone->get_info(date::sys_seconds(since));
        if (isUnknown(info)) {
            return {};
        }
        all.push_back({exact(since), exact(info.offset)});
        since = info.end.time_since_epoch();
    }
    return all;
}

TimeZone::Steady TimeZone::around(ExactTime local) const {
    if (local < exact(yearBegins(1)) || local >= exact(yearBegins(10'000))) {
        failAt({}, "the local time " + local.text() + " is not within the years 1 to 9999");
    }
    const auto time = wholeSeconds(local);
    const date::local_info info = date::locate_zone(name_)->get_info(time);
    if (info.result == date::local_info::ambiguous) {
        failFor(name_, " show ", time, " twice");
    }
    if (info.result == date::local_info::nonexistent) {
        failFor(name_, " never show ", time);
    }
    if (isUnknown(info.first)) {
        failFor(name_, " may be put forward or back before ", time);
    }
    // What clocks show twice or never is within a day of the change.
    const ExactTime ahead = exact(info.first.offset);
    return {exact(info.first.begin.time_since_epoch()) + ahead + oneDay,
            exact(info.first.end.time_since_epoch()) + ahead - oneDay, ahead};
}

}  // namespace vorm::evaluation
