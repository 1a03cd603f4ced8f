#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/report/html_report.hpp>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace vorm::evaluation {
namespace {

using Json = nlohmann::json;

constexpr const char* limit = R"toml(
    title = "A <title> & more"
    definitions = { fast = "x > 5" }
    assessment = [{ name = "</script><img src=x onerror=1>", description = "\"'&", formula = "~fast" }])toml";

std::string pageOf(const std::string& assessments, const std::string& rows,
                   const HtmlStyle& style = {}, const std::string& recording = "r.csv") {
    const AssessmentFile file = parseAssessmentFile(assessments, "a.toml");
    RunOutcome outcome{file.name, file.title, {}};
    std::vector<RecordingDrawing> drawings;
    RunOptions run;
    run.explain = true;
    run.assessed = [&](const AssessedRecording& assessed) {
        drawings.push_back(drawRecording(file, assessed));
    };
    Recording read = test::read(rows);
    read.name = recording;
    outcome.recordings.push_back(assess(file, read, run));
    return htmlReport(file, outcome, drawings, style);
}

std::string between(const std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t from = text.find(begin);
    EXPECT_NE(from, std::string::npos) << begin;
    const std::size_t start = from + begin.size();
    return text.substr(start, text.find(end, start) - start);
}

// Browsers take for infinite what has no double; the parser here refuses it.
Json islandOf(const std::string& page) {
    std::string data = between(page, R"(id="data-1">)", "</script>");
    for (std::size_t at = data.find("1e999"); at != std::string::npos; at = data.find("1e999")) {
        const bool isNegative = data[at - 1] == '-';
        data.replace(isNegative ? at - 1 : at, isNegative ? 6 : 5,
                     isNegative ? R"("-inf")" : R"("inf")");
    }
    return Json::parse(data);
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(HtmlReport, ShowsTextsOfAllKindsAsTexts) {
    const std::string page = pageOf(limit, "t,x\n0,1\n1,7\n2,1\n", {}, "<b>\x01\xff.csv");
    const std::string body = page.substr(page.find("<body>"));
    EXPECT_EQ(countOf(body, "<img"), 0U);
    EXPECT_EQ(countOf(body, "<b>"), 0U);
    EXPECT_EQ(countOf(body, "</script>"), 2U);  // of the data and of the script
    EXPECT_NE(body.find("&lt;/script&gt;&lt;img src=x onerror=1&gt;"), std::string::npos);
    EXPECT_NE(body.find("&lt;b&gt;\ufffd\ufffd.csv"), std::string::npos);
    EXPECT_NE(body.find("<p class=\"description\">&quot;&#39;&amp;</p>"), std::string::npos);
    EXPECT_NE(body.find("<dt>fast</dt>\n<dd><code>x &gt; 5</code></dd>"), std::string::npos);
    EXPECT_EQ(between(page, "<title>", "</title>"), "A &lt;title&gt; &amp; more");
}

TEST(HtmlReport, TellsIntervalsAndCausesInFull) {
    const std::string page = pageOf(limit, "t,x\n0.1,1\n0.30000000000000001,7\n2,1\n3,9\n4,1\n");
    EXPECT_EQ(between(page, "<tbody><tr><td>", "</tr>").find("0.3 s</td>"), 0U);
    EXPECT_NE(page.find("fails in 2 intervals, the first from 0.3 s to 2 s"), std::string::npos);
    EXPECT_NE(page.find("because fast is true from 0.3 s to 2 s<br>where fast is x &gt; 5"),
              std::string::npos);
    HtmlStyle style;
    style.mostIntervals = 1;
    EXPECT_NE(pageOf(limit, "t,x\n0,1\n1,7\n2,1\n3,9\n4,1\n", style).find("and in 1 more interval"),
              std::string::npos);
}

TEST(HtmlReport, HasNoClockForTimesThatAreNoDates) {
    EXPECT_TRUE(islandOf(pageOf(limit, "t,x\n0,1\n1,7\n2,1\n"))["clock"].is_null());
}

TEST(HtmlReport, HasTheSamplesExactly) {
    const Json island = islandOf(pageOf(
        R"(assessment = [{ name = "n", formula = "x < 5" }])",
        "t,x\n1700000000.000000001,nan\n1700000001.5,inf\n1700000002,-inf\n1700000003,0.1\n"));
    EXPECT_EQ(island["origin"], "1700000000");
    EXPECT_EQ(island["clock"], Json::parse(R"({"zone": "UTC", "origin": "1700000000",
        "offsets": [{"since": 1699913600.000000001, "ahead": 0}]})"));
    const Json& piece = island["signals"][0]["pieces"][0];
    EXPECT_EQ(piece["t"].dump(), "[1e-09,1.5,2,3]");
    EXPECT_EQ(piece["v"].dump(), R"([null,"inf","-inf",0.1])");
    EXPECT_EQ(piece["end"], 3);
    EXPECT_EQ(island["assessments"][0]["failures"].dump(), "[1e-09,2]");
    EXPECT_EQ(island["assessments"][0]["thresholds"], Json::parse(R"([{"signal":0,"value":5}])"));
}

std::string manyRows(int count) {
    std::string rows = "t,x\n";
    for (int i = 0; i < count; ++i) {
        rows += std::to_string(i) + "," + std::to_string(std::sin(i)) + "\n";
    }
    return rows + std::to_string(count) + ",7\n";
}

TEST(HtmlReport, StaysWithinItsSizeAndKeepsTheGreatest) {
    const std::string rows = manyRows(20'000);
    const std::size_t full = pageOf(limit, rows).size();
    HtmlStyle style;
    style.mostBytes = full - 20'000;
    const std::string page = pageOf(limit, rows, style);
    EXPECT_LE(page.size(), style.mostBytes);
    const Json signal = islandOf(page)["signals"][0];
    EXPECT_EQ(signal["samples"], 20'001);
    EXPECT_LT(signal["shown"], 4'001);
    EXPECT_EQ(signal["pieces"][0]["v"].back(), 7);
    style.mostBytes = 1;
    const std::string bare = pageOf(limit, rows, style);
    EXPECT_EQ(countOf(bare, "class=\"plots\""), 0U);
    EXPECT_EQ(countOf(bare, "application/json"), 0U);
    EXPECT_NE(bare.find("1 recording without plots"), std::string::npos);
    EXPECT_NE(bare.find("Failing intervals"), std::string::npos);
}

}  // namespace
}  // namespace vorm::evaluation
