#pragma once

// For the operators that take the width of a window.

namespace vorm::assessments::detail {

/// Throws AssessmentInternalException for a negative or NaN width.
void requireWindowWidth(double width);

}  // namespace vorm::assessments::detail
