#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/signal_evaluation.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorm::evaluation {
namespace {

using assessments::INTERPOLATION_METHOD;

/// Held signals h and k, lines l and m.
const Recording& recording() {
    static const Recording recorded = [] {
        RecordingLayout layout;
        for (const std::string name : {"l", "m"}) {
            layout.signals.push_back(test::declared(name));
            layout.signals.back().interpolation = INTERPOLATION_METHOD::LINEAR;
        }
        return test::read("t,h,k,l,m,p\n0,1,2,3,4,true\n1,2,1,5,1,false\n2,3,3,4,2,true\n", layout);
    }();
    return recorded;
}

/// The message and what it marks, or nothing.
std::string refusal(const std::string& text) {
    try {
        typedFormula(ParsedFormula(text), namesIn(recording()));
        return "";
    } catch (const FormulaError& error) {
        return error.problem().message + " @ " +
               text.substr(error.span().begin, error.span().length);
    }
}

/// Whether the evaluator refuses a formula that was not typed.
bool failsInEvaluation(const std::string& text) {
    const auto formula = expressionOf(ParsedFormula(text));
    const auto results =
        evaluate({{&formula, Meaning::Boolean}}, detail::lookupIn(recording(), {&formula}),
                 detail::evaluationOptions(recording(), RunOptions()));
    return results.front().failure != nullptr;
}

// With each of the operands x and y held and linear, and computed of what is.
TEST(Interpolation, TypesRefuseWhatTheEvaluatorRefuses) {
    const std::vector<std::string> operands{"h",
                                            "l",
                                            "-l",
                                            "abs(h)",
                                            "(h + l)",
                                            "(h - k)",
                                            "(l + m)",
                                            "(2 * l)",
                                            "(l / h)",
                                            "min(h, l)",
                                            "max[0, 1](l)",
                                            "max[0, 1](h)",
                                            "Shift[1](l)",
                                            "EpsilonShift[1](h)",
                                            "float(l)",
                                            "double(p)",
                                            "double(int8(h))",
                                            "slope(l)",
                                            "sqrt(h)",
                                            "integral[0, 1](h)",
                                            "mean[0, 1](h)",
                                            "duration[0, 1](p)",
                                            "double(count[0, 1](p))"};
    for (const std::string& operand : operands) {
        const std::string x = "double(" + operand + ")";
        for (const std::string& formula : {"slope(" + x + ") > 1",
                                           "double(int8(" + x + ")) > 1",
                                           "double(fixed(" + x + ")) > 1",
                                           "bool(" + x + ")",
                                           "sqrt(" + x + ") > 1",
                                           "sign(" + x + ") > 1",
                                           "changed(" + x + ")",
                                           "pow(" + x + ", h) > 1",
                                           "pow(h, " + x + ") > 1",
                                           x + " * l > 1",
                                           x + " * h > 1",
                                           "l * " + x + " > 1",
                                           x + " / h > 1",
                                           "h / " + x + " > 1",
                                           "l / " + x + " > 1",
                                           "integral[0, 1](" + x + ") > 1",
                                           "mean[0, 1](" + x + ") > 1",
                                           "duration[0, 1](" + x + " > 1) > 1",
                                           "Rise[1](" + x + ", 1)",
                                           x + " > l",
                                           "rise(" + x + " > 1)",
                                           "always[0, 1](" + x + " > h)"}) {
            EXPECT_EQ(!refusal(formula).empty(), failsInEvaluation(formula))
                << formula << ": " << refusal(formula);
        }
    }
}

TEST(Interpolation, IsToldAtTheOperand) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"slope(h) > 1 & p", "`h` is held between samples, but 'slope' needs a line @ h"},
        {"p & int8(l + h) > 1",
         "`l + h` is a line between samples, but 'int8' needs what is held @ l + h"},
        {"l * m > 1", "`m` is a line between samples, but '*' needs what is held @ m"},
        {"mean[0, 1](l) > 1", "`l` is a line between samples, but 'mean' needs what is held @ l"},
    };
    for (const auto& [text, message] : rows) {
        EXPECT_EQ(refusal(text), message);
    }
}

TEST(Interpolation, OfDeclaredSignalsIsKnownWithoutData) {
    const auto fitting = [](const std::string& signal, const std::string& layout,
                            const std::string& formula) {
        const AssessmentFile file = parseAssessmentFile(
            "[recording]\n" + layout + "\n[signals]\nx = " + signal +
                "\n[definitions]\nd = \"x\"\n[[assessment]]\nname = \"a\"\nformula = \"" + formula +
                "\"\n",
            "a.toml");
        return test::errorOf([&] {
                   typedFormula(file, file.assessments.front(), namesWithoutData(file));
               }) == "no error";
    };
    const std::string linear = "interpolation = \"linear\"";
    const std::string slope = "slope(d) > 1";
    const std::string root = "sqrt(d) > 1";
    EXPECT_FALSE(fitting("{}", "", slope)) << "held without a word";
    EXPECT_TRUE(fitting("{}", "", root));
    EXPECT_TRUE(fitting("{ " + linear + " }", "", slope));
    EXPECT_FALSE(fitting("{ " + linear + " }", "", root));
    EXPECT_FALSE(fitting("{ type = \"double\" }", linear, root));
    EXPECT_FALSE(fitting("{ interpolation = \"held\" }", linear, slope));
    EXPECT_TRUE(fitting("{}", linear, root)) << "may be a bool";
    EXPECT_FALSE(fitting("{ type = \"int8\" }", linear, slope)) << "has no lines";
    EXPECT_TRUE(fitting("{}", "", "slope(y) > 1 & sqrt(y) > 1")) << "not declared";
}

}  // namespace
}  // namespace vorm::evaluation
