#include "evaluation_error.hpp"

#include <vorm/assessments/errors/evaluation_exception.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/evaluation/formula/formula.hpp>

#include <algorithm>
#include <vector>

namespace vorm::evaluation {
namespace {

using namespace assessments;

constexpr std::size_t mostFormulas = 5;

VORM_OP operatorOf(const Expression& formula) {
    return boost::apply_visitor(
        [](const auto& node) {
            if constexpr (requires { node.op; }) {
                return node.op;
            } else {
                return VORM_OP::None;
            }
        },
        formula);
}

// What to declare of a signal that an operator is not for as it is interpolated.
std::string interpolationFor(VORM_OP op) {
    using support::OperatorFamily;
    const OperatorFamily family = support::familyOf(op);
    const bool isForHeld = family == OperatorFamily::Function || family == OperatorFamily::Power ||
                           family == OperatorFamily::Sum || family == OperatorFamily::Change ||
                           op == VORM_OP::Multiply || op == VORM_OP::Divide;
    return op == VORM_OP::Slope ? "linear" : isForHeld ? "held" : "";
}

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
    const std::string interpolation =
        formulas.empty() ? "" : interpolationFor(operatorOf(*formulas.front()));
    if (!interpolation.empty()) {
        advice += "\n  declare the signal with interpolation = \"" + interpolation + "\"";
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
    } catch (const std::exception& error) {
        return {std::string(prefix) + error.what(), span};
    }
}

}  // namespace vorm::evaluation
