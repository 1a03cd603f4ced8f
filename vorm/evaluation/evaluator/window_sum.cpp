#include "window_sum.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/assessments/trace/value_traits.hpp>
#include <vorm/evaluation/evaluator/function.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>

#include <cmath>
#include <string>

namespace vorm::evaluation {

using namespace assessments;

namespace {

void requireNumbers(const TimedTrace& piece, const Timeline& timeline) {
    piece.visit([&]<class T>(const TimedTrace_T<T>& typed) {
        if constexpr (IsFloatingPoint<T>::value) {
            for (const TimedPoint<T>& point : typed.points) {
                const bool isKnown = point.time <= typed.lastKnownTime;
                if (isKnown && !std::isfinite(support::toDouble(point.value))) {
                    throw AssessmentInternalException(
                        std::string("What is ") +
                        (support::isNan(point.value) ? "NaN" : "infinite") + " at " +
                        timeline.timeAt(point.time).text() + " s has no integral.");
                }
            }
        }
    });
}

// Each value divided by a number.
TimedTrace divided(const TimedTrace& line, double divisor) {
    const auto& sums = line.get<double>();
    TimedTrace_T<double> result(sums.interpolation, -support::infinity);
    support::TraceBuilder<double> output(result);
    for (const TimedPoint<double>& point : sums.points) {
        output.append({point.time, point.value / divisor});
    }
    result.lastKnownTime = sums.lastKnownTime;
    return result;
}

}  // namespace

TimedTrace windowSum(VORM_OP op, double a, double b, const TimedTrace& piece,
                     const Timeline& timeline) {
    requireHeldFor(op, piece);
    const TimedTrace ahead = a == 0 ? piece : shiftedFreely(piece, a);
    if (op == VORM_OP::Count) {
        return ahead.Count(b - a);
    }
    requireNumbers(piece, timeline);
    return divided(ahead.Integral(b - a), op == VORM_OP::Mean ? b - a : timeline.ticksIn(second));
}

}  // namespace vorm::evaluation
