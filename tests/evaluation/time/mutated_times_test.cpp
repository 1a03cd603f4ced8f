#include "counted_days.hpp"

#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

namespace vorm::evaluation {
namespace {

// The grammars once more, as regular expressions, but for names and what is compact.
class Expression {
public:
    Expression(TimeNotation notation, const std::string& date, std::array<int, 3> yearMonthDay)
        : notation_(notation), pattern_(date + timeOfDay), yearMonthDay_(yearMonthDay) {}

    TimeNotation notation() const { return notation_; }

    std::optional<LocalTime> read(const std::string& text) const {
        std::smatch match;
        if (!std::regex_match(text, match, pattern_)) {
            return std::nullopt;
        }
        const auto number = [&match](int group) {
            return match[static_cast<std::size_t>(group)].matched
                       ? std::stoi(match[static_cast<std::size_t>(group)].str())
                       : 0;
        };
        const vorm::test::Date date{number(yearMonthDay_[0]), number(yearMonthDay_[1]),
                                    number(yearMonthDay_[2])};
        const bool isInHalves = match[9].matched;
        int hour = number(5);
        const bool isTime = isInHalves ? hour >= 1 && hour <= 12 : hour <= 24;
        if (isInHalves) {
            hour = hour % 12 + (match[9] == "P" || match[9] == "p" ? 12 : 0);
        }
        const int minutes = number(12) * 60 + number(13);
        if (!vorm::test::isDate(date) || !isTime || number(6) > 59 || number(7) > 60 ||
            number(13) > 59 || minutes > 14 * 60) {
            return std::nullopt;
        }
        const int sinceMidnight = (hour * 60 + number(6)) * 60 + number(7);
        const WideInteger fraction = attosecondsOf(match[8].str());
        if (hour == 24 && (sinceMidnight > 24 * 3600 || fraction > 0)) {
            return std::nullopt;
        }
        const WideInteger seconds = WideInteger{vorm::test::daysSince1970(date)} * 24 * 3600 +
                                    sinceMidnight - (match[11] == "-" ? -minutes : minutes) * 60;
        return LocalTime{seconds * second + ExactTime(fraction),
                         match[10].matched || match[11].matched};
    }

    // Of at most 18 digits behind a point.
    static WideInteger attosecondsOf(std::string digits) {
        digits.resize(18, '0');
        return std::stoll(digits);
    }

private:
    static constexpr const char* timeOfDay =
        R"((?:(?:[Tt_]|,?[ \t]+)(\d\d?):(\d\d)(?::(\d\d)(?:[.,](\d+))?)?(?:[ \t]*([AaPp])[Mm](?![Zz]))?)"
        R"((?:[ \t]*(?:([Zz])|([-+])(\d\d)(?::?(\d\d))?))?)?)";

    TimeNotation notation_;
    std::regex pattern_;
    std::array<int, 3> yearMonthDay_;  // groups; the other one is the separator
};

const std::vector<Expression>& dateExpressions() {
    static const std::vector<Expression> expressions{
        {TimeNotation::Iso, R"((\d{4})([-/.])(\d\d?)\2(\d\d?))", {1, 3, 4}},
        {TimeNotation::DayFirst, R"((\d\d?)([-/.])(\d\d?)\2(\d{4}))", {4, 3, 1}},
        {TimeNotation::MonthFirst, R"((\d\d?)([-/])(\d\d?)\2(\d{4}))", {4, 1, 3}}};
    return expressions;
}

std::optional<LocalTime> clockBy(const std::string& text) {
    static const std::regex hours(R"(([-+]?)()(\d{1,9}):([0-5]\d):([0-5]\d)(?:[.,](\d+))?)");
    static const std::regex days(R"(([-+]?)(\d{1,5})(?:\.|[ \t]+))"
                                 R"((\d|[01]\d|2[0-3]):([0-5]\d):([0-5]\d)(?:[.,](\d+))?)");
    static const std::regex named(R"(()(\d{1,5})[ \t]*[dD],?[ \t]*)"
                                  R"((\d|[01]\d|2[0-3]):([0-5]\d):([0-5]\d)(?:[.,](\d+))?)");
    static const std::regex minutes(R"(([-+]?)()()0*([0-5]?\d):([0-5]\d)[.,](\d+))");
    std::smatch match;
    if (!std::regex_match(text, match, hours) && !std::regex_match(text, match, days) &&
        !std::regex_match(text, match, named) && !std::regex_match(text, match, minutes)) {
        return std::nullopt;
    }
    const auto number = [&match](std::size_t group) {
        return match[group].length() > 0 ? WideInteger{std::stoll(match[group])} : 0;
    };
    const WideInteger seconds = ((number(2) * 24 + number(3)) * 60 + number(4)) * 60 + number(5);
    const ExactTime time = seconds * second + ExactTime(Expression::attosecondsOf(match[6].str()));
    return LocalTime{match[1] == "-" ? -time : time};
}

// All texts that one character more, less, or of another kind makes of it, and itself.
std::set<std::string> mutationsOf(const std::string& text) {
    std::set<std::string> mutations{text};
    for (std::size_t i = 0; i <= text.size(); ++i) {
        for (const char c : std::string("0123456789-+:./,; \tTtZzdDaPmM_e\0\xff", 33)) {
            mutations.insert(text.substr(0, i) + c + text.substr(i));
            mutations.insert(text.substr(0, i) + c + text.substr(std::min(i + 1, text.size())));
        }
        mutations.insert(text.substr(0, i) + text.substr(std::min(i + 1, text.size())));
    }
    return mutations;
}

TEST(MutatedTimes, AreReadAsTheirGrammarSaysOrNotAtAll) {
    for (const char* text : {"2021-06-30 09:39:19", "2020/2/29T23:59:60.25Z", "2021.12.31 24:00:00",
                             "1970-01-01 0:00:00.5 -03:30", "0001-01-01", "30.06.2021 09:39:19,25",
                             "06/05/2021 9:39:19 PM", "31-12-1999 12:00:01 am",
                             "12/28/1900 11:12:13+1400", "144:02:18.5", "-23:59:59", "05:02:18",
                             "2.03:04:05", "12 13:14:15.25", "5d 03:04:05", "59:59.9"}) {
        for (const std::string& mutation : mutationsOf(text)) {
            for (const Expression& expression : dateExpressions()) {
                ASSERT_EQ(read(mutation, expression.notation()), expression.read(mutation))
                    << mutation;
            }
            ASSERT_EQ(read(mutation, TimeNotation::Clock), clockBy(mutation)) << mutation;
        }
    }
}

}  // namespace
}  // namespace vorm::evaluation
