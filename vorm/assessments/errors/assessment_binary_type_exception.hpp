#pragma once

#include <vorm/assessments/errors/assessment_type_exception.hpp>

#include <memory>
#include <string>

namespace vorm::assessments {

/// An operation that is not defined for the types of its two operands. The inherited tag is that
/// of the right operand.
class VORM_ASSESSMENTS_EXPORT AssessmentBinaryTypeException : public AssessmentTypeException {
public:
    AssessmentBinaryTypeException(const TypeTag& left, const TypeTag& right,
                                  const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentBinaryTypeException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;

    /// The name of the left operand's type.
    std::string getLHSTypeName() const;

private:
    TypeTag left_;
};

}  // namespace vorm::assessments
