// Random formulas on random recordings against the slot oracle.

#include "random_cases.hpp"

#include <rapidcheck/gtest.h>

namespace vorm::test {
namespace {

using namespace vorm::evaluation;

// The text at the end of a chain.
std::string firstFault(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const AssessmentException& chain) {
        const AssessmentException* cause = &chain;
        while (cause->getCause() != nullptr) {
            cause = cause->getCause().get();
        }
        return cause->what();
    }
}

EvaluationResult evaluated(const Expression& formula, const Recording& recording,
                           evaluation::Meaning meaning, unsigned jobs = 1) {
    const auto results = evaluate({{&formula, meaning}}, recording.lookup(), {jobs, {}});
    if (results[0].failure) {
        RC_FAIL(to_string(formula) + ": " + firstFault(results[0].failure));
    }
    return results[0];
}

double readAt(const EvaluationResult& result, double time) {
    return result.truth ? *result.truth->valueAt(time)
                        : result.pieces->front().get<double>().valueAt(time).value();
}

void show(const Recording& recording) {
    for (const auto& [id, pieces] : recording.traces) {
        RC_LOG() << int{*std::max_element(id.begin(), id.end())} << ':';
        for (const TimedTrace& piece : *pieces) {
            piece.visit([](const auto& typed) {
                RC_LOG() << "  " << testing::PrintToString(typed) << '\n';
            });
        }
    }
}

void requireSame(const Expression& formula, const Recording& recording,
                 evaluation::Meaning meaning) {
    const EvaluationResult actual = evaluated(formula, recording, meaning);
    const Course expected = SlotOracle(recording.slots, meaning).of(formula);
    for (int slot = firstSlot; slot <= lastSlot; ++slot) {
        const double is = readAt(actual, timeOf(slot));
        const double shouldBe = expected.at(slot);
        const bool same = is == shouldBe || std::fabs(is - shouldBe) < 1e-9;
        if (!same) {
            RC_LOG() << to_string(formula) << " at " << timeOf(slot) << ": " << is << ", expected "
                     << shouldBe << '\n';
            show(recording);
        }
        RC_ASSERT(same);
    }
}

RC_GTEST_PROP(EvaluatorProperty, TruthIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({}).truth(anyIndex(4)), recording, evaluation::Meaning::Boolean);
}

evaluation::Meaning anyRobustness() {
    return anyIndex(2) == 0 ? evaluation::Meaning::LeastRobustness
                            : evaluation::Meaning::GreatestRobustness;
}

RC_GTEST_PROP(EvaluatorProperty, RobustnessOfHeldSignalsIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({.lines = false}).truth(anyIndex(4)), recording, anyRobustness());
}

RC_GTEST_PROP(EvaluatorProperty, RobustnessOfOneComparisonOfLinesIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({}).truth(0), recording, anyRobustness());
}

RC_GTEST_PROP(EvaluatorProperty, TheSignOfRobustnessIsTheTruth, ()) {
    const Recording recording = anyRecording();
    const bool mixed = *rc::gen::arbitrary<bool>();
    const Ingredients with{.held = mixed, .edges = false};
    const Expression formula = FormulaGrower(with).truth(anyIndex(4));
    const auto truth = evaluated(formula, recording, evaluation::Meaning::Boolean);
    const auto least = evaluated(formula, recording, evaluation::Meaning::LeastRobustness);
    const auto greatest = evaluated(formula, recording, evaluation::Meaning::GreatestRobustness);
    const auto agree = [&](double sign, double time) {
        const double from = readAt(least, time);
        const double to = readAt(greatest, time);
        return from <= to + 1e-9 && (sign <= 0 || from > -1e-9) && (sign >= 0 || to < 1e-9) &&
               (sign != 0 || (from < 1e-9 && to > -1e-9));
    };
    for (int slot = firstSlot; slot <= lastSlot; ++slot) {
        const double time = timeOf(slot);
        const double sign = readAt(truth, time);
        // Beside a line, certainty that flips at two neighbouring doubles hides the value at the
        // first one.
        const double next = std::nextafter(time, infinity);
        const bool agrees =
            agree(sign, time) || agree(sign, next) || agree(readAt(truth, next), next);
        if (!agrees) {
            RC_LOG() << to_string(formula) << " at " << time << ": " << readAt(least, time)
                     << " to " << readAt(greatest, time) << '\n';
            show(recording);
        }
        RC_ASSERT(agrees);
    }
}

// Dense sampling cannot miss by more than a line rises between two samplings.
RC_GTEST_PROP(EvaluatorProperty, RobustnessOfUntilOfLinesIsThatOfDenseSampling, ()) {
    const Recording recording = anyRecording();
    const Expression x = signalOf(Quality::Linear, 0);
    const Expression y = signalOf(Quality::Linear, 1);
    ExpressionFactory factory;
    const Expression zero = factory.Constant(0.0);
    const double a = 0.25 * static_cast<double>(anyIndex(3));
    const double b = a + 0.25 * static_cast<double>(anyIndex(4));
    const Expression condition = factory.Gt(x, zero);
    const Expression goal = factory.Lt(y, zero);
    const auto meaning = anyRobustness();
    const auto phi = evaluated(condition, recording, meaning);
    const auto psi = evaluated(goal, recording, meaning);
    const auto until = evaluated(factory.Until(condition, a, b, goal), recording, meaning);
    constexpr double step = 1.0 / 128;
    for (double time = origin - 1; time <= origin + 5; time += 5 * step) {
        double holds = infinity;
        double best = -infinity;
        for (double seen = time; seen <= time + b; seen += step) {
            if (seen <= time + a) {
                holds = std::min(holds, readAt(phi, seen));
            }
            if (seen >= time + a) {
                best = std::max(best, std::min(holds, readAt(psi, seen)));
                holds = std::min(holds, readAt(phi, seen));
            }
        }
        const double actual = readAt(until, time);
        RC_LOG() << time << ": " << actual << ", sampled " << best << '\n';
        RC_ASSERT(actual == best || std::fabs(actual - best) <= 4 * step);
    }
}

RC_GTEST_PROP(EvaluatorProperty, TheNumberOfJobsChangesNothing, ()) {
    const Recording recording = anyRecording();
    const Expression formula = FormulaGrower({.lines = false}).truth(anyIndex(5));
    for (const auto meaning :
         {evaluation::Meaning::Boolean, evaluation::Meaning::LeastRobustness}) {
        const EvaluationResult one = evaluated(formula, recording, meaning, 1);
        const EvaluationResult four = evaluated(formula, recording, meaning, 4);
        if (one.truth) {
            RC_ASSERT(static_cast<bool>(same(*four.truth, *one.truth)));
        } else {
            RC_ASSERT(static_cast<bool>(
                same(four.pieces->front().get<double>(), one.pieces->front().get<double>())));
        }
    }
}

}  // namespace
}  // namespace vorm::test
