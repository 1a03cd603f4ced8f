// Random formulas on random recordings against the slot oracle.

#include "random_cases.hpp"

#include <rapidcheck/gtest.h>

#include <optional>
#include <set>

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

SharedPieces evaluated(const Expression& formula, const Recording& recording,
                       evaluation::Meaning meaning, unsigned jobs = 1) {
    const auto results = evaluate({{&formula, meaning}}, recording.lookup(), {jobs, {}});
    if (results[0].failure) {
        RC_FAIL(to_string(formula) + ": " + firstFault(results[0].failure));
    }
    return results[0].pieces;
}

std::optional<double> readAt(const TracePieces& pieces, double time) {
    for (const TimedTrace& piece : pieces) {
        if (piece.which() == int{valueTypeIndex<bool>}) {
            if (const auto truth = piece.get<bool>().valueAt(time)) {
                return *truth ? 1 : 0;
            }
        } else if (const auto number = piece.get<double>().valueAt(time)) {
            return *number;
        }
    }
    return std::nullopt;
}

std::optional<double> readAt(const SlotPieces& pieces, int slot) {
    for (const SlotPiece& piece : pieces) {
        if (piece.first <= slot && slot <= piece.last) {
            return piece.at(slot);
        }
    }
    return std::nullopt;
}

// All slots of a recording, and some more.
constexpr int firstSlot = (static_cast<int>(origin) - 5) * slotsPerUnit;
constexpr int lastSlot = (static_cast<int>(origin) + 30) * slotsPerUnit;

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
    const SharedPieces actual = evaluated(formula, recording, meaning);
    const SlotPieces expected = SlotOracle(recording.slots, meaning).of(formula);
    for (int slot = firstSlot; slot <= lastSlot; ++slot) {
        const auto is = readAt(*actual, timeOf(slot));
        const auto shouldBe = readAt(expected, slot);
        const bool same = is == shouldBe || (is && shouldBe && std::fabs(*is - *shouldBe) < 1e-9);
        if (!same) {
            RC_LOG() << to_string(formula) << " at " << timeOf(slot) << ": "
                     << (is ? std::to_string(*is) : "unknown") << ", expected "
                     << (shouldBe ? std::to_string(*shouldBe) : "unknown") << '\n';
            show(recording);
        }
        RC_ASSERT(same);
    }
}

RC_GTEST_PROP(EvaluatorProperty, TruthIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({}).truth(anyIndex(4)), recording, evaluation::Meaning::Boolean);
}

RC_GTEST_PROP(EvaluatorProperty, RobustnessOfHeldSignalsIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({.lines = false}).truth(anyIndex(4)), recording,
                evaluation::Meaning::Robustness);
}

RC_GTEST_PROP(EvaluatorProperty, RobustnessOfOneComparisonOfLinesIsThatOfTheSlots, ()) {
    const Recording recording = anyRecording();
    requireSame(FormulaGrower({}).truth(0), recording, evaluation::Meaning::Robustness);
}

bool isUntilOfLines(const std::exception_ptr& failure) {
    return firstFault(failure).find("needs held signals") != std::string::npos;
}

RC_GTEST_PROP(EvaluatorProperty, TheSignOfRobustnessIsTheTruth, ()) {
    const Recording recording = anyRecording();
    // Beside a line, certainty that flips at two neighbouring doubles hides the value at the first
    // one.
    const bool mixed = *rc::gen::arbitrary<bool>();
    const Ingredients with{.held = mixed, .edges = false};
    const Expression formula = FormulaGrower(with).truth(anyIndex(4));
    const auto results = evaluate(
        {{&formula, evaluation::Meaning::Boolean}, {&formula, evaluation::Meaning::Robustness}},
        recording.lookup(), {});
    if (results[1].failure) {
        RC_ASSERT(isUntilOfLines(results[1].failure));
        return;
    }
    for (int slot = firstSlot; slot <= lastSlot; ++slot) {
        const auto truth = readAt(*results[0].pieces, timeOf(slot));
        const auto robustness = readAt(*results[1].pieces, timeOf(slot));
        RC_ASSERT(truth.has_value() == robustness.has_value());
        if (truth) {
            const bool agrees = std::fabs(*robustness) < 1e-9 || (*robustness > 0) == (*truth != 0);
            if (!agrees) {
                RC_LOG() << to_string(formula) << " at " << timeOf(slot) << ": " << *robustness
                         << '\n';
                show(recording);
            }
            RC_ASSERT(agrees);
        }
    }
}

RC_GTEST_PROP(EvaluatorProperty, TheNumberOfJobsChangesNothing, ()) {
    const Recording recording = anyRecording();
    const Expression formula = FormulaGrower({.lines = false}).truth(anyIndex(5));
    for (const evaluation::Meaning meaning :
         {evaluation::Meaning::Boolean, evaluation::Meaning::Robustness}) {
        const SharedPieces one = evaluated(formula, recording, meaning, 1);
        const SharedPieces four = evaluated(formula, recording, meaning, 4);
        RC_ASSERT(testing::PrintToString(one->size()) == testing::PrintToString(four->size()));
        for (std::size_t i = 0; i < one->size(); ++i) {
            (*one)[i].visit([&]<class T>(const TimedTrace_T<T>& trace) {
                RC_ASSERT(static_cast<bool>(same((*four)[i].template get<T>(), trace)));
            });
        }
    }
}

}  // namespace
}  // namespace vorm::test
