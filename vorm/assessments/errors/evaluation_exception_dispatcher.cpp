#include "evaluation_exception_dispatcher.hpp"

#include <vorm/assessments/errors/assessment_binary_type_exception.hpp>
#include <vorm/assessments/errors/assessment_evaluation_exception.hpp>
#include <vorm/assessments/errors/assessment_internal_exception.hpp>

#include <exception>
#include <memory>

namespace vorm::assessments {
namespace {

template <class Failure>
[[noreturn]] void throwCausedBy(const Failure& failure, const Expression& expr) {
    throw AssessmentEvaluationException(expr, std::make_shared<Failure>(failure));
}

}  // namespace

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
