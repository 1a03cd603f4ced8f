#include "support/thrown.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>
#include <vorm/evaluation/time/time_zone.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <time.h>

#include <cstdlib>
#include <set>
#include <string>

namespace vorm::evaluation {
namespace {

ExactTime timeOf(const std::string& text) {
    return read(text, TimeNotation::Iso).value().time;
}

std::string messageFor(const TimeZone& zone, ExactTime local) {
    return vorm::test::thrown<InputError>([&] { zone.utcOf(local); }).problem().message;
}

TEST(TimeZone, TellsUtcAroundEachChangeOfItsClocks) {
    struct Case {
        const char* zone;
        const char* local;
        const char* utc;
    };
    constexpr Case cases[]{{"UTC", "2021-06-30 09:39:19.25", "2021-06-30 09:39:19.25"},
                           {"UTC", "9999-12-31 23:59:59", "9999-12-31 23:59:59"},
                           {"Europe/Berlin", "2021-03-28 01:59:59.999", "2021-03-28 00:59:59.999"},
                           {"Europe/Berlin", "2021-03-28 03:00", "2021-03-28 01:00"},
                           {"Europe/Berlin", "2021-10-31 01:59:59.999", "2021-10-30 23:59:59.999"},
                           {"Europe/Berlin", "2021-10-31 03:00", "2021-10-31 02:00"},
                           {"America/New_York", "2021-03-14 01:59:59", "2021-03-14 06:59:59"},
                           {"America/New_York", "2021-03-14 03:00", "2021-03-14 07:00"},
                           {"America/New_York", "2021-11-07 00:59:59", "2021-11-07 04:59:59"},
                           {"America/New_York", "2021-11-07 02:00", "2021-11-07 07:00"},
                           {"America/New_York", "1969-12-31 18:59:59.5", "1969-12-31 23:59:59.5"},
                           {"Asia/Kolkata", "2021-06-30 05:00", "2021-06-29 23:30"},
                           {"Australia/Lord_Howe", "2021-04-04 02:00", "2021-04-03 15:30"},
                           {"Pacific/Apia", "2011-12-31 00:00", "2011-12-30 10:00"}};
    for (const auto& [zone, local, utc] : cases) {
        EXPECT_EQ(TimeZone::called(zone).utcOf(timeOf(local)).text(), timeOf(utc).text())
            << zone << ' ' << local;
    }
}

TEST(TimeZone, RefusesTimesThatAreTwiceOrNever) {
    struct Case {
        const char* zone;
        const char* local;
        const char* message;
    };
    constexpr Case cases[]{
        {"Europe/Berlin", "2021-10-31 02:00",
         "clocks in Europe/Berlin show 2021-10-31 02:00:00 twice"},
        {"Europe/Berlin", "2021-10-31 02:59:59.9",
         "clocks in Europe/Berlin show 2021-10-31 02:59:59 twice"},
        {"Europe/Berlin", "2021-03-28 02:00",
         "clocks in Europe/Berlin never show 2021-03-28 02:00:00"},
        {"Europe/Berlin", "2021-03-28 02:59:59.9",
         "clocks in Europe/Berlin never show 2021-03-28 02:59:59"},
        {"America/New_York", "1969-10-26 01:59:59.5",
         "clocks in America/New_York show 1969-10-26 01:59:59 twice"},
        {"Australia/Lord_Howe", "2021-04-04 01:45",
         "clocks in Australia/Lord_Howe show 2021-04-04 01:45:00 twice"},
        {"Pacific/Apia", "2011-12-30 12:00",
         "clocks in Pacific/Apia never show 2011-12-30 12:00:00"},
        // The rule goes on, and its changes are not known.
        {"Europe/Berlin", "2040-07-01",
         "clocks in Europe/Berlin may be put forward or back before 2040-07-01 00:00:00"}};
    for (const auto& [zone, local, message] : cases) {
        EXPECT_EQ(messageFor(TimeZone::called(zone), timeOf(local)), message);
    }
    const TimeZone zone = TimeZone::called("Europe/Berlin");
    EXPECT_EQ(messageFor(zone, 10'000'000'000'000'000'000ULL * second),
              "the local time 10000000000000000000 is not within the years 1 to 9999");
    EXPECT_EQ(messageFor(zone, timeOf("0001-01-01") - second),
              "the local time -62135596801 is not within the years 1 to 9999");
}

TEST(TimeZone, IsCalledByItsNameOnly) {
    const auto problemOf = [](const char* name) {
        const InputProblem problem =
            vorm::test::thrown<InputError>([name] { TimeZone::called(name); }).problem();
        return problem.message + ": " + problem.advice;
    };
    EXPECT_EQ(TimeZone::called("Europe/Berlin").name(), "Europe/Berlin");
    EXPECT_EQ(problemOf("Europe/Berln")
                  .find("unknown time zone 'Europe/Berln': did you mean 'Europe/Berlin'"),
              0U);
    for (const char* name : {"", "Middle Earth", "localtime", "../zoneinfo/UTC", "posixrules"}) {
        EXPECT_EQ(problemOf(name), "unknown time zone '" + std::string(name) +
                                       "': zones have names such as 'Europe/Berlin'");
    }
}

// The C library's zone while this lives.
class CLibraryZone {
public:
    explicit CLibraryZone(const std::string& name) {
        ::setenv("TZ", name.c_str(), 1);
        ::tzset();
    }
    ~CLibraryZone() {
        ::unsetenv("TZ");
        ::tzset();
    }
    CLibraryZone(const CLibraryZone&) = delete;
    CLibraryZone& operator=(const CLibraryZone&) = delete;

    time_t localOf(time_t utc) const {
        tm fields{};
        ::localtime_r(&utc, &fields);
        return utc + fields.tm_gmtoff;
    }

    // All times at which clocks show that one; offsets differ by whole quarters of an hour.
    std::set<time_t> timesOf(time_t local) const {
        constexpr time_t quarter = 900;
        std::set<time_t> times;
        for (time_t utc = local - 15 * 3600; utc <= local + 15 * 3600; utc += quarter) {
            if (localOf(utc) == local) {
                times.insert(utc);
            }
        }
        return times;
    }
};

// In any order, so that what one time leaves behind serves another one.
RC_GTEST_PROP(TimeZone, AgreesWithTheCLibrary, ()) {
    const auto name = *rc::gen::element<std::string>(
        "Europe/Berlin", "America/New_York", "Asia/Kolkata", "Australia/Lord_Howe",
        "Asia/Kathmandu", "Africa/Casablanca", "America/Sao_Paulo", "Pacific/Apia", "UTC");
    const CLibraryZone oracle(name);
    const TimeZone zone = TimeZone::called(name);
    time_t from = 0;
    for (int i = 0; i < 30; ++i) {
        constexpr time_t hour = 3600;
        const bool isFar = i % 5 == 0;
        // Of 1990 to 2036, and of half hours in some days beside the last one.
        from = isFar ? *rc::gen::inRange<time_t>(631'152'000, 2'082'758'400)
                     : from + *rc::gen::inRange<time_t>(-100, 100) * hour / 2;
        const time_t local = from;
        const std::set<time_t> times = oracle.timesOf(local);
        RC_LOG() << name << ' ' << local << ' ' << times.size() << "\n";
        if (times.size() == 1) {
            RC_ASSERT(zone.utcOf(local * second) == *times.begin() * second);
        } else {
            RC_ASSERT_THROWS_AS(zone.utcOf(local * second), InputError);
        }
    }
}

// Each quarter of an hour of a year with both changes.
TEST(TimeZone, AgreesWithTheCLibraryThroughoutAYear) {
    for (const char* name : {"Europe/Berlin", "America/New_York", "Australia/Lord_Howe"}) {
        const CLibraryZone oracle(name);
        const TimeZone zone = TimeZone::called(name);
        int refused = 0;
        for (time_t local = 1'609'459'200; local < 1'640'995'200; local += 900) {
            const std::set<time_t> times = oracle.timesOf(local);
            try {
                const ExactTime utc = zone.utcOf(local * second);
                ASSERT_EQ(times.size(), 1U) << name << ' ' << local;
                ASSERT_EQ(utc, *times.begin() * second) << name << ' ' << local;
            } catch (const InputError&) {
                ASSERT_NE(times.size(), 1U) << name << ' ' << local;
                ++refused;
            }
        }
        EXPECT_EQ(refused, std::string(name) == "Australia/Lord_Howe" ? 4 : 8) << name;
    }
}

}  // namespace
}  // namespace vorm::evaluation
