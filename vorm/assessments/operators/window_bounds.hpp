#pragma once

// For the operators over windows of time.

#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments::detail {

/// Throws AssessmentInternalException for a negative or NaN width.
void requireWindowWidth(double width);

/// Throws AssessmentInternalException for a start that is infinite or NaN.
void requireFiniteStart(double a);

/// Throws AssessmentTypeException with the tag of double for a linear trace.
template <class T>
void requireHeld(const TimedTrace_T<T>& trace) {
    if (trace.interpolation != INTERPOLATION_METHOD::ZOH) {
        throw AssessmentTypeException(AssessmentTypeException::typeTAG<double>());
    }
}

}  // namespace vorm::assessments::detail
