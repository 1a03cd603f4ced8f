#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/check.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

std::vector<std::string> messagesOf(const std::vector<InputError>& errors) {
    std::vector<std::string> messages;
    for (const InputError& error : errors) {
        messages.push_back(std::to_string(error.problem().where.line) + ": " +
                           error.problem().message);
    }
    return messages;
}

using Messages = std::vector<std::string>;

TEST(Check, TellsEveryFormulaThatDoesNotFit) {
    const AssessmentFile file = parseAssessmentFile(
        "[definitions]\n"
        "high = \"x > 3\"\n"
        "unused = \"z > 3\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"high\"\n"
        "[[assessment]]\nname = \"b\"\nformula = \"y & true\"\n"
        "[[assessment]]\nname = \"c\"\nformula = \"x\"\n",
        "a.toml");
    const auto x = test::read("t,x\n0,1\n1,2\n");
    EXPECT_EQ(messagesOf(check(file)), Messages{}) << "any signal of any type";
    EXPECT_EQ(messagesOf(check(file, x)),
              (Messages{"9: unknown signal 'y'",
                        "12: an assessment is true or false, but this is of type double"}));
    EXPECT_EQ(
        messagesOf(check(file, test::read("t,z\n0,\n"))),
        (Messages{"2: unknown signal 'x'", "9: unknown signal 'y'", "12: unknown signal 'x'"}));
}

TEST(Check, TellsUnusedDefinitionsWhereTheAssessmentsFit) {
    const AssessmentFile file = parseAssessmentFile(
        "[definitions]\nunused = \"z > 3\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"x > 1\"\n",
        "a.toml");
    EXPECT_EQ(messagesOf(check(file, test::read("t,x\n0,\n"))), Messages{"2: unknown signal 'z'"});
    EXPECT_EQ(messagesOf(check(file, test::read("t,x,z\n0,,\n"))), Messages{});
}

TEST(Check, ARecordingThatCannotBeReadIsOneError) {
    const AssessmentFile file =
        parseAssessmentFile("[[assessment]]\nname = \"a\"\nformula = \"x > 1\"\n", "a.toml");
    EXPECT_EQ(check(file, RecordingSource{{"/nowhere/at/all.csv"}}).size(), 1U);
}

}  // namespace
}  // namespace vorm::evaluation
