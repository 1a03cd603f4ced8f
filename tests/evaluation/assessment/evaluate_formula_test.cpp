#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/evaluate_formula.hpp>

#include <gtest/gtest.h>

#include <limits>

namespace vorm::evaluation {
namespace {

Recording holedRecording() {
    SignalLayout x = test::declared("x");
    x.maxGap = ExactTime::of("1.9", second);
    return test::read(
        "t,x,y,nothing\n0,1,,\n0.1,7,,\n1,,0,\n2,2,,\n3,2,,\n4,,0,\n5,2,,\n6,7,,\n7,7,,\n8,7,,\n",
        test::declaring({x}));
}

std::string truthOn(const Recording& recording, const std::string& formula) {
    std::string text;
    for (const auto& [span, truth] : evaluate(formula, recording).truth) {
        const char* name = truth == isOpen ? "open" : truth == certainlyTrue ? "true" : "false";
        text += std::string(name) + " " + span.start.text() + " to " + span.end.text() + "; ";
    }
    return text;
}

TEST(EvaluateFormula, GivesTruthAsExactSpans) {
    const Recording recording = holedRecording();
    EXPECT_EQ(truthOn(recording, "x < 5"),
              "true 0 to 0.1; false 0.1 to 2; true 2 to 3; open 3 to 5; true 5 to 6; "
              "false 6 to 8; ");
    EXPECT_EQ(truthOn(recording, "y == 0"), "true 1 to 4; ");
    EXPECT_EQ(truthOn(recording, "y == 0 | x < 5"),
              "true 0 to 0.1; open 0.1 to 1; true 1 to 4; open 4 to 5; true 5 to 6; open 6 to 8; ");
    EXPECT_EQ(truthOn(recording, "rise(x > 5)"),
              "false 0 to 0.1; true 0.1 to 0.1; false 0.1 to 3; open 3 to 5; false 5 to 6; "
              "true 6 to 6; false 6 to 8; ");
    EXPECT_EQ(truthOn(recording, "nothing > 1"), "");
}

TEST(EvaluateFormula, IsOpenWhereASignalHasNoSamples) {
    const Recording recording =
        test::read("t,x,p\n0,1,\n2,7,\n3,7,\n", test::declaring({test::declared("p", "bool")}));
    for (const char* formula :
         {"p", "~p", "rise(p)", "fall(p)", "changed(p)", "Shift[1](p)", "EpsilonShift[1](p)",
          "always[0, 1](p)", "eventually(p)", "historically[0, begin](p)", "once[0, 1](p)",
          "count[0, 1](p) > 0", "duration[0, 1](p) > 0", "(p until[0, 1] p)", "(p since p)",
          "(p -> p)", "(p & rise(~p))", "int8(p) > 0"}) {
        EXPECT_EQ(truthOn(recording, std::string(formula) + " | x < 5"),
                  "true 0 to 2; open 2 to 3; ")
            << formula;
    }
}

TEST(EvaluateFormula, GivesRobustnessWhereAskedFor) {
    const Recording recording = holedRecording();
    EXPECT_EQ(evaluate("x < 5", recording).leastRobustness, nullptr);
    RunOptions options;
    options.robustness = true;
    const FormulaOutcome outcome = evaluate("x < 5", recording, options);
    const auto valuesAt = [&](double seconds) {
        const double time = recording.timeline.at(ExactTime::ofSeconds(seconds).value());
        return std::pair(outcome.leastRobustness->front().get<double>().valueAt(time),
                         outcome.greatestRobustness->front().get<double>().valueAt(time));
    };
    constexpr double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(valuesAt(1), std::pair(std::optional(-2.), std::optional(-2.)));
    EXPECT_EQ(valuesAt(4), std::pair(std::optional(-infinite), std::optional(infinite)));
}

TEST(EvaluateFormula, ErrorsArePlacedInTheText) {
    struct Row {
        const char* formula;
        std::size_t line;
        std::size_t column;
        const char* message;
    };
    for (const Row& row : {
             Row{"x >", 1, 4, "expected an operand, found the end"},
             Row{"y > 0 &\n xx > 3", 2, 2, "unknown signal 'xx'"},
             Row{"x + 1", 1, 1, "an assessment is true or false, but this is of type double"},
             Row{"1 > 0", 1, 1, "the formula reads no signal"},
             Row{"slope(x) > 0", 1, 7, "`x` is held between samples"},
             Row{"int8(x / 0) > 0", 1, 1, "cannot be evaluated: "},
         }) {
        try {
            evaluate(row.formula, holedRecording());
            ADD_FAILURE() << row.formula;
        } catch (const InputError& error) {
            const InputProblem& problem = error.problem();
            EXPECT_EQ(problem.message.substr(0, std::string(row.message).size()), row.message);
            EXPECT_EQ(problem.where.line, row.line) << row.formula;
            EXPECT_EQ(problem.where.column, row.column) << row.formula;
            EXPECT_FALSE(problem.excerpt.empty());
        }
    }
}

}  // namespace
}  // namespace vorm::evaluation
