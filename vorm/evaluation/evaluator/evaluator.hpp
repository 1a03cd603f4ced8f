#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <vector>

namespace vorm::evaluation {

/// How a formula is read.
enum class Meaning {
    /// Comparisons give bool traces; a NaN makes each of them false, except `~=`.
    Boolean,
    /// The least that the robustness can be: by how much a formula holds, or fails where negative.
    /// Comparisons are differences of double, logic is minimum and maximum, `~` the negation.
    /// Comparisons of bool, verdicts and enumerations, and whatever else is bool, are plus infinity
    /// where they are true and minus infinity where they are false, since no change of a number
    /// alters them; in a linear result 1e200 and more counts as infinite. What is open counts as
    /// minus infinity. NaN where a number is NaN: it is not known by how much.
    LeastRobustness,
    /// The greatest that it can be: what is open counts as plus infinity. Where the two are equal
    /// the recording decides the robustness. Where truth is not open, both have its sign wherever
    /// they are not zero.
    GreatestRobustness,
};

struct EvaluationRequest {
    const assessments::Expression* formula;
    Meaning meaning = Meaning::Boolean;
};

/// What became of a request. An AssessmentEvaluationException names the
/// formula, and its causes the sub-formulas down to the first fault: of a chain of more than 101
/// formulas the outermost one and the 100 next to the fault.
struct EvaluationResult {
    SharedTruth truth;    ///< under the boolean meaning of what is bool, else null
    SharedPieces pieces;  ///< of any other value; robustness is one piece over all of time
    std::exception_ptr failure;
};

struct EvaluationOptions {
    unsigned jobs = 1;  ///< threads, at least 1
    /// Called after each sub-formula with how many are done and how many there are, from the
    /// thread that calls evaluate.
    std::function<void(std::size_t, std::size_t)> progress = {};
    /// How the traces count their times: slopes are per second of it, and messages name its times.
    Timeline timeline = Timeline(second);
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
/// Throws std::bad_alloc where memory is out, whichever thread misses it.
///
/// Truth is that of Kleene's strong logic: it is decided wherever what is known decides it,
/// whatever the rest may be. A number is known where all that it is made of lies in one piece of
/// each operand. A quantity without samples has no type to tell truth from numbers: it gives no
/// pieces, and truth that is open throughout.
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
