#include "evaluation_exception.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>

#include <exception>
#include <memory>

namespace vorm::assessments {
namespace {

template <class Failure>
[[noreturn]] void throwCausedBy(const Failure& failure, const Expression& expr) {
    throw AssessmentEvaluationException(expr, std::make_shared<Failure>(failure));
}

}  // namespace

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

void evaluation_exception_dispatcher(const Expression& expr) {
    if (std::current_exception() == nullptr) {
        return;
    }
    try {
        throw;
    } catch (const AssessmentEvaluationException& failure) {
        throwCausedBy(failure, expr);
    } catch (const AssessmentBinaryTypeException& failure) {
        throwCausedBy(failure, expr);
    } catch (const AssessmentTypeException& failure) {
        throwCausedBy(failure, expr);
    } catch (const AssessmentInternalException& failure) {
        throwCausedBy(failure, expr);
    } catch (const AssessmentException& failure) {
        throwCausedBy(failure, expr);
    } catch (const std::exception& failure) {
        throwCausedBy(AssessmentInternalException(failure.what()), expr);
    }
}

}  // namespace vorm::assessments
