#include "assessment_binary_type_exception.hpp"

#include <vorm/assessments/errors/assessment_exception_visitor.hpp>

namespace vorm::assessments {

AssessmentBinaryTypeException::AssessmentBinaryTypeException(
    const TypeTag& left, const TypeTag& right, const std::shared_ptr<AssessmentException>& cause)
    : AssessmentTypeException(
          assessmentMessage("BinaryTypeError", {getTypeName(left), getTypeName(right)}), right,
          cause),
      left_(left) {}

AssessmentBinaryTypeException* AssessmentBinaryTypeException::clone() const {
    return new AssessmentBinaryTypeException(*this);
}

void AssessmentBinaryTypeException::rethrow() const {
    throw AssessmentBinaryTypeException(*this);
}

void AssessmentBinaryTypeException::accept(AssessmentExceptionVisitor& visitor) const {
    visitor.visit(*this);
}

std::string AssessmentBinaryTypeException::getLHSTypeName() const {
    return getTypeName(left_);
}

}  // namespace vorm::assessments
