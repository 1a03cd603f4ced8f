#include "time_format.hpp"

#include <vorm/evaluation/time/time_unit.hpp>

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr std::string_view readable = "aAbBCdDeFhHIjklmMnpRStTyYz%";

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
    const bool isLeapSecond = fields.tm_sec == 60;
    const long offset = fields.tm_gmtoff;
    const auto seconds = static_cast<WideInteger>(::timegm(&fields));
    if (fields.tm_mday != day && !isLeapSecond) {
        return std::nullopt;
    }
    return (seconds - offset) * second;
}

// Takes `.25` or `,25` from the front of a text. Nothing for a point without digits.
std::optional<ExactTime> takeFraction(std::string_view& text) {
    if (text.empty() || (text[0] != '.' && text[0] != ',')) {
        return ExactTime();
    }
    const std::size_t end = std::min(text.size(), text.find_first_not_of("0123456789", 1));
    const std::string decimal = '.' + std::string(text.substr(1, end - 1));
    text.remove_prefix(end);
    return ExactTime::of(decimal, second);
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

std::optional<ExactTime> TimeFormat::read(const std::string& text) const {
    tm fields{};
    fields.tm_year = 70;
    fields.tm_mday = 1;
    const std::string& first = mayHaveFraction_ ? upToSeconds_ : format_;
    const char* rest = ::strptime(text.c_str(), first.c_str(), &fields);
    if (rest == nullptr) {
        return std::nullopt;
    }
    std::optional<ExactTime> fraction = ExactTime();
    if (mayHaveFraction_) {
        std::string_view after(rest);
        fraction = takeFraction(after);
        rest = ::strptime(after.data(), afterSeconds_.c_str(), &fields);
    }
    const auto time = timeOf(fields);
    if (rest == nullptr || *rest != '\0' || !fraction || !time) {
        return std::nullopt;
    }
    return *time + *fraction;
}

}  // namespace vorm::evaluation
