// The samples of lines, held.

#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/evaluate_formula.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vorm::evaluation {
namespace {

// Lines but where the layout says otherwise.
Recording readForFormula(const std::string& formula, const std::string& content,
                         RecordingLayout layout = {}) {
    layout.interpolation = assessments::INTERPOLATION_METHOD::LINEAR;
    ReadingOptions options;
    options.wanted = ParsedFormula(formula).names();
    return test::read(content, layout, options);
}

std::string signalsFor(const std::string& formula, const std::string& content,
                       const RecordingLayout& layout = {}) {
    return test::textOf(readForFormula(formula, content, layout));
}

TEST(HeldSamples, AreAllOfThoseThatALineHas) {
    EXPECT_EQ(signalsFor("held(x) > x", "t,x\n0,0.5\n1,1\n2,1.5\n4,2\n"),
              "held(x): double 0:0.5 1:1 2:1.5 4:2 known 4\n"
              "x: double linear 0:0.5 2:1.5 4:2 known 4");
    SignalLayout gap = test::declared("s");
    gap.column = "x";
    gap.maxGap = 2 * second;
    gap.equalTimes = EqualTimes::Last;
    EXPECT_EQ(signalsFor("held(s) > 0", "t,x\n0,0.5\n1,nan\n2,1\n2,2\n5,7\n6,8\n7,9\n",
                         test::declaring({gap})),
              "held(s): double 0:0.5 1:nan 2:2 known 2 / 5:7 6:8 7:9 known 7\n"
              "s: double linear 0:0.5 known 0 / linear 0+:nan known 2- / linear 2:2 known 2 / "
              "linear 5:7 7:9 known 7");
}

TEST(HeldSamples, OfWhatIsHeldAreTheSignal) {
    EXPECT_EQ(signalsFor("held(n) > 0", "t,n\n0,1\n1,9007199254740993\n"),
              "held(n): int64 0:1 1:9007199254740993 known 1\n"
              "n: int64 0:1 1:9007199254740993 known 1");
    EXPECT_EQ(signalsFor("held(m) == 'on'", "t,m\n0,on\n1,off\n"),
              "held(m): enumeration m 0:on 1:off known 1\nm: enumeration m 0:on 1:off known 1");
}

TEST(HeldSamples, AreNoColumnOfTheirName) {
    EXPECT_EQ(signalsFor("held(x) > 0", "t,held(x),x\n0,5,0.5\n1,6,1\n"),
              "held(x): double 0:0.5 1:1 known 1\nx: double linear 0:0.5 1:1 known 1");
    EXPECT_EQ(signalsFor("x > 0", "t,x\n0,0\n1,0.5\n2,1\n"), "x: double linear 0:0 2:1 known 2");
}

std::string errorOf(const std::string& formula) {
    try {
        evaluate(formula, readForFormula(formula, "t,x y,z\n0,0,1\n1,1,1\n"));
        return "no error";
    } catch (const FormulaError& error) {
        return error.what();
    }
}

TEST(HeldSamples, AreOfSignalsOnly) {
    EXPECT_EQ(errorOf("held(\"x y\") >= 0"), "no error");
    EXPECT_EQ(errorOf("held > 0").substr(0, 26), "1:1: unknown signal 'held'");
    EXPECT_EQ(errorOf("held(w) > 0").substr(0, 23), "1:1: unknown signal 'w'");
    EXPECT_EQ(errorOf("held(\"x y\" + 1) > 0").substr(0, 28), "1:12: expected ')', found '+");
    EXPECT_EQ(errorOf("held(2) > 0").substr(0, 36), "1:6: expected the name of a signal, ");
    EXPECT_EQ(errorOf("\"held(z)\" > 0").substr(0, 61),
              "1:1: 'held(z)' means the samples of a signal, without quotes\n");
    EXPECT_EQ(formulaText(expressionOf(ParsedFormula("held(\"x y\")>held( a )"))),
              "held(\"x y\") > held(a)");
}

TEST(HeldSamples, AreFoundInTheFileThatANameTells) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "held_samples";
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "a.csv") << "t,x\n0,0\n1,0.5\n2,1\n";
    std::ofstream(folder / "b.csv") << "t,x\n0,2\n1,4\n2,6\n";
    const RunOutcome outcome = run(parseAssessmentFile("[recording]\ninterpolation = 'linear'\n"
                                                       "[[assessment]]\nname = 'a'\n"
                                                       "formula = 'held(a.x) >= 0.5 & b.x >= 3'\n",
                                                       "f.toml"),
                                   {{{folder.string()}}});
    const AssessmentOutcome& judged = outcome.recordings.at(0).assessments.at(0);
    ASSERT_FALSE(judged.error) << judged.error->what();
    ASSERT_EQ(judged.failures.size(), 1U);
    EXPECT_EQ(judged.failures[0].end.text(), "1");
}

}  // namespace
}  // namespace vorm::evaluation
