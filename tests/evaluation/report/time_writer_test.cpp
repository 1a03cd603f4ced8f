#include "support/choices.hpp"

#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

namespace vorm::evaluation {
namespace {

ExactTime seconds(const char* text) {
    return ExactTime::of(text, second).value();
}

TEST(TimeWriter, WritesSecondsAndDates) {
    const ExactTime zero = read("2026-11-22 23:59:59", TimeNotation::Iso).value().time;
    const TimeWriter dated(RecordedTimes{WallClock(zero), 3});
    EXPECT_EQ(dated.moment(seconds("0.12345")), "0.123 s (2026-11-22 23:59:59.123)");
    EXPECT_EQ(dated.instant({}, Beside::JustAfter), "just after 0 s (2026-11-22 23:59:59)");
    EXPECT_EQ(dated.interval({{}, seconds("0.5")}),
              "from 0 s to 0.5 s (2026-11-22 23:59:59 to 23:59:59.5)");
    EXPECT_EQ(dated.interval({{}, seconds("1")}),
              "from 0 s to 1 s (2026-11-22 23:59:59 to 2026-11-23 00:00:00)");
    const TimeWriter plain(RecordedTimes{std::nullopt, 3});
    EXPECT_EQ(plain.interval({seconds("1"), seconds("1")}), "at 1 s");
    EXPECT_EQ(plain.alignedNumber(seconds("2.5")), "2.500");
    EXPECT_EQ(plain.alignedNumber(seconds("-2")), "-2.000");
    EXPECT_EQ(TimeWriter().moment(seconds("0.123456789012345678")), "0.123456789012345678 s");
    // Far in the future there are no dates to write.
    EXPECT_EQ(TimeWriter(WallClock(zero)).moment(9'000 * 365 * oneDay), "283824000000 s");
}

RC_GTEST_PROP(TimeWriter, DifferentTimesHaveDifferentTexts, ()) {
    std::vector<ExactTime> times;
    for (std::size_t i = vorm::test::anyIndex(8); i > 0; --i) {
        const std::int64_t scale = vorm::test::anyOf<std::int64_t>({1, 1'000, 1'000'000'000});
        times.emplace_back(WideInteger{*rc::gen::inRange(-2'000, 2'000)} * scale * scale);
    }
    const TimeWriter writer = TimeWriter(RecordedTimes{std::nullopt, 3}).tellingApart(times);
    std::set<std::string> texts;
    for (const ExactTime time : times) {
        texts.insert(writer.number(time));
    }
    RC_ASSERT(texts.size() == std::set<ExactTime>(times.begin(), times.end()).size());
}

}  // namespace
}  // namespace vorm::evaluation
