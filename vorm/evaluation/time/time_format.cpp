#include "time_format.hpp"

#include <vorm/evaluation/time/time_unit.hpp>

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr std::string_view readable = "aAbBCdDeFhHIklmMnpRStTyYz%";

// Calls visit(position of the `%`, conversion) for each conversion.
template <class Visit>
void forEachConversion(std::string_view format, Visit visit) {
    for (std::size_t at = format.find('%'); at < format.size(); at = format.find('%', at + 2)) {
        visit(at, at + 1 < format.size() ? format[at + 1] : '\0');
    }
}

bool isSeconds(char conversion) {
    return conversion == 'S' || conversion == 'T';
}

// Seconds since 1970 of the fields; nothing for a day that the month does not have, which timegm
// would take for one of the next month.
std::optional<ExactTime> timeOf(tm fields) {
    const int day = fields.tm_mday;
    if (fields.tm_sec > 60) {
        return std::nullopt;
    }
    // A leap second may belong to the next day.
    const WideInteger leapSecond = fields.tm_sec == 60 ? 1 : 0;
    fields.tm_sec -= static_cast<int>(leapSecond);
    const long offset = fields.tm_gmtoff;
    const auto seconds = static_cast<WideInteger>(::timegm(&fields));
    if (fields.tm_mday != day) {
        return std::nullopt;
    }
    return (seconds + leapSecond - offset) * second;
}

// Takes `.25` or `,25` from the front of a text, which it may change. Nothing for a point without
// digits.
std::optional<ExactTime> takeFraction(char*& text) {
    if (*text != '.' && *text != ',') {
        return ExactTime();
    }
    char* const point = text;
    *point = '.';
    do {
        ++text;
    } while (*text >= '0' && *text <= '9');
    constexpr ExactTime::Unit unit(second);
    return ExactTime::of({point, static_cast<std::size_t>(text - point)}, unit);
}

}  // namespace

std::optional<std::string> TimeFormat::unreadableConversion(const std::string& format) {
    std::optional<std::string> found;
    forEachConversion(format, [&](std::size_t at, char conversion) {
        if (!found && readable.find(conversion) == std::string_view::npos) {
            found = format.substr(at, 2);
        }
    });
    return found;
}

TimeFormat::TimeFormat(std::string format) : format_(std::move(format)) {
    std::size_t seconds = std::string::npos;
    forEachConversion(format_, [&](std::size_t at, char conversion) {
        seconds = isSeconds(conversion) ? at : seconds;
    });
    if (seconds == std::string::npos) {
        return;
    }
    upToSeconds_ = format_.substr(0, seconds + 2);
    afterSeconds_ = format_.substr(seconds + 2);
    mayHaveFraction_ = true;
    forEachConversion(afterSeconds_, [this](std::size_t, char conversion) {
        // What else is read in a second go would not know of the fields of the first.
        mayHaveFraction_ = mayHaveFraction_ && (conversion == 'z' || conversion == '%');
    });
}

bool TimeFormat::tellsDates() const {
    bool tellsYear = false;
    bool tellsDay = false;
    forEachConversion(format_, [&](std::size_t, char conversion) {
        const bool isWhole = conversion == 'D' || conversion == 'F';
        tellsYear |= isWhole || conversion == 'Y' || conversion == 'y';
        tellsDay |= isWhole || conversion == 'd' || conversion == 'e';
    });
    return tellsYear && tellsDay;
}

std::optional<ExactTime> TimeFormat::read(std::string text) const {
    tm fields{};
    fields.tm_year = 70;
    fields.tm_mday = 1;
    const std::string& first = mayHaveFraction_ ? upToSeconds_ : format_;
    char* rest = ::strptime(text.data(), first.c_str(), &fields);
    if (rest == nullptr) {
        return std::nullopt;
    }
    std::optional<ExactTime> fraction = ExactTime();
    if (mayHaveFraction_) {
        fraction = takeFraction(rest);
        rest = ::strptime(rest, afterSeconds_.c_str(), &fields);
    }
    const auto time = timeOf(fields);
    if (rest == nullptr || *rest != '\0' || !fraction || !time) {
        return std::nullopt;
    }
    return *time + *fraction;
}

}  // namespace vorm::evaluation
