#include "temporal.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/mirrored.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/until_robustness.hpp>

#include <cmath>

namespace vorm::evaluation {

using namespace assessments;
using support::looksBack;

namespace {

template <class Trace>
Trace extremum(VORM_OP op, double first, double last, const Trace& trace) {
    return support::isForSomeTime(op) ? trace.Eventually(first, last) : trace.Globally(first, last);
}

// All of the past: what there was since any time.
Truth sinceEver(VORM_OP op, double a, const Truth& operand) {
    const Truth always(certainlyTrue);
    const bool isForSomeTime = support::isForSomeTime(op);
    const Truth goal =
        always.Since(isForSomeTime ? operand : operand.UMinus(), a, support::infinity);
    return isForSomeTime ? goal : goal.UMinus();
}

}  // namespace

Truth windowOn(VORM_OP op, double a, double b, const Truth& operand) {
    if (looksBack(op) && b == support::infinity) {
        return sinceEver(op, a, operand);
    }
    const support::Distances window = support::windowOf(op, a, b);
    return extremum(op, window.first, window.last, operand);
}

TimedTrace windowOn(VORM_OP op, double a, double b, const TimedTrace& robustness) {
    if (b < support::infinity) {
        return windowOnNumbers(op, a, b, robustness);
    }
    return looksBack(op) ? mirrored(extremum(op, a, b, mirrored(robustness)))
                         : extremum(op, a, b, robustness);
}

TimedTrace windowOnNumbers(VORM_OP op, double a, double b, const TimedTrace& number) {
    if (!std::isfinite(a) || !std::isfinite(b)) {
        throw AssessmentInternalException("The window of a number must end.");
    }
    const support::Distances window = support::windowOf(op, a, b);
    return window.first == 0
               ? extremum(op, 0, window.last, number)
               : extremum(op, 0, window.last - window.first, shiftedFreely(number, window.first));
}

Truth untilOn(VORM_OP op, double a, double b, const Truth& condition, const Truth& goal) {
    return looksBack(op) ? condition.Since(goal, a, b) : condition.Until(goal, a, b);
}

TimedTrace untilOn(VORM_OP op, double a, double b, const TimedTrace& condition,
                   const TimedTrace& goal) {
    if (!looksBack(op)) {
        return untilRobustness(condition, goal, a, b);
    }
    return isLine(condition) || isLine(goal)
               ? mirrored(untilRobustness(mirrored(condition), mirrored(goal), a, b))
               : condition.Since(a, b, goal);
}

}  // namespace vorm::evaluation
