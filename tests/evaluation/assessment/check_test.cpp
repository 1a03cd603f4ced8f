#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/check.hpp>

#include <gtest/gtest.h>

#include <fstream>

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
              (Messages{"3: unknown signal 'z'", "9: unknown signal 'y'",
                        "12: an assessment is true or false, but this is of type double"}));
    EXPECT_EQ(
        messagesOf(check(file, test::read("t,z\n0,\n"))),
        (Messages{"2: unknown signal 'x'", "9: unknown signal 'y'", "12: unknown signal 'x'"}));
}

TEST(Check, TellsADefinitionOnceWhetherItIsUsedOrNot) {
    const AssessmentFile file = parseAssessmentFile(
        "[definitions]\nwrong = \"z & 3\"\nunused = \"wrong\"\nother = \"z + w > 1\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"wrong\"\n"
        "[[assessment]]\nname = \"b\"\nformula = \"x > 1 & wrong\"\n",
        "a.toml");
    EXPECT_EQ(messagesOf(check(file)), Messages{"2: `3` is a number, but '&' needs bool"});
    EXPECT_EQ(messagesOf(check(file, test::read("t,x\n0,\n"))),
              (Messages{"2: unknown signal 'z'", "4: unknown signal 'z'"}));
}

// Of each key, signal, definition and assessment.
TEST(Check, TellsAllThatIsWrongInAFile) {
    const PartlyReadFile read = parsePartly(
        "title = 5\n"
        "[recording]\nheadr = 1\nform = \"lng\"\nname_column = \"n\"\nunti = 1\n"
        "[signals]\n"
        "p = { type = \"bool\", interpolation = \"linear\" }\n"
        "q = { typ = \"double\" }\n"
        "[parameters]\nlimit = []\nfine = 5\nnone = {}\n"
        "[definitions]\nbroken = \"x >\"\nuses = \"broken & p & $none\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"uses & $fine\"\n"
        "[[assessment]]\nname = \"a\"\nformula = \"x > $limit\"\nseverity = \"bad\"\n"
        "[[assessment]]\nname = \"b\"\nformula = \"x &\"\ntags = 5\nfrm = 1\nt = 1\n"
        "[[assessment]]\nname = \"c\"\nformula = \"$lim > 5\"\n",
        "a.toml", {{"limit", "5", "--set"}, {"fine", "7", "--set"}});
    EXPECT_EQ(
        messagesOf(read.errors),
        (Messages{"1: 'title' has to be a text in quotes", "4: 'lng' is no form",
                  "3: unknown key 'headr' in [recording]", "6: unknown key 'unti' in [recording]",
                  "8: the signal 'p' is of type bool, which has no linear interpolation",
                  "9: unknown key 'typ' in the signal 'q'",
                  "11: the parameter 'limit' has to be a number, true or false, or a text",
                  "13: the parameter 'none' has to be a number, true or false, or a text",
                  "15: expected an operand, found the end of the formula",
                  "21: there are two assessments 'a'", "23: 'bad' is no severity",
                  "27: 'tags' has to be a text in quotes",
                  "26: expected an operand, found the end of the formula",
                  "28: unknown key 'frm' in [[assessment]]",
                  "29: unknown key 't' in [[assessment]]", "32: unknown parameter 'lim'"}));
    EXPECT_EQ(messagesOf(check(read.file)),
              Messages{"19: `$fine` is a number, but '&' needs bool"});
    EXPECT_THROW(parseAssessmentFile("title = 5\n", "a.toml"), InputError);
}

TEST(Check, WhatFollowsFromAnErrorIsNone) {
    const auto errorsOf = [](const std::string& text, const std::string& path) {
        const PartlyReadFile read = parsePartly(text, "a.toml");
        auto errors = messagesOf(read.errors);
        for (const std::string& message : messagesOf(check(read, RecordingSource{{path}}))) {
            errors.push_back(message);
        }
        return errors;
    };
    const std::string path = testing::TempDir() + "/check.csv";
    std::ofstream(path) << "t,x,mode\n0,1,on\n1,2,off\n";
    const std::string signals =
        "[enumerations]\nMode = []\n"
        "[signals]\nspeed = { column = \"x\", typ = \"double\" }\nm = { column = \"mode\", type = "
        "\"Mode\" }\n";
    const std::string assessments =
        "[[assessment]]\nname = \"a\"\nformula = \"speed > 1 & m == 'on'\"\nfrom = 2026-11-22\n"
        "[[assessment]]\nname = \"b\"\nformula = \"speed > y & 5\"\n";
    const Messages ofSignals{"2: 'Mode' is no enumeration",
                             "4: unknown key 'typ' in the signal 'speed'"};
    auto expected = ofSignals;
    expected.emplace_back("12: unknown signal 'y'");
    EXPECT_EQ(errorsOf(signals + assessments, path), expected);
    EXPECT_EQ(errorsOf("[recording]\ntime = 5\n[[assessment]]\nname = \"a\"\nformula = \"y > 1\"\n",
                       path),
              Messages{"2: 'time' has to be a text in quotes"})
        << "the recording cannot be read";
    EXPECT_EQ(errorsOf("[[assessment]]\nname = \"a\"\nformula = \"x >\"\n", path),
              Messages{"3: expected an operand, found the end of the formula"})
        << "no assessment is left";
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
                        "7: '2026-11-22' is a date, and the times of r.csv are no dates"}));
}

TEST(Check, ARecordingThatCannotBeReadIsOneError) {
    const AssessmentFile file =
        parseAssessmentFile("[[assessment]]\nname = \"a\"\nformula = \"x > 1\"\n", "a.toml");
    EXPECT_EQ(check(file, RecordingSource{{"/nowhere/at/all.csv"}}).size(), 1U);
}

}  // namespace
}  // namespace vorm::evaluation
