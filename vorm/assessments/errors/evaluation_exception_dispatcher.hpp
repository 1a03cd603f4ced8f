#pragma once

#include <vorm/assessments/expression/expression.hpp>

namespace vorm::assessments {

/// For a catch block around the evaluation of a formula: throws AssessmentEvaluationException for
/// `expr` with the exception in flight as its cause. Called at each level of an evaluation it
/// builds a chain from the outermost formula that failed down to the first fault.
///
/// An exception of the AssessmentException family becomes the cause as a copy of its own class, any
/// other std::exception as an AssessmentInternalException of its text. Other exceptions are
/// rethrown as they are. Returns only where no exception is being handled.
VORM_ASSESSMENTS_EXPORT void evaluation_exception_dispatcher(const Expression& expr);

}  // namespace vorm::assessments
