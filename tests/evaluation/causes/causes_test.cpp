// Why formulas fail, and why they are open: by example.

#include <vorm/evaluation/causes/gaps.hpp>
#include <vorm/evaluation/causes/sufficient_causes.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <gtest/gtest.h>

#include <sstream>

namespace vorm::evaluation::detail {
namespace {

using assessments::Expression;
using assessments::INTERPOLATION_METHOD;
using assessments::TimedTrace;
using assessments::TimedTrace_T;

TimedTrace held(const std::vector<std::pair<double, double>>& samples, double known) {
    TimedTrace_T<double> trace(INTERPOLATION_METHOD::ZOH, 0);
    for (const auto& [time, value] : samples) {
        trace.push_back({time, value});
    }
    trace.lastKnownTime = known;
    return trace;
}

// Times from 1024 on are equally far apart, and are shown from there.
constexpr double origin = 1024;

// a is 1 from 2 to 4, b from 3 to 6, both are known to 20; c is 1 but for 10 and 12, and has a hole
// between 14 and 16; d begins at 5 and ends at 18.
TracePieces piecesOf(const std::string& name) {
    const auto at = [](double time) { return origin + time; };
    if (name == "a") {
        return {held({{at(0), 0}, {at(2), 1}, {at(4), 0}}, at(20))};
    }
    if (name == "b") {
        return {held({{at(0), 0}, {at(3), 1}, {at(6), 0}}, at(20))};
    }
    if (name == "c") {
        return {held({{at(0), 1}, {at(10), 0}, {at(10.5), 1}, {at(12), 0}, {at(12.5), 1}}, at(14)),
                held({{at(16), 1}}, at(20))};
    }
    return {held({{at(5), 1}}, at(18))};
}

JudgedFormula judgedFormula(const Expression& formula) {
    const auto lookup = [](const assessments::variable& signal) {
        return std::make_shared<const TracePieces>(piecesOf(signal.name));
    };
    const auto truthOf = [&](const Expression& tree) {
        return evaluate({{&tree, Meaning::Boolean}}, lookup).at(0).truth;
    };
    return {formula, truthOf, lookup};
}

std::string text(const CountedSpan& span) {
    std::ostringstream out;
    out << span.first - origin;
    if (span.last != span.first) {
        out << " to " << span.last - origin;
    }
    return out.str();
}

std::string blamed(const std::string& formula, const CountedSpan& failure) {
    const Expression tree = expressionOf(ParsedFormula(formula));
    const JudgedFormula judged = judgedFormula(tree);
    const SufficientCauses found =
        sufficientCauses(judged, {origin + failure.first, origin + failure.last});
    std::string all;
    for (const auto& [number, times] : found.conditions) {
        const JudgedNode& condition = judged.nodes()[number];
        for (const CountedSpan& span : spansOf(*condition.truth, times)) {
            all +=
                (all.empty() ? "" : ", ") + formulaText(*condition.formula) + " at " + text(span);
        }
    }
    const char* const extents[] = {"", "beginning: ", "part: "};
    all = extents[static_cast<std::size_t>(found.extent)] + all;
    return found.others > 0 ? all + ", or " + std::to_string(found.others) + " more" : all;
}

std::string blamed(const std::string& formula, double time) {
    return blamed(formula, CountedSpan{time, time});
}

TEST(SufficientCauses, OfLogicAreTheOperandsThatDecide) {
    EXPECT_EQ(blamed("a == 1 & b == 1", 2), "b == 1 at 2");
    EXPECT_EQ(blamed("a == 1 & b == 1", 0), "a == 1 at 0, b == 1 at 0");
    EXPECT_EQ(blamed("a == 1 | b == 1", 0), "b == 1 at 0, or 1 more");
    EXPECT_EQ(blamed("a == 1 -> b == 1", 2), "b == 1 at 2, or 1 more");
    EXPECT_EQ(blamed("~(a == 1 & b == 1)", 3), "a == 1 at 3, or 1 more");
    EXPECT_EQ(blamed("(a == 1 | c == 0) & (a == 1 | b == 1)", 0),
              "c == 0 at 0, b == 1 at 0, or 1 more");
    EXPECT_EQ(blamed("rise(a == 1) -> b == 1", 2), "b == 1 at 2, or 1 more");
}

TEST(SufficientCauses, OfWindowsAreAllThatIsWrongInThem) {
    EXPECT_EQ(blamed("always[0, 12](c == 1)", 1), "c == 1 at 10 to 10.5, c == 1 at 12 to 12.5");
    EXPECT_EQ(blamed("always[0, 3](a == 0)", {0, 3}), "a == 0 at 2 to 4");
    EXPECT_EQ(blamed("eventually[1, 2](a == 1)", {5, 6}), "a == 1 at 6 to 8");
    EXPECT_EQ(blamed("~eventually[0, 1](a == 1)", 1), "a == 1 at 2");
    EXPECT_EQ(blamed("Shift[2](a == 1)", 3), "a == 1 at 5");
}

// Of the windows that would do, the last one is looked at.
TEST(SufficientCauses, OfNestedWindowsFreeOneOfThem) {
    EXPECT_EQ(blamed("eventually[0, 3](always[0, 2.5](c == 1))", 8.5), "c == 1 at 12 to 12.5");
    EXPECT_EQ(blamed("eventually[0, 1](always[0, 4](c == 1))", 8.5),
              "c == 1 at 10 to 10.5, c == 1 at 12 to 12.5");
}

TEST(SufficientCauses, OfUntilAreTheGoalOrAllThatBreaksBeforeIt) {
    EXPECT_EQ(blamed("b == 0 until[0, 2] a == 1", 7), "a == 1 at 7 to 9");
    EXPECT_EQ(blamed("c == 1 until[0, 10] d == 0", 9),
              "c == 1 at 10 to 10.5, c == 1 at 12 to 12.5, or 1 more");
    // To the end of the recording, where a shifted signal is known for longer.
    EXPECT_EQ(blamed("a == 0 until[0, end] Shift[-5](b == 1)", 12), "b == 1 at 7 to 15");
    EXPECT_EQ(blamed("~(Shift[-5](a == 0) until[0, end] Shift[-16](b == 1))", 17),
              "b == 1 at 3 to 4, or 1 more");
}

// A literal is what it is as far as a window without an end looks.
TEST(SufficientCauses, AreNotInAWindowOverALiteral) {
    EXPECT_EQ(blamed("a == 1 & a == 1 -> once[0, begin](false)", 2), "a == 1 at 2");
    EXPECT_EQ(blamed("a == 1 & a == 1 -> eventually[0, end](false)", 2), "a == 1 at 2");
}

TEST(SufficientCauses, MayAccountForLess) {
    // Nothing rises throughout an interval.
    EXPECT_EQ(blamed("rise(a == 1)", {5, 6}), "beginning: a == 1 at 5");
    EXPECT_EQ(blamed("a == 1 & a == 0 & false", 0).substr(0, 5), "part:");
}

std::string gaps(const std::string& formula, double time) {
    const Expression tree = expressionOf(ParsedFormula(formula));
    const JudgedFormula judged = judgedFormula(tree);
    std::map<std::string, TracePieces> pieces;
    for (const char* name : {"a", "b", "c", "d"}) {
        pieces.emplace(name, piecesOf(name));
    }
    const auto lookup = [&](const assessments::variable& signal) -> const TracePieces& {
        return pieces.at(signal.name);
    };
    std::string all;
    for (const Gap& gap : gapsBehind(judged, TimeSet({origin + time, origin + time}), lookup)) {
        all += (all.empty() ? "" : ", ") + gap.signal + " from " + text({gap.from, gap.to});
    }
    return all;
}

TEST(Gaps, AreThoseThatDecide) {
    EXPECT_EQ(gaps("d == 1 & a == 1", 3), "d from -inf to 5");
    EXPECT_EQ(gaps("d == 1 & a == 1", 0), "") << "a decides";
    EXPECT_EQ(gaps("always[0, 3](c == 1)", 13), "c from 14 to 16");
    EXPECT_EQ(gaps("always[0, 5](c == 1 | d == 1)", 16), "c from 20 to inf, d from 18 to inf");
    EXPECT_EQ(gaps("always[0, 5](c - Shift[-2](d) < 9)", 17), "c from 20 to inf, d from 18 to inf");
    EXPECT_EQ(gaps("rise(d == 1)", 19), "d from 18 to inf");
}

TEST(Gaps, OfUntilLieBeforeWhatEndsTheWaiting) {
    EXPECT_EQ(gaps("c == 1 until[0, 20] d == 0", 12.5),
              "c from 14 to 16, c from 20 to inf, d from 18 to inf");
    EXPECT_EQ(gaps("c == 1 until[0, 3] d == 0", 12.5), "") << "no goal in the window";
    EXPECT_EQ(gaps("c == 1 until[0, 20] d == 0", 11), "") << "c breaks at 12";
    EXPECT_EQ(gaps("c == 1 until[0, 20] a == 1", 13),
              "c from 14 to 16, c from 20 to inf, a from 20 to inf");
    EXPECT_EQ(gaps("d == 1 until[0, 20] b == 1", 1), "d from -inf to 5") << "b comes at 3";
}

TEST(TimeSets, MergeWhatTouches) {
    const double next = std::nextafter(2.0, 3);
    EXPECT_EQ(TimeSet(std::vector<CountedSpan>{{next, 3}, {1, 2}}), TimeSet(CountedSpan{1, 3}));
    EXPECT_EQ(TimeSet(std::vector<CountedSpan>{{1, 5}, {2, 3}, {7, 8}}).plus(0, 1).spans().size(),
              2);
    EXPECT_TRUE(TimeSet(CountedSpan{1, 2}).without({1, 2}).isEmpty());
}

}  // namespace
}  // namespace vorm::evaluation::detail
