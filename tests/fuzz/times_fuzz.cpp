// Any bytes as the text of a time: what is taken for a time is read as one, in all ways that tell
// so.

#include <vorm/evaluation/time/likely_format.hpp>
#include <vorm/evaluation/time/time_format.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace vorm::evaluation;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkNotations(std::string_view text) {
    const auto found = notationsOf(text);
    for (const TimeNotation notation :
         {TimeNotation::Iso, TimeNotation::DayFirst, TimeNotation::MonthFirst,
          TimeNotation::DayMonthName, TimeNotation::Clock}) {
        const bool isFound = std::find(found.begin(), found.end(), notation) != found.end();
        require(!isFound || read(text, notation));
    }
}

// A number of any unit comes back from its own text.
void checkNumbers(std::string_view text) {
    for (const TimeUnit& unit : timeUnits) {
        const auto time = ExactTime::of(text, unit.length);
        require(!time || ExactTime::of(time->text(), second) == time);
        const auto decimal = time ? time->textIn(unit.length) : std::nullopt;
        require(!decimal || ExactTime::of(*decimal, unit.length) == time);
    }
}

// The text up to a zero byte as a format, the rest in it.
void checkFormat(std::string_view text) {
    const std::size_t end = text.find('\0');
    if (end == std::string_view::npos) {
        return;
    }
    const std::string format(text.substr(0, end));
    if (!TimeFormat::unreadableConversion(format)) {
        static_cast<void>(TimeFormat(format).read(std::string(text.substr(end + 1))));
    }
}

void checkProposal(std::string_view text) {
    for (const ShortDate order : {ShortDate::DayFirst, ShortDate::MonthFirst}) {
        if (const auto format = likelyFormat(text, order)) {
            require(!TimeFormat::unreadableConversion(*format));
            require(TimeFormat(*format).read(std::string(text)).has_value());
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkNotations(text);
    checkNumbers(text);
    checkFormat(text);
    checkProposal(text);
    return 0;
}
