// Causes of random failures: turned round, they make the failure pass, and none of them can be left
// out. VORM_EXPLAINED_FORMULAS is the number of formulas.

#include "support/expressions.hpp"
#include "support/tries.hpp"

#include <vorm/evaluation/causes/sufficient_causes.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>

namespace vorm::test {
namespace {

using namespace vorm::evaluation;
using namespace vorm::evaluation::detail;

// From the time on: true, false, or not known.
using Course = std::map<double, std::optional<bool>>;
using Courses = std::map<boost::uuids::uuid, Course>;

// Doubles are equally far apart from 1024 to 2048.
constexpr double origin = 1100;
constexpr std::uint8_t conditionCount = 5;

Course anyCourse() {
    Course course;
    double time = origin + 0.5 * static_cast<double>(anyIndex(3));
    for (std::size_t count = 3 + anyIndex(12); count > 0; --count) {
        course[time] = anyIndex(12) == 0 ? std::nullopt : std::optional(anyIndex(2) == 0);
        time += 0.25 * static_cast<double>(1 + anyIndex(6));
    }
    course[time] = std::nullopt;
    return course;
}

Courses anyCourses() {
    Courses courses;
    for (std::uint8_t number = 1; number <= conditionCount; ++number) {
        courses[idOf(number)] = anyCourse();
    }
    return courses;
}

SharedPieces piecesOf(const Course& course) {
    auto pieces = std::make_shared<TracePieces>();
    for (auto change = course.begin(); change != course.end(); ++change) {
        if (!change->second) {
            continue;
        }
        TimedTrace_T<bool> piece(INTERPOLATION_METHOD::ZOH, 0);
        for (; change->second; ++change) {
            piece.push_back({change->first, *change->second});
        }
        piece.lastKnownTime = std::nextafter(change->first, 0);
        pieces->push_back(piece);
    }
    return pieces;
}

std::optional<bool> valueAt(const Course& course, double time) {
    const auto after = course.upper_bound(time);
    return after == course.begin() ? std::nullopt : std::prev(after)->second;
}

void turnRound(Course& course, const CountedSpan& span) {
    const double end = std::nextafter(span.last, 1e300);
    const auto before = valueAt(course, span.first);
    const auto after = valueAt(course, end);
    course.emplace(span.first, before);
    course.emplace(end, after);
    for (auto change = course.find(span.first); change->first < end; ++change) {
        ASSERT_TRUE(change->second);
        change->second = !*change->second;
    }
}

SharedTruth truthOn(const Courses& courses, const Expression& formula) {
    const auto lookup = [&](const variable& signal) { return piecesOf(courses.at(signal.id)); };
    return evaluate({{&formula, evaluation::Meaning::Boolean}}, lookup).at(0).truth;
}

class Grower {
public:
    Expression truth(std::size_t levels) {
        if (levels == 0) {
            return anyIndex(12) == 0 ? literal() : condition();
        }
        const auto deeper = [&] { return truth(levels - 1); };
        const double a = 0.25 * static_cast<double>(anyIndex(5));
        const double b = a + 0.25 * static_cast<double>(anyIndex(9));
        const std::size_t kind = anyIndex(logicKinds + 1);
        return kind == logicKinds ? edge(deeper()) : logicOf(kind, a, b, deeper);
    }

private:
    Expression literal() { return factory_.Constant(anyIndex(2) == 0); }
    Expression condition() {
        return signal(static_cast<std::uint8_t>(1 + anyIndex(conditionCount)), "c");
    }
    Expression edge(const Expression& p) {
        if (anyIndex(2) == 0) {
            return unary_op(anyOf<VORM_OP>({VORM_OP::Rises, VORM_OP::Falls}), p, "edge");
        }
        const double direction = anyOf<double>({1, 1, -1});
        return anyIndex(2) == 0
                   ? factory_.EpsilonShift(direction, p)
                   : factory_.And(p, factory_.Not(factory_.EpsilonShift(direction, p)));
    }

    ExpressionFactory factory_;
};

struct Cause {
    boost::uuids::uuid condition;
    CountedSpan span;
};

bool failsIn(const Truth& truth, const CountedSpan& span) {
    if (*truth.valueAt(span.first) == certainlyFalse) {
        return true;
    }
    for (const auto& point : truth.points) {
        if (span.first <= point.time && point.time <= span.last && point.value == certainlyFalse) {
            return true;
        }
    }
    return false;
}

// Whether it still fails where all causes but one are turned round.
bool failsWithout(std::size_t left, const std::vector<Cause>& causes, Courses courses,
                  const Expression& formula, const CountedSpan& failure) {
    for (std::size_t i = 0; i < causes.size(); ++i) {
        if (i != left) {
            turnRound(courses.at(causes[i].condition), causes[i].span);
        }
    }
    return failsIn(*truthOn(courses, formula), failure);
}

std::vector<CountedSpan> failuresOf(const Truth& truth) {
    return TimeSet({origin, origin + 12}).where(truth, certainlyFalse).spans();
}

std::vector<Cause> causesOf(const SufficientCauses& found, const JudgedFormula& judged) {
    std::vector<Cause> causes;
    for (const auto& [number, times] : found.conditions) {
        const JudgedNode& node = judged.nodes()[number];
        for (const CountedSpan& span : spansOf(*node.truth, times)) {
            causes.push_back({boost::get<variable>(*node.formula).id, span});
        }
    }
    return causes;
}

void show(const Courses& courses, const std::vector<Cause>& causes) {
    const auto nameOf = [](const boost::uuids::uuid& id) {
        return "c" + std::to_string(*std::max_element(id.begin(), id.end()));
    };
    for (const Cause& cause : causes) {
        RC_LOG() << "  because of " << nameOf(cause.condition) << " from " << cause.span.first
                 << " to " << cause.span.last << '\n';
    }
    for (const auto& [id, course] : courses) {
        RC_LOG() << nameOf(id) << ':';
        for (const auto& [time, value] : course) {
            RC_LOG() << ' ' << time << (value ? *value ? " true" : " false" : " open");
        }
        RC_LOG() << '\n';
    }
}

using Counts = std::map<CauseExtent, int>;

void check(const Courses& courses, const Expression& formula, Counts& counts) {
    const SharedTruth truth = truthOn(courses, formula);
    const JudgedFormula judged(
        formula, [&](const Expression& tree) { return truthOn(courses, tree); },
        [&](const variable& signal) { return piecesOf(courses.at(signal.id)); });
    for (const CountedSpan& failure : failuresOf(*truth)) {
        const SufficientCauses found = sufficientCauses(judged, failure);
        ++counts[found.extent];
        if (found.extent == CauseExtent::Part) {
            RC_ASSERT(found.others == 0 && !found.areMore);
            continue;
        }
        const bool isWhole = found.extent == CauseExtent::Whole;
        const CountedSpan explained{failure.first, isWhole ? failure.last : failure.first};
        const auto causes = causesOf(found, judged);
        RC_LOG() << to_string(formula) << " fails from " << failure.first << " to " << failure.last
                 << '\n';
        show(courses, causes);
        RC_ASSERT(!failsWithout(causes.size(), causes, courses, formula, explained));
        for (std::size_t left = 0; left < causes.size(); ++left) {
            RC_ASSERT(failsWithout(left, causes, courses, formula, explained));
        }
    }
}

// What rises throughout an interval, and what hangs on a literal, has no sufficient causes.
TEST(SufficientCauses, AreNeededAndSufficient) {
    Counts counts;
    checkTimes(triesOf("VORM_EXPLAINED_FORMULAS", 1000),
               [&] { check(anyCourses(), Grower().truth(1 + anyIndex(4)), counts); });
    const int all =
        counts[CauseExtent::Whole] + counts[CauseExtent::Beginning] + counts[CauseExtent::Part];
    // Mostly they are 0.8 of all; what one formula has many failures of weighs much.
    EXPECT_GE(counts[CauseExtent::Whole] * 3, all * 2) << "too little is explained";
}

}  // namespace
}  // namespace vorm::test
