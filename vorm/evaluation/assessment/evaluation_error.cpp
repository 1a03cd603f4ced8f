#include "evaluation_error.hpp"

#include <vorm/assessments/errors/evaluation_exception.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <algorithm>
#include <new>
#include <vector>

namespace vorm::evaluation {
namespace {

using namespace assessments;

constexpr std::size_t mostFormulas = 5;

// The formulas from the innermost on, and the fault that they failed by.
struct Failure {
    std::vector<const Expression*> formulas;
    const AssessmentException* fault;
};

Failure unwound(const AssessmentException& error) {
    Failure failure{{}, &error};
    while (const auto* link = dynamic_cast<const AssessmentEvaluationException*>(failure.fault)) {
        failure.formulas.push_back(&link->getExpression());
        if (link->getCause() == nullptr) {
            break;
        }
        failure.fault = link->getCause().get();
    }
    std::reverse(failure.formulas.begin(), failure.formulas.end());
    return failure;
}

std::string adviceFor(const std::vector<const Expression*>& formulas, const TimeTexts& times) {
    std::string advice;
    for (std::size_t i = 0; i < std::min(formulas.size(), mostFormulas); ++i) {
        advice += (i == 0 ? "in " : "\n  in ") + formulaText(*formulas[i], times);
    }
    return advice;
}

constexpr const char* prefix = "cannot be evaluated: ";

}  // namespace

FormulaError evaluationError(const std::exception_ptr& failure, TextSpan span,
                             const TimeTexts& times) {
    try {
        std::rethrow_exception(failure);
    } catch (const AssessmentException& error) {
        const Failure unwoundFailure = unwound(error);
        return {std::string(prefix) + unwoundFailure.fault->what(), span,
                adviceFor(unwoundFailure.formulas, times)};
    } catch (const std::bad_alloc&) {
        throw;  // no fault of the formula
    } catch (const std::exception& error) {
        return {std::string(prefix) + error.what(), span};
    }
}

}  // namespace vorm::evaluation
