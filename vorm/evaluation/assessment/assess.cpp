#include "assess.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/outcome_explanation.hpp>
#include <vorm/evaluation/assessment/outcome_judgement.hpp>
#include <vorm/evaluation/assessment/signal_evaluation.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>

#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::Expression;

// An assessment whose formula fits the recording.
struct Task {
    TypedAssessment assessment;
    AssessmentOutcome* outcome;
    SharedTruth* kept;  // null where nobody asks for the truth
};

// One of the results of a task, and who takes it. They fill in different parts of its outcome.
struct TaskRequest {
    EvaluationRequest request;
    std::function<void(const EvaluationResult&)> take;
};

void takeTruth(const Task& task, const EvaluationResult& truth) {
    if (truth.failure) {
        task.outcome->error = detail::evaluationFailure(task.assessment, truth.failure);
        return;
    }
    detail::judge(task.assessment, *truth.truth, *task.outcome);
    if (task.kept != nullptr) {
        *task.kept = truth.truth;
    }
}

void takeTrigger(const Task& task, const Trigger& trigger, const EvaluationResult& truth) {
    // What fails in the trigger fails in the formula, and is told there.
    if (!truth.failure) {
        const Formula& formula = task.assessment.formula;
        task.outcome->trigger = namedFormula(*trigger.formula, formula.times, formula.names).text;
        task.outcome->neverTriggered =
            detail::isFalseThroughout(task.assessment, trigger, *truth.truth);
    }
}

// The bounds of the robustness that one evaluation gives.
struct Bounds {
    bool least;
    bool greatest;
};

void takeRobustness(const Task& task, const Bounds& bounds, const EvaluationResult& robustness) {
    AssessmentOutcome& outcome = *task.outcome;
    if (robustness.failure) {
        // Both fail for the same reason; they may come from different threads.
        if (bounds.least) {
            outcome.robustnessError =
                detail::evaluationFailure(task.assessment, robustness.failure);
        }
        return;
    }
    if (const auto& range = task.assessment.range) {
        const auto value = leastValue(*robustness.pieces, *range);
        if (bounds.least) {
            outcome.leastRobustness = value;
        }
        if (bounds.greatest) {
            outcome.greatestRobustness = value;
        }
    }
}

std::vector<TaskRequest> requestsOf(const Task& task, bool withRobustness) {
    const Expression& formula = task.assessment.formula.tree;
    std::vector<TaskRequest> requests{
        {{&formula, Meaning::Boolean},
         [&](const EvaluationResult& truth) { takeTruth(task, truth); }}};
    if (const auto trigger = triggerOf(formula)) {
        requests.push_back(
            {{trigger->formula, Meaning::Boolean},
             [&, trigger](const EvaluationResult& truth) { takeTrigger(task, *trigger, truth); }});
    }
    const auto requestRobustness = [&](Meaning meaning, const Bounds& bounds) {
        requests.push_back({{&formula, meaning}, [&, bounds](const EvaluationResult& robustness) {
                                takeRobustness(task, bounds, robustness);
                            }});
    };
    if (withRobustness) {
        const bool isDecided = detail::surelyDecidesRobustness(task.assessment);
        requestRobustness(Meaning::LeastRobustness, {true, isDecided});
        if (!isDecided) {
            requestRobustness(Meaning::GreatestRobustness, {false, true});
        }
    }
    return requests;
}

// Each result is looked at when it is there and then let go, so that memory does not grow with the
// number of assessments.
void evaluateTasks(const std::vector<Task>& tasks, const Recording& recording,
                   const RunOptions& options) {
    std::vector<const Expression*> formulas;
    std::vector<EvaluationRequest> requests;
    std::vector<std::function<void(const EvaluationResult&)>> takers;
    for (const Task& task : tasks) {
        formulas.push_back(&task.assessment.formula.tree);
        for (TaskRequest& part : requestsOf(task, options.robustness)) {
            requests.push_back(part.request);
            takers.push_back(std::move(part.take));
        }
    }
    const auto take = [&](std::size_t request, const EvaluationResult& result) {
        takers[request](result);
    };
    evaluateEach(requests, detail::lookupIn(recording, formulas), take,
                 detail::evaluationOptions(recording, options));
    for (const Task& task : tasks) {
        // Truth and trigger may come from different threads.
        task.outcome->neverTriggered &= task.outcome->verdict == assessments::resultEnum_t::PASS;
    }
}

// One after the other, since an explanation needs the truth of every sub-formula at once.
void explainTasks(const std::vector<Task>& tasks, const RunOptions& options) {
    for (const Task& task : tasks) {
        AssessmentOutcome& outcome = *task.outcome;
        if (!outcome.error && !(outcome.failures.empty() && outcome.openSpans.empty())) {
            const detail::NodeResults results(task.assessment, {}, options);
            detail::explain(task.assessment, results, outcome);
        }
    }
}

// The tasks refer to what they fill in.
std::vector<Task> tasksFor(const AssessmentFile& file,
                           const std::vector<const Assessment*>& assessments,
                           const Recording& recording, std::vector<AssessmentOutcome>& outcomes,
                           std::vector<SharedTruth>* kept) {
    const FormulaNames names = namesIn(file, recording);
    std::vector<Task> tasks;
    for (std::size_t i = 0; i < assessments.size(); ++i) {
        outcomes[i] = detail::describedOutcome(*assessments[i]);
        try {
            tasks.push_back({typedAssessment(file, *assessments[i], names, recording), &outcomes[i],
                             kept == nullptr ? nullptr : &(*kept)[i]});
        } catch (const InputError& error) {
            outcomes[i].error = error;
        }
    }
    return tasks;
}

}  // namespace

RecordingOutcome assess(const AssessmentFile& file, const Recording& recording,
                        const RunOptions& options) {
    const auto assessments = chosenAssessments(file, options);
    RecordingOutcome outcome{
        recording.name, std::nullopt, {}, recording.remarks, recording.warnings};
    outcome.times = recordedTimes(recording);
    outcome.assessments.resize(assessments.size());
    std::vector<SharedTruth> truths(assessments.size());
    const std::vector<Task> tasks = tasksFor(file, assessments, recording, outcome.assessments,
                                             options.assessed ? &truths : nullptr);
    evaluateTasks(tasks, recording, options);
    if (options.explain) {
        explainTasks(tasks, options);
    }
    if (options.assessed) {
        options.assessed({0, recording, outcome, truths});
    }
    return outcome;
}

}  // namespace vorm::evaluation
