#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vorm::evaluation {
namespace {

using assessments::INTERPOLATION_METHOD;
using assessments::resultEnum_t;
using assessments::TimedTrace_T;

template <class T>
TimedTrace_T<T> traceOf(INTERPOLATION_METHOD method,
                        const std::vector<std::pair<double, T>>& samples) {
    TimedTrace_T<T> trace(method, 0);
    for (const auto& [time, value] : samples) {
        trace.push_back({time, value});
    }
    return trace;
}

// From each of the times on that value; open before.
Truth truth(const std::vector<std::pair<double, int>>& steps) {
    Truth result(std::int8_t{isOpen});
    for (const auto& [time, value] : steps) {
        result.push_back({time, static_cast<std::int8_t>(value)});
    }
    return result;
}

std::string text(const std::vector<TimeSpan>& spans) {
    std::string result;
    for (const TimeSpan& span : spans) {
        result += "[" + span.start.text() + ", " + span.end.text() + "] ";
    }
    return result;
}

TEST(Judgement, TellsFailingAndOpenSpansOfTheRangeAlone) {
    const Truth mixed = truth({{0, 1}, {2, -1}, {3, 1}, {4, 0}, {6, -1}, {7, 0}, {9, 1}, {10, 0}});
    struct Row {
        CountedSpan range;
        resultEnum_t verdict;
        const char* failures;
        const char* open;
    };
    for (const Row& row : {
             Row{{-1, 12}, resultEnum_t::FAIL, "[2, 3] [6, 7] ", "[-1, 0] [4, 6] [7, 9] [10, 12] "},
             Row{{3, 5}, resultEnum_t::PASS, "", "[4, 5] "},
             Row{{0, 1}, resultEnum_t::PASS, "", ""},
             Row{{0, 2}, resultEnum_t::FAIL, "[2, 2] ", ""},
             Row{{2.5, 2.5}, resultEnum_t::FAIL, "[2.5, 2.5] ", ""},
             Row{{6.5, 8}, resultEnum_t::FAIL, "[6.5, 7] ", "[7, 8] "},
             Row{{7, 8}, resultEnum_t::NO_RESULT, "", "[7, 8] "},
             Row{{11, 11}, resultEnum_t::NO_RESULT, "", "[11, 11] "},
         }) {
        const Judgement judgement = judge(mixed, row.range, Timeline(second));
        EXPECT_EQ(judgement.verdict, row.verdict) << row.range.first;
        EXPECT_EQ(text(judgement.failures), row.failures);
        EXPECT_EQ(text(judgement.open), row.open);
    }
}

// What one representable time tells apart reads as one time.
TEST(Judgement, InstantsHaveOneTime) {
    const double just = std::nextafter(4.0, 5);
    const Truth instants =
        truth({{0, 1}, {4, 0}, {just, -1}, {std::nextafter(just, 5), 0}, {6, 1}});
    const Judgement judgement = judge(instants, {0, 8}, Timeline(second));
    EXPECT_EQ(text(judgement.failures), "[4, 4] ");
    EXPECT_EQ(text(judgement.open), "[4, 4] [4, 6] ");
}

TEST(Judgement, TriggersAreTheLeftSidesOfImplications) {
    const auto trigger = [](const std::string& formula) {
        const auto tree = expressionOf(ParsedFormula(formula));
        const auto found = triggerOf(tree);
        return found ? formulaText(*found->formula) : "none";
    };
    EXPECT_EQ(trigger("a == 1 -> b == 1"), "a == 1");
    EXPECT_EQ(trigger("always[0, 1](always[0, 2](a == 1 -> b == 1))"), "a == 1");
    EXPECT_EQ(trigger("eventually[0, 1](a == 1 -> b == 1)"), "none");
    EXPECT_EQ(trigger("a == 1 & b == 1"), "none");
    EXPECT_EQ(trigger("~a == 1"), "none");
}

TEST(Judgement, TriggersAreLookedAtWhereWindowsLeadWithinWhatIsKnown) {
    struct Row {
        const char* formula;
        CountedSpan range;
        CountedSpan expected;
    };
    for (const Row& row : {
             Row{"a == 1 -> b == 1", {2, 6}, {2, 6}},
             Row{"always[-1, 2](a == 1 -> b == 1)", {2, 6}, {1, 8}},
             Row{"always[1, 2](always[1, 2](a == 1 -> b == 1))", {2, 6}, {4, 10}},
             Row{"always[-3, 5](a == 1 -> b == 1)", {2, 6}, {0, 10}},
             Row{"always[-3, 5](a == 1 -> b == 1)", {-1, 12}, {-1, 12}},
         }) {
        const auto tree = expressionOf(ParsedFormula(row.formula));
        const CountedSpan range = rangeOfTrigger(*triggerOf(tree), row.range, {0, 10});
        EXPECT_EQ(range.first, row.expected.first) << row.formula;
        EXPECT_EQ(range.last, row.expected.last) << row.formula;
    }
}

TEST(Judgement, IsFalseThroughoutWhatIsNotEmpty) {
    const Truth never = truth({{0, -1}, {5, 0}});
    EXPECT_TRUE(isFalseThroughout(never, {0, 4}));
    EXPECT_FALSE(isFalseThroughout(never, {0, 5})) << "it may still have come";
    EXPECT_FALSE(isFalseThroughout(never, {3, 2})) << "nothing was looked at";
    EXPECT_FALSE(isFalseThroughout(truth({{0, -1}, {2, 1}, {3, -1}}), {0, 5}));
}

TEST(Judgement, LeastValueIsThatOfTheWholeLine) {
    const auto line = traceOf<double>(INTERPOLATION_METHOD::LINEAR, {{0, 4}, {4, 0}, {8, 8}});
    EXPECT_EQ(leastValue({line}, {0, 8}), 0);
    EXPECT_EQ(leastValue({line}, {1, 3}), 1) << "between samples";
    EXPECT_EQ(leastValue({line}, {6, 7}), 4);
    EXPECT_EQ(leastValue({line}, {9, 10}), std::nullopt);
    const auto gap = traceOf<double>(
        INTERPOLATION_METHOD::ZOH, {{0, 4}, {1, std::numeric_limits<double>::quiet_NaN()}, {2, 1}});
    EXPECT_TRUE(std::isnan(*leastValue({gap}, {0, 2}))) << "not known by how much";
    const auto later = traceOf<double>(INTERPOLATION_METHOD::ZOH, {{10, 7}, {12, -1}});
    EXPECT_EQ(leastValue({line, later}, {1, 11}), 0);
    EXPECT_EQ(leastValue({line, later}, {1, 12}), -1);
    EXPECT_TRUE(std::isnan(*leastValue({gap, later}, {0, 12})));
}

}  // namespace
}  // namespace vorm::evaluation
