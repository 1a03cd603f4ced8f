#pragma once

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/expression/expression.hpp>

#include <memory>

namespace vorm::assessments {

/// The evaluation of a formula failed; the cause tells why, perhaps by way of a sub-formula.
class VORM_ASSESSMENTS_EXPORT AssessmentEvaluationException : public AssessmentException {
public:
    AssessmentEvaluationException(const Expression& expr,
                                  const std::shared_ptr<AssessmentException>& cause);

    /// The formula that failed.
    const Expression& getExpression() const;

    AssessmentEvaluationException* clone() const override;
    [[noreturn]] void rethrow() const override;
    void accept(AssessmentExceptionVisitor& visitor) const override;

private:
    Expression expression_;
};

}  // namespace vorm::assessments
