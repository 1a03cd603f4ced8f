#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/evaluation/signal/signal.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <vector>

namespace vorm::evaluation {

/// How a formula is read.
enum class Meaning {
    /// Comparisons give bool traces; a NaN makes each of them false, except `~=`.
    Boolean,
    /// By how much a formula holds, or fails where negative: comparisons are differences of double,
    /// logic is minimum and maximum, `~` the negation. Its sign is that of the boolean meaning
    /// wherever it is not zero. Comparisons of bool, verdicts and enumerations, and whatever else
    /// is bool, are plus infinity where they are true and minus infinity where they are false,
    /// since no change of a number alters them; in a linear result 1e200 and more counts as
    /// infinite. NaN where a number is NaN: it is not known by how much. Until needs held signals.
    Robustness,
};

struct EvaluationRequest {
    const assessments::Expression* formula;
    Meaning meaning = Meaning::Boolean;
};

/// What became of a request: pieces, or the failure. An AssessmentEvaluationException names the
/// formula, and its causes the sub-formulas down to the first fault: of a chain of more than 101
/// formulas the outermost one and the 100 next to the fault.
struct EvaluationResult {
    SharedPieces pieces;  ///< null where it failed
    std::exception_ptr failure;
};

struct EvaluationOptions {
    unsigned jobs = 1;  ///< threads, at least 1
    /// Called after each sub-formula with how many are done and how many there are, from the
    /// thread that calls evaluate.
    std::function<void(std::size_t, std::size_t)> progress;
};

/// The pieces of a signal. Throws for a signal that there is no data for; calls may come from
/// several threads at once.
using SignalLookup = std::function<SharedPieces(const assessments::variable&)>;

/// Takes the result of the request of that index as soon as there is one. Calls come from the
/// threads that evaluate, for different requests at the same time. What it throws is thrown again
/// by evaluateEach, after all the other work.
using ResultConsumer = std::function<void(std::size_t, EvaluationResult)>;

/// Evaluates formulas together, bottom-up: each distinct sub-formula (under ModuloAliases) of all
/// of them once for each meaning, its trace freed as soon as nothing needs it any more. Signals are
/// shared, not copied. The results do not depend on the number of jobs. Linear in the formulas.
///
/// Where an operand has holes, so has the result: a time is known where every value that decides
/// it lies in one piece of its operand. No piece of a result begins before the pieces that it is
/// made of.
///
/// Operands have the same type, or an AssessmentBinaryTypeException names both; enumerations only
/// compare by `==` and `~=` within their own. A cast rounds a number to the nearest integer, halves
/// away from zero, and saturates at the ends of the type; a NaN that would become an integer is a
/// failure that names its time, as is a linear quantity that would. A cast to bool tells whether a
/// number is not zero, a bool becomes 0 or 1, or PASS or FAIL. A held operand keeps its steps
/// beside a linear one: each takes one representable time.
void evaluateEach(const std::vector<EvaluationRequest>& requests, const SignalLookup& signals,
                  const ResultConsumer& consume, const EvaluationOptions& options = {});

/// The same for a caller that keeps all results.
std::vector<EvaluationResult> evaluate(const std::vector<EvaluationRequest>& requests,
                                       const SignalLookup& signals,
                                       const EvaluationOptions& options = {});

}  // namespace vorm::evaluation
