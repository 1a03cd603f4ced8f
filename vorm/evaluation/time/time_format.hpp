#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

#include <optional>
#include <string>

namespace vorm::evaluation {

/// A way to write dates and times of day, as strptime describes it: `%Y-%m-%d %H:%M:%S`.
class TimeFormat {
public:
    /// The first conversion in a format that says nothing of the time or says it in the words of a
    /// locale or a zone's name: `%Z`, `%c`. Nothing where all can be read.
    static std::optional<std::string> unreadableConversion(const std::string& format);

    /// A format without such a conversion.
    explicit TimeFormat(std::string format);

    /// The time from 1970-01-01 on that a text says, in UTC unless it tells an offset (`%z`). A
    /// fraction of seconds, behind a point or a comma, may follow the seconds where nothing but an
    /// offset comes after them. Nothing for a text that is no such time as a whole, and for a day
    /// that its month does not have.
    std::optional<ExactTime> read(std::string text) const;

    /// Whether it tells the day, and not the time of some day only.
    bool tellsDates() const;

    const std::string& text() const { return format_; }

private:
    std::string format_;
    std::string upToSeconds_;   // the format's part in front of a fraction
    std::string afterSeconds_;  // and the one behind it
    bool mayHaveFraction_ = false;
};

}  // namespace vorm::evaluation
