// Distinct formulas and traces are used from several threads at once. A build with the thread
// sanitizer shows what is shared that should not be.

#include "support/expressions.hpp"
#include "support/traces.hpp"

#include <thread>

namespace vorm::test {
namespace {

// What one thread computes: formulas, their texts and hashes, traces, verdicts and a failure.
std::string work(int seed) {
    ExpressionFactory f;
    const Expression x = f.Variable("x", trace("0:1 2:3 5:1", 8));
    const Expression rise = f.Rise(seed, 2, x);
    const Expression formula = f.Globally(0, 1, f.Implies(rise, f.Not(rise)));
    const TimedTrace& course = f.getTraces().at(x);
    const TimedTrace limit = f.getTraces().at(f.Constant<double>(seed));
    std::ostringstream out;
    out << formula << ExpressionInfluenceConeVisitor().getTree(formula).at(x).hi;
    out << course.Shift(1).Plus(limit).Eventually(0, 2).get<double>().points.size();
    const auto above = course.get<double>().combine<bool>(limit.get<double>(), ValueGreater());
    out << TimedTrace(above).ConvertToResult(0, 10).getLastKnownTime();
    const TimedTrace fixed = TimedTrace_T(ValueType<FixedPoint>(FixedPoint(seed)));
    out << fixed.Plus(fixed).get<ValueType<FixedPoint>>().points.front().value.get().text();
    try {
        course.Plus(TimedTrace_T<bool>(true));
    } catch (const AssessmentBinaryTypeException& failure) {
        out << AssessmentEvaluationException(formula, failure.getCause()).what();
    }
    return out.str();
}

TEST(Threads, ComputeWhatOneThreadComputes) {
    constexpr int count = 4;
    constexpr int rounds = 50;
    std::vector<std::string> expected;
    for (int seed = 0; seed < count; ++seed) {
        expected.push_back(work(seed));
    }
    std::vector<int> wrong(count);
    std::vector<std::thread> threads;
    for (int seed = 0; seed < count; ++seed) {
        threads.emplace_back([&expected, &wrong, seed] {
            const auto own = static_cast<std::size_t>(seed);
            for (int round = 0; round < rounds; ++round) {
                wrong[own] += work(seed) != expected[own];
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(count));
}

}  // namespace
}  // namespace vorm::test
