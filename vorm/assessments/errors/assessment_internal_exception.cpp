#include "assessment_internal_exception.hpp"

#include <vorm/assessments/errors/assessment_exception_visitor.hpp>

namespace vorm::assessments {

AssessmentInternalException::AssessmentInternalException(
    const std::string& text, const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(assessmentMessage("ExpressionEvaluationInternalError", {text}), cause) {}

AssessmentInternalException* AssessmentInternalException::clone() const {
    return new AssessmentInternalException(*this);
}

void AssessmentInternalException::rethrow() const {
    throw AssessmentInternalException(*this);
}

void AssessmentInternalException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

}  // namespace vorm::assessments
