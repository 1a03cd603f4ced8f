#pragma once

#include <vorm/assessments/errors/assessment_exception.hpp>

#include <memory>
#include <string>

namespace vorm::assessments {

/// A failure described by a literal English text: an operation that the operands do not allow, or
/// a foreign exception met during evaluation.
class VORM_ASSESSMENTS_EXPORT AssessmentInternalException : public AssessmentException {
public:
    explicit AssessmentInternalException(
        const std::string& text, const std::shared_ptr<AssessmentException>& cause = nullptr);

    AssessmentInternalException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;
};

}  // namespace vorm::assessments
