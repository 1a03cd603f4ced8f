#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

constexpr const char* assessmentOfX = "\n[[assessment]]\nname = 'a'\nformula = 'x > 3'\n";

AssessmentFile declaring(const std::string& parameters,
                         const std::vector<ParameterSetting>& settings = {}) {
    return parseAssessmentFile("parameters = { " + parameters + " }" + assessmentOfX, "a.toml",
                               settings);
}

TEST(ParameterSettings, ValuesAreWrittenAsFormulasWriteThem) {
    for (const auto& [value, expected] : std::vector<std::pair<std::string, std::string>>{
             {"0.1", "0.1"},
             {"27.80", "27.80"},
             {"+1_000.50e-2", "1000.50e-2"},
             {"-9_223_372_036_854_775_808", "-9223372036854775808"},
             {"9223372036854775807", "9223372036854775807"},
             {"0xFF", "255"},
             {"0b101", "5"},
             {"+inf", "inf"},
             {"-nan", "-nan"},
             {"false", "false"},
             {R"("a\tb")", "a\tb"}}) {
        const FormulaParameters parameters =
            declaring("first = " + value + ", second = 1").parameters;
        ASSERT_EQ(parameters.size(), 2U) << value;
        EXPECT_EQ(parameters[0].name, "first");
        EXPECT_EQ(parameters[0].value, expected);
        EXPECT_EQ(parameters[0].source, "a.toml:1");
    }
}

TEST(ParameterSettings, TakeTheKindThatTheFileGives) {
    const std::string declared = "number = 27.8, flag = true, text = '500 ms'";
    const AssessmentFile file = declaring(
        declared, {{"number", "-1_0.50", "s"}, {"flag", "false", "s"}, {"text", "true", "s"}});
    EXPECT_EQ(valueOf(file.parameters[0]),
              valueOf({.kind = ParameterKind::Number, .value = "-10.50"}));
    EXPECT_EQ(file.parameters[0].initial, "27.8");
    EXPECT_EQ(file.parameters[1].value, "false");
    EXPECT_EQ(file.parameters[2].kind, ParameterKind::Text);
    struct Row {
        std::vector<ParameterSetting> settings;
        std::string message;
        std::string advice;
    };
    for (const Row& row : std::vector<Row>{
             {{{"numbr", "3", "--set"}},
              "there is no parameter 'numbr' in a.toml",
              "did you mean 'number'?"},
             {{{"z", "3", "--set"}},
              "there is no parameter 'z' in a.toml",
              "it has 'number', 'flag' and 'text'"},
             {{{"flag", "1", "--set"}},
              "'1' is neither true nor false, as the parameter 'flag' is one in a.toml:1",
              "write true or false"},
             {{{"number", "3", "--set"}, {"number", "3", "--set"}},
              "the parameter 'number' is set twice",
              "set it once"}}) {
        try {
            declaring(declared, row.settings);
            ADD_FAILURE() << row.message;
        } catch (const InputError& error) {
            EXPECT_EQ(error.problem().message, row.message);
            EXPECT_EQ(error.problem().advice, row.advice);
            EXPECT_EQ(error.problem().where.file, "--set");
        }
    }
    for (const char* text : {"", "true", "abc", "3 # 4", "3\nx = 4", "1979-05-27", "3 ms", "1__0",
                             "9223372036854775808", "-", "[3]", "'3'"}) {
        EXPECT_THROW(declaring(declared, {{"number", text, "--set"}}), InputError) << text;
    }
}

TEST(ParameterSettings, DeclarationsThatFormulasCannotUseAreRefused) {
    for (const char* wrong : {"a = [1]", "a = {}", "a = 1979-05-27", "'my name' = 3", "'' = 3",
                              "a.b = 3", "'1a' = 2"}) {
        EXPECT_THROW(declaring(wrong), InputError) << wrong;
    }
    EXPECT_THROW(parseAssessmentFile("parameters = 3" + std::string(assessmentOfX), "a.toml"),
                 InputError);
}

// How far a formula looks decides what is read of a recording, before it is typed.
TEST(ParameterSettings, ReachFollowsTheValueThatIsSet) {
    const std::string text =
        "[parameters]\nt = '2 s'\n[definitions]\nd = 'eventually[0, $t](x > 3)'\n"
        "[[assessment]]\nname = 'a'\nformula = 'always[-$t, 0](d)'\n";
    const auto reach = [&](const std::vector<ParameterSetting>& settings) {
        const AssessmentFile file = parseAssessmentFile(text, "a.toml", settings);
        return reachOf(file, chosenAssessments(file, RunOptions())).text();
    };
    EXPECT_EQ(reach({}), "4");
    EXPECT_EQ(reach({{"t", "1 min", "--set"}}), "120");
}

}  // namespace
}  // namespace vorm::evaluation
