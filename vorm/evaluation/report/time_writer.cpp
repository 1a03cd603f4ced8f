#include "time_writer.hpp"

#include <vorm/evaluation/time/rounded_time.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

// Of sorted times that all differ.
bool areApart(const std::vector<ExactTime>& times, int digits) {
    return std::adjacent_find(times.begin(), times.end(), [digits](ExactTime one, ExactTime next) {
               return rounded(one, digits) == rounded(next, digits);
           }) == times.end();
}

std::string besideText(Beside beside) {
    switch (beside) {
        case Beside::JustBefore:
            return "just before ";
        case Beside::JustAfter:
            return "just after ";
        case Beside::At:
            break;
    }
    return "";
}

std::string inBrackets(const std::string& text) {
    return text.empty() ? "" : " (" + text + ")";
}

}  // namespace

TimeWriter TimeWriter::tellingApart(std::vector<ExactTime> times) const {
    if (times_.digits == allDigits) {
        return *this;
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    TimeWriter writer = *this;
    int& digits = writer.times_.digits;
    while (digits < allDigits && !areApart(times, digits)) {
        ++digits;
    }
    return writer;
}

std::string TimeWriter::number(ExactTime time) const {
    return rounded(time, times_.digits).text();
}

std::string TimeWriter::alignedNumber(ExactTime time) const {
    std::string text = number(time);
    if (times_.digits == 0 || times_.digits == allDigits) {
        return text;
    }
    const std::size_t point = text.find('.');
    text += point == std::string::npos ? "." : "";
    const std::size_t written = text.size() - text.find('.') - 1;
    return text + std::string(static_cast<std::size_t>(times_.digits) - written, '0');
}

std::string TimeWriter::date(ExactTime time) const {
    return times_.clock ? times_.clock->dateTimeOf(time, times_.digits) : "";
}

std::string TimeWriter::moment(ExactTime time) const {
    return number(time) + " s" + inBrackets(date(time));
}

std::string TimeWriter::number(ExactTime time, Beside beside) const {
    return besideText(beside) + number(time);
}

std::string TimeWriter::instant(ExactTime time, Beside beside) const {
    return (beside == Beside::At ? "at " : besideText(beside)) + moment(time);
}

std::string TimeWriter::interval(const TimeSpan& span) const {
    if (span.isInstant()) {
        return instant(span.start);
    }
    constexpr std::size_t dayLength = std::string_view("2026-11-22 ").size();
    const std::string start = date(span.start);
    std::string end = date(span.end);
    if (start.substr(0, dayLength) == end.substr(0, dayLength)) {
        end.erase(0, dayLength);
    }
    const bool hasDates = !start.empty() && !end.empty();
    return "from " + number(span.start) + " s to " + number(span.end) + " s" +
           inBrackets(hasDates ? start + " to " + end : "");
}

}  // namespace vorm::evaluation
