#include "evaluation/recording/recorded.hpp"

namespace vorm::evaluation::test {
namespace {

std::string surveyText(const SignalSurvey& survey) {
    return survey.name + ": " + survey.type + ' ' + std::to_string(survey.samples) + '/' +
           std::to_string(survey.empty) + '/' + std::to_string(survey.nans) + " from " +
           survey.first.text() + " to " + survey.last.text() + " median " +
           survey.medianDistance.text() + " longest " + survey.longestDistance.text() + " at " +
           survey.longestAt.text() + " holes " + std::to_string(survey.holes) + " equal " +
           std::to_string(survey.equalTimes) + " back " + std::to_string(survey.timesBack);
}

std::string surveyOf(const std::string& content, const RecordingLayout& layout = {}) {
    std::string text;
    for (const SignalSurvey& survey : surveyFiles({textFile("r.csv", content)}, layout).signals) {
        text += (text.empty() ? "" : "\n") + surveyText(survey);
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
                    layoutWith([](auto& layout) { layout.maxGap = ExactTime::of("0.1", second); }))
            .signals;
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
        const auto surveys = surveyFiles({textFile("r.csv", content)}, {}).signals;
        ASSERT_EQ(surveys.size(), 1u);
        EXPECT_EQ(surveys[0].type, type) << content;
    }
}

std::string numberText(const std::optional<SignalSurvey::Number>& number) {
    const auto text = [](auto value) {
        if constexpr (std::is_same_v<decltype(value), double>) {
            return shortestNumber(value);
        } else {
            return "integer " + std::to_string(value);
        }
    };
    return number ? std::visit(text, *number) : "-";
}

// The cells of a column at 0 s, 1 s and so on.
std::string columnOf(const std::vector<std::string>& cells) {
    std::string content = "t,a\n";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        content += std::to_string(i) + ',' + cells[i] + '\n';
    }
    return content;
}

TEST(RecordingSurvey, TellsTheRangeAndTheMeanOfNumbers) {
    struct Row {
        std::vector<std::string> cells;
        std::string least;
        std::string mean;
        std::string greatest;
        std::size_t infinities = 0;
    };
    for (const Row& row : std::vector<Row>{
             {{"2.5", "-1", "", "3"}, "-1", "1.5", "3"},
             {{"-3.5", "-2"}, "-3.5", "-2.75", "-2"},
             {{"nan", "4.5", "-inf", "inf", "5"}, "4.5", "4.75", "5", 2},
             {{"nan", "inf"}, "-", "-", "-", 1},
             {{"true", "x", ""}, "-", "-", "-"},
             {{"7", "x", "-8"}, "integer -8", "-0.5", "integer 7"},
             {{"5", "+9", "-3"}, "integer -3", "3.6666666666666665", "integer 9"},
             {{"9007199254740993", "9007199254740992"},
              "integer 9007199254740992",
              "9007199254740992",
              "integer 9007199254740993"},
             {{"-9223372036854775808", "9223372036854775807"},
              "integer -9223372036854775808",
              "0",
              "integer 9223372036854775807"},
             {{"18446744073709551615", "1", "18446744073709551614"},
              "integer 1",
              "12297829382473033728",
              "integer 18446744073709551615"},
             {{"-1", "18446744073709551615"}, "-1", "9223372036854775808", "18446744073709551616"},
             {{"1", "1e100", "1", "-1e100"}, "-1e+100", "0.5", "1e+100"},
             {{"0.1", "0.1", "0.1"}, "0.1", "0.1", "0.1"},
             {{"1e308", "1e308"}, "1e+308", "-", "1e+308"},
         }) {
        SCOPED_TRACE(columnOf(row.cells));
        const auto survey = surveyFiles({textFile("r.csv", columnOf(row.cells))}, {}).signals.at(0);
        EXPECT_EQ(numberText(survey.least), row.least);
        EXPECT_EQ(numberText(survey.mean), row.mean);
        EXPECT_EQ(numberText(survey.greatest), row.greatest);
        EXPECT_EQ(survey.infinities, row.infinities);
    }
}

TEST(RecordingSurvey, TellsMembersAsTheyAppear) {
    const std::vector<std::string> mixed{"7", "n/a", "8", "?", "n/a"};
    std::vector<std::string> many;
    for (int i = 0; i < 64; ++i) {
        many.push_back("text" + std::to_string(i));
    }
    std::vector<std::string> tooMany = many;
    tooMany.emplace_back("one more");
    struct Row {
        std::vector<std::string> cells;
        std::string type;  // declared
        std::vector<std::string> members;
    };
    for (const Row& row : std::vector<Row>{
             {{"off", "on", "", "off", "auto"}, "", {"off", "on", "auto"}},
             {mixed, "", {"?"}},
             {mixed, "enum", {"7", "n/a", "8", "?"}},
             {{"2", "1", "true"}, "enum", {"2", "1", "true"}},
             {{"1", "true"}, "", {}},
             {many, "", many},
             {tooMany, "", {}},
         }) {
        const auto survey = surveyFiles({textFile("r.csv", columnOf(row.cells))},
                                        declaring({declared("a", row.type)}))
                                .signals.at(0);
        EXPECT_EQ(survey.members, row.members) << columnOf(row.cells) << row.type;
    }
}

TEST(RecordingSurvey, CountsTheRowsOfWhatHasNoTimes) {
    const RecordingSurvey survey =
        surveyFiles({textFile("r.csv", "a,b\n1,x\n2,y\n0,x\n")}, RecordingLayout());
    EXPECT_EQ(surveyText(survey.signals.at(0)),
              "a: double 3/0/0 from 0 to 2 median 1 longest 1 at 0 holes 0 equal 0 back 0");
    EXPECT_EQ(survey.signals.at(1).members, (std::vector<std::string>{"x", "y"}));
    ASSERT_TRUE(survey.files.at(0).timeProblem);
    EXPECT_EQ(survey.files[0].timeProblem->problem().message,
              "has no time column among 'a' and 'b'");
}

TEST(RecordingSurvey, HasAClockWhereAllTimesAreDates) {
    const std::string early = "t,a,none\n2026-11-22 10:00:00,1,\n2026-11-22 10:00:10,1,\n";
    const std::string late = "t,b\n2026-11-22 10:00:05,1\n2026-11-22 10:00:20,1\n";
    const auto surveyWith = [&](const std::string& other) {
        return surveyFiles({textFile("r/a.csv", early), textFile("r/b.csv", other)}, {});
    };
    const RecordingSurvey dated = surveyWith(late);
    ASSERT_TRUE(dated.clock);
    EXPECT_EQ(dated.clock->dateTimeOf(dated.span()->start, 0), "2026-11-22 10:00:00");
    EXPECT_EQ(dated.clock->dateTimeOf(dated.span()->end, 0), "2026-11-22 10:00:20");
    EXPECT_FALSE(surveyWith("t,b\n0,1\n1,1\n").clock);
    EXPECT_FALSE(surveyWith("b\n1\n2\n").clock) << "rows are counted";
    EXPECT_FALSE(surveyFiles({textFile("r.csv", "t,a\n0,\n")}, {}).span());
}

TEST(RecordingSurvey, RefusesWhatHasNoTimes) {
    const auto error = [](const std::string& content) {
        return errorOf([&] { surveyOf(content); }).substr(0, 20);
    };
    EXPECT_EQ(error(""), "r.csv: is empty");
    EXPECT_EQ(error("t,b\nx,2\n"), "r.csv:2:1: 'x' in th");
}

}  // namespace
}  // namespace vorm::evaluation::test
