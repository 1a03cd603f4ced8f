#pragma once

// For the evaluator: the conversions of casts. A number becomes
// - a floating number: the nearest one;
// - an integer: the nearest one, halves away from zero; beyond the type's range the end of it;
// - a fixed-point number: that of the default type.
// A bool becomes 0 or 1, or a verdict, PASS or FAIL.

#include <vorm/evaluation/evaluator/changed_trace.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <cstddef>

namespace vorm::evaluation {

/// The trace with its values converted to the type of that index in ValueTypes, which is not that
/// of bool. A line stays one.
/// Throws AssessmentTypeException for enumerations, for verdicts, and for a verdict of what is no
/// bool; AssessmentInternalException for a line that would become discrete, and, naming the time on
/// that timeline,
/// for a NaN that would become an integer or a fixed-point number.
assessments::TimedTrace converted(const assessments::TimedTrace& trace, std::size_t target,
                                  const Timeline& timeline);

/// The trace as one of double, if it is none.
ChangedTrace asDouble(const assessments::TimedTrace& trace);

}  // namespace vorm::evaluation
