#include "evaluation/recording/recorded.hpp"

namespace vorm::evaluation::test {
namespace {

std::string textOf(const SignalSurvey& survey) {
    return survey.name + ": " + survey.type + ' ' + std::to_string(survey.samples) + '/' +
           std::to_string(survey.empty) + '/' + std::to_string(survey.nans) + " from " +
           survey.first.text() + " to " + survey.last.text() + " median " +
           survey.medianDistance.text() + " longest " + survey.longestDistance.text() + " at " +
           survey.longestAt.text() + " holes " + std::to_string(survey.holes) + " equal " +
           std::to_string(survey.equalTimes) + " back " + std::to_string(survey.timesBack);
}

std::string surveyOf(const std::string& content, const RecordingLayout& layout = {}) {
    std::string text;
    for (const SignalSurvey& survey : surveyFiles({textFile("r.csv", content)}, layout)) {
        text += (text.empty() ? "" : "\n") + textOf(survey);
    }
    return text;
}

TEST(RecordingSurvey, CountsWhatReadingRefuses) {
    EXPECT_EQ(surveyOf("t,a,b\n0,1,x\n1,nan,1\n1,,2\n4,2,\n3,3,true\n"),
              "a: double 4/1/1 from 0 to 3 median 2 longest 3 at 1 holes 0 equal 0 back 1\n"
              "b: mixed 4/1/0 from 0 to 3 median 1.5 longest 2 at 1 holes 0 equal 1 back 0");
}

TEST(RecordingSurvey, FindsHoles) {
    const std::string content = "t,a\n0,1\n1,1\n2,1\n12,1\n22.5,1\n";
    EXPECT_EQ(
        surveyOf(content),
        "a: double 5/0/0 from 0 to 22.5 median 5.5 longest 10.5 at 12 holes 0 equal 0 back 0");
    EXPECT_EQ(
        surveyOf(content, layoutWith([](auto& layout) { layout.maxGap = 10 * second; })),
        "a: double 5/0/0 from 0 to 22.5 median 5.5 longest 10.5 at 12 holes 1 equal 0 back 0");
    EXPECT_EQ(surveyOf("t,a\n0,1\n1,1\n2,1\n12.5,1\n"),
              "a: double 4/0/0 from 0 to 12.5 median 1 longest 10.5 at 2 holes 1 equal 0 back 0");
}

TEST(RecordingSurvey, FindsNoHoleInARoundedStep) {
    const auto surveys =
        surveyFiles({textFile("r.csv", "t,a\n0.1,1\n0.2,1\n0.3,1\n0.41,1\n")},
                    layoutWith([](auto& layout) { layout.maxGap = ExactTime::of("0.1", second); }));
    EXPECT_EQ(surveys.at(0).holes, 1u);
}

TEST(RecordingSurvey, TellsTypes) {
    std::string many = "t,a\n";
    for (int i = 0; i < 65; ++i) {
        many += std::to_string(i) + ",text" + std::to_string(i) + '\n';
    }
    const std::vector<std::pair<std::string, std::string>> cases{
        {"t,a\n0,\n", "unknown type"},
        {"t,a\n0,9007199254740993\n", "int64"},
        {"t,a\n0,true\n1,false\n", "bool"},
        {"t,a\n0,N\n1,D\n", "enumeration a"},
        {many, "text"},
        {many.substr(0, many.rfind("64,")), "enumeration a"},
    };
    for (const auto& [content, type] : cases) {
        const auto surveys = surveyFiles({textFile("r.csv", content)}, {});
        ASSERT_EQ(surveys.size(), 1u);
        EXPECT_EQ(surveys[0].type, type) << content;
    }
}

TEST(RecordingSurvey, RefusesWhatHasNoTimes) {
    const auto error = [](const std::string& content) {
        return errorOf([&] { surveyOf(content); }).substr(0, 20);
    };
    EXPECT_EQ(error(""), "r.csv: is empty");
    EXPECT_EQ(error("a,b\n1,2\n"), "r.csv:1: has no time");
    EXPECT_EQ(error("t,b\nx,2\n"), "r.csv:2:1: 'x' in th");
}

}  // namespace
}  // namespace vorm::evaluation::test
