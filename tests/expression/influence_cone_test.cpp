#include "support/expressions.hpp"
#include "support/traces.hpp"

#include <rapidcheck/gtest.h>

#include <map>

namespace vorm::test {
namespace {

constexpr double step = std::numeric_limits<double>::denorm_min();

InfluenceSpan spanOf(const Expression& formula, const Expression& part) {
    return ExpressionInfluenceConeVisitor().getTree(formula).at(part);
}

TEST(ExpressionInfluenceCone, AddsOffsetsAndWindowsAndUnitesOccurrences) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const Expression y = signal(2);
    const struct {
        Expression formula;
        InfluenceSpan ofX;
    } rows[] = {
        {x, {0, 0}},
        {f.Gt(f.Plus(y, f.Abs(x)), y), {0, 0}},
        {cast_op(x, cast_op::Target()), {0, 0}},
        {f.Shift(-2, x), {-2, -2}},
        {f.Globally(1, 4, f.Shift(-2, f.Eventually(0, 3, x))), {-1, 5}},
        {f.Or(f.Shift(3, x), f.Globally(-1, 1, x)), {-1, 3}},
        {f.Rise(1, 2, x), {0, 2}},
        {f.Implies(y, f.Shift(1, x)), {1, 1}},
        {f.Until(f.Shift(1, x), 2, 5, y), {1, infinity}},
        {f.Until(y, 2, 5, f.Shift(1, x)), {1, infinity}},
        {f.Until(y, -2, 5, x), {-2, infinity}},
        {f.Slope(x), {0, step}},
        {f.EpsilonShift(0, x), {-step, 0}},
        {f.EpsilonShift(-1, x), {0, step}},
        {f.EpsilonShift(nan, x), {0, step}},
        {f.Shift(nan, x), {-infinity, infinity}},
        {f.Globally(0, nan, x), {0, infinity}},
        {f.Globally(-infinity, 0, f.Globally(infinity, infinity, x)), {-infinity, infinity}},
    };
    for (const auto& row : rows) {
        const InfluenceSpan found = spanOf(row.formula, x);
        EXPECT_EQ(found, row.ofX) << row.formula << ": " << found.lo << " to " << found.hi;
    }
}

TEST(ExpressionInfluenceCone, KnowsEverySubFormulaAndNoAliases) {
    ExpressionFactory f;
    const Expression x = signal(1);
    const Expression implies = f.Implies(f.Shift(1, x), x);
    const auto cone = ExpressionInfluenceConeVisitor().getTree(f.Globally(0, 2, implies));
    EXPECT_EQ(cone.size(), 5U);
    EXPECT_EQ(cone.at(implies), cone.at(boost::get<alias>(implies).body));
    EXPECT_EQ(cone.at(f.Not(f.Shift(1, x))), (InfluenceSpan{0, 2}));
    EXPECT_EQ(cone.at(x), (InfluenceSpan{0, 3}));
}

// ---- Against an evaluation: what happens outside the cone does not show ------------------------

using Course = std::map<double, double>;

constexpr int firstTime = 0;
constexpr int lastTime = 40;

Expression anyOperators(const ExpressionFactory& f, std::size_t levels) {
    if (levels == 0) {
        return signal(static_cast<std::uint8_t>(anyIndex(2)));
    }
    const auto child = [&] { return anyOperators(f, levels - 1); };
    const auto a = static_cast<double>(anyIndex(4));
    const double b = a + static_cast<double>(anyIndex(4));
    switch (anyIndex(6)) {
        case 0:
            return f.Shift(a - 2, child());
        case 1:
            return f.Globally(a - 2, b - 2, child());
        case 2:
            return f.Eventually(a - 2, b - 2, child());
        case 3:
            return f.Until(child(), a, b, child());
        case 4:
            return f.And(child(), child());
        default:
            return f.Plus(child(), f.UnaryMinus(child()));
    }
}

class Evaluation : public boost::static_visitor<TimedTrace> {
public:
    explicit Evaluation(const std::vector<Course>& courses) : courses_(courses) {}

    TimedTrace operator()(const variable& node) const {
        TimedTrace_T<double> result(held, -infinity);
        for (const auto& [time, value] : courses_[numberOf(node)]) {
            result.push_back({time, value});
        }
        result.lastKnownTime = lastTime;
        return result;
    }
    TimedTrace operator()(const unary_op& node) const { return of(node.child).UnaryMinus(); }
    TimedTrace operator()(const timed_unary_op& node) const {
        return of(node.child).Shift(node.offset);
    }
    TimedTrace operator()(const timedwindow_unary_op& node) const {
        return node.op == VORM_OP::Globally ? of(node.child).Globally(node.a, node.b)
                                            : of(node.child).Eventually(node.a, node.b);
    }
    TimedTrace operator()(const binary_op& node) const {
        return node.op == VORM_OP::And ? of(node.lhs).And(of(node.rhs))
                                       : of(node.lhs).Plus(of(node.rhs));
    }
    TimedTrace operator()(const timedwindow_binary_op& node) const {
        return of(node.lhs).Until(node.a, node.b, of(node.rhs));
    }
    TimedTrace operator()(const Expression&) const { throw std::logic_error("not generated"); }

    TimedTrace of(const Expression& tree) const { return boost::apply_visitor(*this, tree); }

private:
    const std::vector<Course>& courses_;
};

Course anyCourse() {
    Course course;
    for (std::size_t time = firstTime; time < lastTime; time += 1 + anyIndex(4)) {
        course[static_cast<double>(time)] =
            anyIndex(30) == 0 ? nan : static_cast<double>(anyIndex(9));
    }
    return course;
}

double at(const Course& course, double time) {
    return std::prev(course.upper_bound(time))->second;
}

// The course inside [from, to], and that of another one outside.
Course changedOutside(const Course& course, const Course& other, double from, double to) {
    Course changed;
    for (double time = firstTime; time <= lastTime; time += 0.5) {
        const bool inside = from <= time && time <= to;
        changed[time] = at(inside ? course : other, time);
    }
    return changed;
}

RC_GTEST_PROP(ExpressionInfluenceCone, NothingOutsideChangesTheFormula, ()) {
    const ExpressionFactory f;
    const Expression formula = anyOperators(f, 1 + anyIndex(3));
    const auto cone = ExpressionInfluenceConeVisitor().getTree(formula);
    const double time = static_cast<double>(anyIndex(2 * lastTime)) / 2;
    const std::vector<Course> courses{anyCourse(), anyCourse()};
    std::vector<Course> changed;
    for (std::uint8_t number = 0; number < 2; ++number) {
        const auto span = cone.find(signal(number));
        changed.push_back(span == cone.end()
                              ? anyCourse()
                              : changedOutside(courses[number], anyCourse(), time + span->second.lo,
                                               time + span->second.hi));
    }
    const auto before = Evaluation(courses).of(formula).get<double>().valueAt(time);
    const auto after = Evaluation(changed).of(formula).get<double>().valueAt(time);
    RC_CLASSIFY(before && after, "known");
    RC_ASSERT(!before || !after || sameNumber(*before, *after));
}

}  // namespace
}  // namespace vorm::test
