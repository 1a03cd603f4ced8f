// Deadlines that coincide with samples, however the times are written. What is expected follows
// from the samples alone: they are at the ticks 0 to 10, and the bounds are whole ticks.

#include "engine.hpp"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <sstream>

namespace vorm::evaluation::test {
namespace {

using TimeText = std::function<std::string(const Rational& seconds)>;

struct Way {
    const char* name;
    const char* offset;  ///< seconds of tick 0
    const char* tick;    ///< in seconds
    std::string layout;
    TimeText text;
    const char* reportedOffset = nullptr;  ///< nothing: the offset
};

TimeText inUnits(const char* secondsPerUnit, int places = 0) {
    return [=](const Rational& seconds) {
        return decimal(seconds / rationalOf(secondsPerUnit), places).value();
    };
}

TimeText withExponent(int exponent) {
    return [=](const Rational& seconds) {
        return decimal(seconds * powerOfTen(-exponent)).value() + 'e' + std::to_string(exponent);
    };
}

// Within the minute 2024-02-28 23:59, which began at 1709164740.
TimeText asDate(int places) {
    return [=](const Rational& seconds) {
        return "2024-02-28 23:59:" + decimal(seconds - 1709164740, places).value();
    };
}

std::vector<Way> ways() {
    const TimeText seconds = inUnits("1");
    const std::string dates = "time_format = \"%Y-%m-%d %H:%M:%S\"";
    return {
        {"0.1 s", "0", "0.1", "", seconds},
        {"50 ms", "0", "0.05", "", seconds},
        {"30 ms", "0", "0.03", "", seconds},
        {"7 ms", "0", "0.007", "", seconds},
        {"1 ms", "0", "0.001", "", seconds},
        {"0.1 s from before 0 on", "-0.5", "0.1", "", seconds},
        {"0.1 s from 46408 on", "46408", "0.1", "", seconds},
        {"50 ms from 46408.6 on", "46408.6", "0.05", "", seconds},
        {"7 ms from 46408 on", "46408", "0.007", "", seconds},
        {"1 ms from 46408.003 on", "46408.003", "0.001", "", seconds},
        {"0.1 s from 1.7e9 on", "1700000000", "0.1", "", seconds},
        {"30 ms from 1.7e9 on", "1700000000.3", "0.03", "", seconds},
        {"1 ms from 1.7e9 on", "1700000000", "0.001", "", seconds},
        {"as many places", "46408.25", "0.01", "", inUnits("1", 6)},
        {"twelve places", "0", "0.1", "", inUnits("1", 12)},
        {"125 ps", "0", "0.000000000125", "", seconds},
        {"whole ms", "1700000000", "0.1", "unit = 'ms'", inUnits("0.001")},
        {"whole us", "1700000000.3", "0.05", "unit = 'us'", inUnits("1e-6")},
        {"whole ns", "1710773350.354000001", "0.007", "unit = 'ns'", inUnits("1e-9")},
        {"fractions of ms", "12.0003", "0.00007", "unit = 'ms'", inUnits("0.001")},
        {"exponents", "0", "0.1", "", withExponent(-1)},
        {"exponents of large numbers", "1700000000.3", "0.03", "", withExponent(9)},
        {"dates, 0.1 s", "1709164758.5", "0.1", dates, asDate(0)},
        {"dates, 30 ms", "1709164758.9", "0.03", dates, asDate(6)},
        {"minutes", "0", "0.06", "unit = 'min'", inUnits("60")},
        {"minutes from 773.5 on", "46410", "3", "unit = 'min'", inUnits("60")},
        {"hours", "0", "0.36", "unit = 'h'", inUnits("3600")},
        {"from the first", "1700000000.3", "0.1", "origin = 'first'", seconds, "0"},
        {"from a time", "46408.6", "0.1", "origin = { time = '46408.3' }", seconds, "0.3"},
    };
}

struct Requirement {
    const char* formula;  ///< with bounds in ticks: `{3}`
    const char* outcome;  ///< with failing times in ticks
};

constexpr std::array<Requirement, 18> requirements{{
    {"rise(a == 1) -> eventually[0, {1}](b == 1)", "FAIL 7"},
    {"rise(a == 1) -> eventually[0, {2}](b == 1)", "PASS"},
    {"rise(a == 1) -> eventually[{1}, {1}](b == 1)", "FAIL 7"},
    {"rise(a == 1) -> eventually[{2}, {3}](b == 1)", "FAIL 3"},
    {"always[0, {1}](b == 0)", "FAIL 3..5 8..10"},
    {"always[0, {2}](a == 0)", "FAIL 1..4 5..8"},
    {"a == 1 -> always[{1}, {1}](b == 1)", "FAIL 7..8"},
    {"a == 1 -> Shift[{1}](b == 1)", "FAIL 7..8"},
    {"Shift[-{1}](a) == 1 -> b == 1", "FAIL 8..9"},
    {"Shift[{5}](b) == b", "PASS"},
    {"a == 1 until[0, {1}] b == 1", "FAIL 0..3 4..10"},
    {"rise(a == 1) -> a <= 1 until[{2}, {2}] b == 1", "FAIL 3"},
    {"rise(b == 1) -> always[-{1}, -{1}](a == 1)", "FAIL 9"},
    {"rise(b == 1) -> eventually[-{2}, 0](rise(a == 1))", "PASS"},
    {"fall(a == 1) -> b == 1", "FAIL 8"},
    {"rise(x >= 3) -> a == 1", "PASS"},
    {"rise(x > 2) -> eventually[0, {2}](b == 1)", "PASS"},
    {"x >= 4 & x < 5 -> b == 1", "PASS"},
}};

// In one unit or another, as far as it can write the length.
std::string lengthText(const Rational& seconds, std::size_t choice) {
    static const std::vector<std::pair<std::string, const char*>> units = {
        {"", "1"},       {" s", "1"},    {" ms", "0.001"}, {" us", "1e-6"},
        {" ns", "1e-9"}, {" min", "60"}, {" h", "3600"}};
    const auto& [unit, size] = units[choice % units.size()];
    const auto number = decimal(seconds / rationalOf(size));
    return number ? *number + unit : decimal(seconds).value();
}

std::string formulaText(const Way& way, const std::string& formula, std::size_t choice) {
    std::string text;
    std::istringstream in(formula);
    for (std::string part; std::getline(in, part, '{');) {
        text += part;
        if (std::getline(in, part, '}'); in) {
            text += lengthText(rationalOf(part) * rationalOf(way.tick), choice++);
        }
    }
    return text;
}

Texts textsOf(const Way& way, std::size_t choice) {
    // These are held, x is a line from 0 at tick 0 to 10 at tick 10.
    constexpr const char* a = "00010001000";
    constexpr const char* b = "00001000010";
    Texts texts;
    texts.recording = "time,a,b,x\n";
    for (std::size_t tick = 0; tick <= 10; ++tick) {
        const Rational time = rationalOf(way.offset) + tick * rationalOf(way.tick);
        const std::string x = tick == 0 ? "0" : tick == 10 ? "10" : "";
        texts.recording += way.text(time) + ',' + a[tick] + ',' + b[tick] + ',' + x + '\n';
    }
    texts.assessments =
        "[recording]\n" + way.layout + "\n[signals]\nx = { interpolation = 'linear' }\n";
    for (const Requirement& requirement : requirements) {
        texts.assessments += std::string("[[assessment]]\nname = '") + requirement.formula +
                             "'\nformula = '" + formulaText(way, requirement.formula, choice++) +
                             "'\n";
    }
    return texts;
}

std::string outcomeText(const Way& way, const Reported& reported) {
    const char* const offset = way.reportedOffset != nullptr ? way.reportedOffset : way.offset;
    const auto ticks = [&](const Rational& time) {
        return shown((time - rationalOf(offset)) / rationalOf(way.tick));
    };
    std::string text = reported.judgement.verdict + reported.error;
    for (const Span& span : reported.judgement.failures) {
        text += ' ' + ticks(span.start);
        text += span.start == span.end ? "" : ".." + ticks(span.end);
    }
    return text;
}

TEST(WrittenTimes, DeadlinesMeetSamples) {
    std::size_t choice = 0;
    for (const Way& way : ways()) {
        const Texts texts = textsOf(way, ++choice);
        const std::vector<Reported> reported = assessed(texts);
        for (std::size_t i = 0; i < requirements.size(); ++i) {
            EXPECT_EQ(outcomeText(way, reported.at(i)), requirements[i].outcome)
                << way.name << ": " << reported[i].formula << '\n'
                << texts.recording;
        }
    }
}

}  // namespace
}  // namespace vorm::evaluation::test
