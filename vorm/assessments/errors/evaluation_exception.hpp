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

/// For a catch block around the evaluation of a formula: throws AssessmentEvaluationException for
/// `expr` with the exception in flight as its cause. Called at each level of an evaluation it
/// builds a chain from the outermost formula that failed down to the first fault.
///
/// An exception of the AssessmentException family becomes the cause as a copy of its own class, any
/// other std::exception as an AssessmentInternalException of its text. Other exceptions are
/// rethrown as they are. Returns only where no exception is being handled.
VORM_ASSESSMENTS_EXPORT void evaluation_exception_dispatcher(const Expression& expr);

}  // namespace vorm::assessments
