#pragma once

// For the arithmetic of two traces.

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/operators/constant_combination.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments::detail {

/// Throws AssessmentBinaryTypeException for bool and enumerated traces.
template <class T>
void requireArithmetic(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    if constexpr (support::isBool<T>) {
        constexpr AssessmentTypeException::typeTAG<bool> tag;
        throw AssessmentBinaryTypeException(tag, tag);
    }
    a.throwExceptionIfEnum(b, false);
}

/// The traces combined by Function: the engine compiled for one function more would be another copy
/// of it for every value type. The loop beside a constant is small enough for that, and takes a
/// third less time than with a call for each sample.
template <class T, class F>
TimedTrace_T<T> computed(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b, F f) {
    using WithConstant = ConstantCombination<T, T, F>;
    return WithConstant::takes(a, b) ? WithConstant(a, b, f).run() : a.Function(b, f);
}

}  // namespace vorm::assessments::detail
