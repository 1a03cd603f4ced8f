#include <vorm/evaluation/assessment/judgement.hpp>

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

TimedTrace_T<bool> truth(const std::vector<std::pair<double, bool>>& samples) {
    return traceOf(INTERPOLATION_METHOD::ZOH, samples);
}

TEST(Judgement, HolesAreNeitherPassedNorFailed) {
    const TracePieces pieces{truth({{0, true}, {2, false}, {3, true}, {4, true}}),
                             truth({{6, false}, {7, false}}), truth({{9, true}, {10, true}})};
    AssessmentOutcome outcome;
    judge(pieces, {-1, 12}, outcome);
    EXPECT_EQ(outcome.verdict, resultEnum_t::FAIL);
    EXPECT_EQ(outcome.passed, 4);
    EXPECT_EQ(outcome.failed, 2);
    EXPECT_EQ(outcome.unknown, 7);
    ASSERT_EQ(outcome.failures.size(), 2);
    EXPECT_EQ(outcome.failures[1].start, 6);
    EXPECT_EQ(outcome.failures[1].end, 7);
}

TEST(Judgement, OnlyTheRangeCounts) {
    const TracePieces pieces{truth({{0, false}, {2, true}, {5, false}, {6, false}})};
    AssessmentOutcome inside;
    judge(pieces, {2, 4}, inside);
    EXPECT_EQ(inside.verdict, resultEnum_t::PASS);
    EXPECT_EQ(inside.passed, 2);
    AssessmentOutcome atItsEnd;
    judge(pieces, {2, 5}, atItsEnd);
    EXPECT_EQ(atItsEnd.verdict, resultEnum_t::FAIL) << "both ends belong to the range";
    AssessmentOutcome outside;
    judge(pieces, {7, 9}, outside);
    EXPECT_EQ(outside.verdict, resultEnum_t::NO_RESULT);
    EXPECT_EQ(outside.unknown, 2);
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
}

}  // namespace
}  // namespace vorm::evaluation
