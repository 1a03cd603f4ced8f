#pragma once

// For And and Or, each in a source of its own, since the engine takes long to compile.

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/extremum.hpp>

namespace vorm::assessments::detail {

/// The value of two that an order keeps, pointwise. On bool the smaller value is the logical and,
/// the greater one the logical or.
template <class Keep, class T>
TimedTrace_T<T> pointwiseExtremum(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    a.throwExceptionIfEnum(b, false);
    return a.template combine<T>(b, support::Extremum<Keep>());
}

}  // namespace vorm::assessments::detail
