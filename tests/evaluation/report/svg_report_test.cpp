#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/drawing/axis_ticks.hpp>
#include <vorm/evaluation/report/svg_report.hpp>

#include <pugixml.hpp>
#include <rapidcheck/gtest.h>

namespace vorm::evaluation {
namespace {

pugi::xml_document pictureOf(const std::string& assessments, const std::string& table) {
    const AssessmentFile file = parseAssessmentFile(assessments, "a.toml");
    std::optional<RecordingDrawing> drawing;
    RunOptions options;
    options.explain = true;
    options.assessed = [&](const AssessedRecording& assessed) {
        drawing = drawRecording(file, assessed);
    };
    const RecordingOutcome outcome = assess(file, test::read(table, file.layout), options);
    pugi::xml_document picture;
    EXPECT_TRUE(picture.load_string(svgReport(outcome, 0, *drawing).c_str()));
    return picture;
}

std::string pathOf(const pugi::xml_document& picture, const char* attribute, const char* value) {
    return picture.child("svg")
        .find_child_by_attribute("path", attribute, value)
        .attribute("d")
        .value();
}

// Plots reach from 80 to 884: 10 s are 80.4 pixels each.
TEST(SvgReport, DrawsLinesHolesAndFailures) {
    const auto picture = pictureOf(R"toml(
        signals = { "<x>" = { interpolation = "linear", max_gap = 20 } }
        assessment = [{ name = "a & b", formula = "\"<x>\" < 9" }])toml",
                                   "t,<x>\n0,0\n10,10\n20,0\n60,5\n100,5\n");
    EXPECT_STREQ(picture.child("svg").child_value("title"), "a & b");
    EXPECT_EQ(pathOf(picture, "stroke", "#0a3069"),
              "M80 170L160.4 72L240.8 170M560.4 121h4M882 121h4");
    // It fails from 9 s to 11 s.
    EXPECT_EQ(pathOf(picture, "fill", "#a40e26").substr(0, 24), "M152.36 30H168.44v16H152");
    EXPECT_EQ(pathOf(picture, "fill", "#0969da").substr(0, 8), "M152.36 ");
}

// The range begins between samples, and the greatest one lies before it.
TEST(SvgReport, DrawsTheRangeOnly) {
    const auto picture = pictureOf(R"toml(
        signals = { x = { interpolation = "linear" } }
        assessment = [{ name = "n", formula = "x < 3", from = 50 }])toml",
                                   "t,x\n0,900\n40,0\n60,4\n70,nan\n80,4\n90,nan\n100,0\n");
    // From 40 s, at 80 - 160.8, to 60 s: cut by the range. 80 s is an instant between NaNs.
    EXPECT_EQ(pathOf(picture, "clip-path", "url(#range)"),
              "M-80.8 170L240.8 72M560.4 72h4M882 170h4");
}

TEST(SvgReport, KeepsWhatIsInfiniteApart) {
    const auto picture = pictureOf(R"(assessment = [{ name = "n", formula = "x < 2" }])",
                                   "t,x\n0,1\n10,inf\n20,2\n30,-inf\n40,1\n");
    // 2 is at 72, 1 at 170.
    EXPECT_EQ(pathOf(picture, "stroke", "#0a3069"), "M80 170H281V66H482V72H683V176H884V170");
    EXPECT_EQ(pathOf(picture, "fill", "#9a6700"), "M281 66l4 6h-8zM683 176l4 -6h-8z");
}

TEST(SvgReport, WhereNothingIsKnownIsOpen) {
    const auto picture = pictureOf(R"(assessment = [{ name = "n", formula = "x < 3", from = 50 }])",
                                   "t,x\n0,1\n1,1\n");
    EXPECT_NE(pathOf(picture, "fill", "url(#open)"), "");
}

RC_GTEST_PROP(AxisTicks, AreRoundAndFew, ()) {
    const auto from = ExactTime(*rc::gen::arbitrary<std::int64_t>());
    const auto to = from + ExactTime(1 + *rc::gen::inRange<std::int64_t>(0, 1LL << 60));
    const auto times = timeTicks(from, to, 8);
    RC_ASSERT(times.size() <= 8U);
    RC_ASSERT(times.size() >= 2U || to - from < ExactTime(10));
    for (std::size_t i = 0; i + 1 < times.size(); ++i) {
        std::string step = (times[i + 1] - times[i]).text();
        std::erase_if(step, [](char c) { return c == '0' || c == '.'; });
        RC_ASSERT(step == "1" || step == "2" || step == "5");
        RC_ASSERT(times[i].attoseconds() % (times[1] - times[0]).attoseconds() == 0);
    }
    RC_ASSERT(times.empty() || (from <= times.front() && times.back() <= to));
}

TEST(AxisTicks, OfValuesAreRound) {
    EXPECT_EQ(valueTicks(0, 10, 5), (std::vector<double>{0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(valueTicks(-7, 92, 5), (std::vector<double>{0, 20, 40, 60, 80}));
    EXPECT_EQ(valueTicks(1e-3, 3e-3, 5).size(), 5U);
    EXPECT_LE(valueTicks(-1.7e308, 1.7e308, 5).size(), 6U);
    EXPECT_LE(valueTicks(1e17, 1e17 + 16, 5).size(), 6U);
}

}  // namespace
}  // namespace vorm::evaluation
