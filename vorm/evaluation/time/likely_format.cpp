#include "likely_format.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/time/time_format.hpp>

namespace vorm::evaluation {
namespace {

// Puts a conversion in the place of each number and each word.
class Likening {
public:
    Likening(std::string_view text, ShortDate order)
        : text_(text), order_(order), hasMonthName_(hasWord(text)) {}

    std::string format() {
        while (at_ < text_.size()) {
            if (isDigit(text_[at_])) {
                takeNumber();
            } else if (isLetter(text_[at_])) {
                takeWord();
            } else {
                format_ += text_[at_++];
            }
        }
        return format_;
    }

private:
    std::string_view taken(bool (*belongs)(char)) {
        const std::size_t begin = at_;
        while (at_ < text_.size() && belongs(text_[at_])) {
            ++at_;
        }
        return text_.substr(begin, at_ - begin);
    }

    void takeNumber() {
        const bool isClock = (at_ > 0 && text_[at_ - 1] == ':') || isBeforeColon();
        const std::string_view number = taken(isDigit);
        if (isClock) {
            takeOfClock();
        } else {
            takeOfDate(number);
        }
    }

    bool isBeforeColon() const {
        const std::size_t end = text_.find_first_not_of("0123456789", at_);
        return end != std::string_view::npos && text_[end] == ':';
    }

    void takeOfClock() {
        const bool isOfHalfDay = text_.find_first_of("mM", at_) != std::string_view::npos;
        constexpr auto conversions = std::string_view("HMS");
        const char conversion = clockNumbers_ < 3 ? conversions[clockNumbers_] : 'S';
        format_ += {'%', conversion == 'H' && isOfHalfDay ? 'I' : conversion};
        ++clockNumbers_;
        // A fraction may follow the seconds without being told.
        if (clockNumbers_ == 3 && at_ + 1 < text_.size() &&
            (text_[at_] == '.' || text_[at_] == ',')) {
            ++at_;
            taken(isDigit);
        }
    }

    // The year is the number of four digits, or the last one.
    void takeOfDate(std::string_view number) {
        const bool isYear = number.size() == 4 || (!hasYear_ && shortNumbers_ == 2);
        if (isYear) {
            hasYear_ = true;
            format_ += number.size() == 4 ? "%Y" : "%y";
            return;
        }
        const std::size_t day = order_ == ShortDate::DayFirst && !hasYear_ ? 0 : 1;
        format_ += hasMonthName_ || shortNumbers_ == day ? "%d" : "%m";
        ++shortNumbers_;
    }

    void takeWord() {
        const std::string_view word = taken(isLetter);
        if (word.size() == 2 && (word[1] == 'M' || word[1] == 'm')) {
            format_ += "%p";
        } else if (word.size() == 1) {
            format_ += word == "Z" ? "%z" : word;
        } else {
            ++shortNumbers_;
            format_ += "%b";
        }
    }

    // Longer ones than those that belong to a clock or stand between a date and a time.
    static bool hasWord(std::string_view text) {
        const auto areThree = [&](std::size_t at) {
            return isLetter(text[at]) && isLetter(text[at + 1]) && isLetter(text[at + 2]);
        };
        for (std::size_t at = 0; at + 2 < text.size(); ++at) {
            if (areThree(at)) {
                return true;
            }
        }
        return false;
    }

    std::string_view text_;
    ShortDate order_;
    bool hasMonthName_;
    std::string format_;
    std::size_t at_ = 0;
    std::size_t clockNumbers_ = 0;
    std::size_t shortNumbers_ = 0;
    bool hasYear_ = false;
};

}  // namespace

std::optional<std::string> likelyFormat(std::string_view time, ShortDate order) {
    const std::string format = Likening(time, order).format();
    const auto isOnce = [&](const char* conversion) {
        return format.find(conversion) == format.rfind(conversion);
    };
    const bool isRead = format.find('%') != std::string::npos && isOnce("%d") && isOnce("%S") &&
                        !TimeFormat::unreadableConversion(format) &&
                        TimeFormat(format).read(std::string(time));
    return isRead ? std::optional(format) : std::nullopt;
}

}  // namespace vorm::evaluation
