#include "assessment_evaluation_exception.hpp"

#include <vorm/assessments/errors/assessment_exception_visitor.hpp>

namespace vorm::assessments {

AssessmentEvaluationException::AssessmentEvaluationException(
    const Expression& expr, const std::shared_ptr<AssessmentException>& cause)
    : AssessmentException(assessmentMessage("ExpressionEvaluationError", {to_string(expr)}), cause),
      expression_(expr) {}

const Expression& AssessmentEvaluationException::getExpression() const {
    return expression_;
}

AssessmentEvaluationException* AssessmentEvaluationException::clone() const {
    return new AssessmentEvaluationException(*this);
}

void AssessmentEvaluationException::rethrow() const {
    throw AssessmentEvaluationException(*this);
}

void AssessmentEvaluationException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

}  // namespace vorm::assessments
