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

// One fault for each key, definition and assessment, and none that only follows from another.
TEST(Check, TellsAllThatIsWrongInAFile) {
    const PartlyReadFile read = parsePartly(
        "title = 5\n"
        "[recording]\nheadr = 1\n"
        "[signals]\n"
        "p = { type = \"bool\", interpolation = \"linear\" }\n"
        "q = { typ = \"double\" }\n"
        "[parameters]\nlimit = []\n"
        "[definitions]\nbroken = \"x >\"\nuses = \"broken & p\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"uses & 5\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"x > $limit\"\nseverity = \"bad\"\n"
        "[[assessment]]\nname = \"b\"\nformula = \"x &\"\ntags = 5\nfrm = 1\n"
        "[[assessment]]\nname = \"c\"\nformula = \"x & 5\"\n",
        "a.toml");
    EXPECT_EQ(
        messagesOf(read.errors),
        (Messages{"1: 'title' has to be a text in quotes", "3: unknown key 'headr' in [recording]",
                  "5: the signal 'p' is of type bool, which has no linear interpolation",
                  "6: unknown key 'typ' in the signal 'q'",
                  "8: the parameter 'limit' has to be a number, true or false, or a text",
                  "10: expected an operand, found the end of the formula",
                  "16: there are two assessments 'a'", "18: 'bad' is no severity",
                  "22: 'tags' has to be a text in quotes",
                  "21: expected an operand, found the end of the formula",
                  "23: unknown key 'frm' in [[assessment]]"}));
    EXPECT_EQ(messagesOf(check(checkablePart(read))),
              Messages{"26: `5` is a number, but '&' needs bool"});
    EXPECT_THROW(parseAssessmentFile("title = 5\n", "a.toml"), InputError);
}

TEST(Check, KnowsInterpolationAndRangesOfRecordings) {
    const AssessmentFile file = parseAssessmentFile(
        "[[assessment]]\nname = \"slope\"\nformula = \"slope(x) > 1\"\n"
        "[[assessment]]\nname = \"range\"\nformula = \"x > 1\"\nfrom = 2026-11-22\n"
        "[[assessment]]\nname = \"NaN\"\nformula = \"int8(x / 0) > 1\"\n",
        "a.toml");
    EXPECT_EQ(messagesOf(check(file)), Messages{});
    EXPECT_EQ(messagesOf(check(file, test::read("t,x\n0,1\n1,2\n"))),
              (Messages{"3: `x` is held between samples, but 'slope' needs a line",
                        "7: '2026-11-22' is a date, and the times of r.csv are none"}));
}

TEST(Check, ARecordingThatCannotBeReadIsOneError) {
    const AssessmentFile file =
        parseAssessmentFile("[[assessment]]\nname = \"a\"\nformula = \"x > 1\"\n", "a.toml");
    EXPECT_EQ(check(file, RecordingSource{{"/nowhere/at/all.csv"}}).size(), 1U);
}

}  // namespace
}  // namespace vorm::evaluation
