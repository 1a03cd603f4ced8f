// Who is to blame at a time: the parts of a formula that decide its value there.

#include <vorm/evaluation/assessment/culprits.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>

namespace vorm::evaluation {
namespace {

using assessments::INTERPOLATION_METHOD;
using assessments::TimedTrace_T;

SharedPieces held(const std::vector<std::pair<double, double>>& samples) {
    TimedTrace_T<double> trace(INTERPOLATION_METHOD::ZOH, 0);
    for (const auto& [time, value] : samples) {
        trace.push_back({time, value});
    }
    return std::make_shared<const TracePieces>(
        TracePieces{assessments::TimedTrace(std::move(trace))});
}

// a is 1 from 2 to 4, b is 1 from 3 to 6.
SharedPieces signal(const assessments::variable& variable) {
    return variable.name == "a" ? held({{0, 0}, {2, 1}, {4, 0}, {10, 0}})
                                : held({{0, 0}, {3, 1}, {6, 0}, {10, 0}});
}

std::vector<std::string> blamed(const std::string& text, double time) {
    const auto formula = expressionOf(ParsedFormula(text));
    const auto truthOf = [](const assessments::Expression& tree) {
        return evaluate({{&tree, Meaning::Boolean}}, signal).at(0).truth;
    };
    std::vector<std::string> parts;
    for (const auto& part : detail::decidingParts(formula, time, truthOf)) {
        std::string shown =
            formulaText(*part.formula) + (part.value ? " is true at " : " is false at ");
        shown += std::to_string(static_cast<int>(part.from));
        if (part.to != part.from) {
            shown += " to " + std::to_string(static_cast<int>(part.to));
        }
        parts.push_back(shown);
    }
    return parts;
}

using Parts = std::vector<std::string>;

TEST(Culprits, AreTheOperandsThatDecide) {
    EXPECT_EQ(blamed("a == 1 & b == 1", 2), (Parts{"b == 1 is false at 2"}));
    EXPECT_EQ(blamed("a == 1 & b == 1", 0),
              (Parts{"a == 1 is false at 0", "b == 1 is false at 0"}));
    EXPECT_EQ(blamed("a == 1 | b == 1", 5), (Parts{"b == 1 is true at 5"}));
    EXPECT_EQ(blamed("a == 1 -> b == 1", 2),
              (Parts{"a == 1 is true at 2", "b == 1 is false at 2"}));
    EXPECT_EQ(blamed("~(a == 1 & b == 1)", 3),
              (Parts{"a == 1 is true at 3", "b == 1 is true at 3"}));
}

TEST(Culprits, AreFoundInWindows) {
    EXPECT_EQ(blamed("always[0, 3](a == 0)", 1), (Parts{"a == 0 is false at 2"}));
    EXPECT_EQ(blamed("eventually[1, 2](a == 1)", 5), (Parts{"a == 1 is false at 6 to 7"}));
    EXPECT_EQ(blamed("~eventually[0, 3](a == 1)", 0), (Parts{"a == 1 is true at 2"}));
    EXPECT_EQ(blamed("Shift[2](a == 1)", 3), (Parts{"a == 1 is false at 5"}));
    EXPECT_EQ(blamed("always[-2, 0](b == 1)", 7), (Parts{"b == 1 is false at 6"}));
}

TEST(Culprits, OfUntilAreTheGoalOrWhatBreaksBeforeIt) {
    EXPECT_EQ(blamed("b == 0 until[0, 2] a == 1", 5), (Parts{"a == 1 is false at 5 to 7"}));
    EXPECT_EQ(blamed("a == 0 until[0, 4] b == 1", 0), (Parts{"a == 0 is false at 2"}));
}

// In [1, 4] first b is to blame, then a: neither decides on its own.
TEST(Culprits, CanBeAConjunctionAsAWhole) {
    EXPECT_EQ(blamed("eventually[0, 2](a == 1 & b == 1 & a ~= b)", 1),
              (Parts{"(a == 1) & (b == 1) & (a ~= b) is false at 1 to 3"}));
}

}  // namespace
}  // namespace vorm::evaluation
