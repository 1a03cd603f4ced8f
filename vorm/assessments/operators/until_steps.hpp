#pragma once

// For the sources of until: the steps that both operands make together, and the two numeric untils,
// each of which is a source of its own, since it takes long to compile.

#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/operators/until_window.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <algorithm>
#include <vector>

namespace vorm::assessments::detail {

template <class T>
TimedTrace_T<T> emptyTrace() {
    return TimedTrace_T<T>(INTERPOLATION_METHOD::ZOH, -support::infinity);
}

template <class T>
double commonStart(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    return std::max(a.points.front().time, b.points.front().time);
}

/// Calls visit(time, sample of phi, sample of psi) at each sample time of either from their common
/// start up to `end`, with the samples in force then.
template <class T, class Visit>
void walkUpTo(double end, const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi, Visit visit) {
    const double start = commonStart(phi, psi);
    support::OperandCursor<T> left(phi.points.begin(), support::samplesUpTo(phi, end));
    support::OperandCursor<T> right(psi.points.begin(), support::samplesUpTo(psi, end));
    left.advanceTo(start);
    right.advanceTo(start);
    support::walk(left, right, visit);
}

/// The values of both operands at each of these times.
template <class T>
std::vector<UntilStep<T>> stepsUpTo(double end, const TimedTrace_T<T>& phi,
                                    const TimedTrace_T<T>& psi) {
    std::vector<UntilStep<T>> steps;
    steps.reserve(phi.points.size() + psi.points.size());
    walkUpTo(end, phi, psi,
             [&](double time, const TimedPoint<T>* ofPhi, const TimedPoint<T>* ofPsi) {
                 steps.push_back({time, {ofPsi->value, ofPhi->value}});
             });
    return steps;
}

/// The best that waiting for psi within `width` can give, for windows that start up to `lastStart`;
/// the width is finite.
template <class T>
TimedTrace_T<T> untilWithin(double width, double lastStart, const TimedTrace_T<T>& phi,
                            const TimedTrace_T<T>& psi);

/// The best that waiting for psi to the end can give.
template <class T>
TimedTrace_T<T> untilSomeTime(const TimedTrace_T<T>& phi, const TimedTrace_T<T>& psi);

}  // namespace vorm::assessments::detail
