#include "run.hpp"

#include <vorm/evaluation/assessment/assessed_recording.hpp>
#include <vorm/evaluation/assessment/outcome_explanation.hpp>
#include <vorm/evaluation/parallel/for_each_index.hpp>

#include <algorithm>
#include <mutex>
#include <utility>

namespace vorm::evaluation {
namespace {

using assessments::Expression;
using detail::AssessedRecording;

// An assessment whose formula fits the recording.
struct Task {
    const Assessment* assessment;
    AssessmentOutcome* outcome;
    Formula formula;
};

// One of the results of a task, and who takes it. They fill in different parts of its outcome.
struct TaskRequest {
    EvaluationRequest request;
    std::function<void(const EvaluationResult&)> take;
};

void takeTruth(const AssessedRecording& recording, const Task& task,
               const EvaluationResult& truth) {
    if (truth.failure) {
        task.outcome->error =
            recording.failureMessage(*task.assessment, task.formula, truth.failure);
    } else {
        recording.judge(*task.assessment, task.formula, *truth.truth, *task.outcome);
    }
}

void takeTrigger(const AssessedRecording& recording, const Task& task, const Trigger& trigger,
                 const EvaluationResult& truth) {
    // What fails in the trigger fails in the formula, and is told there.
    if (!truth.failure) {
        task.outcome->trigger = formulaText(*trigger.formula, task.formula.times);
        task.outcome->neverTriggered =
            recording.isFalseThroughout(*task.assessment, task.formula, trigger, *truth.truth);
    }
}

// The bounds of the robustness that one evaluation gives.
struct Bounds {
    bool least;
    bool greatest;
};

void takeRobustness(const AssessedRecording& recording, const Task& task, const Bounds& bounds,
                    const EvaluationResult& robustness) {
    AssessmentOutcome& outcome = *task.outcome;
    if (robustness.failure) {
        // Both fail for the same reason; they may come from different threads.
        if (bounds.least) {
            outcome.robustnessError =
                recording.failureMessage(*task.assessment, task.formula, robustness.failure);
        }
        return;
    }
    if (const auto range = recording.rangeOf(*task.assessment, task.formula)) {
        const auto value = leastValue(*robustness.pieces, *range);
        if (bounds.least) {
            outcome.leastRobustness = value;
        }
        if (bounds.greatest) {
            outcome.greatestRobustness = value;
        }
    }
}

std::vector<TaskRequest> requestsOf(const AssessedRecording& recording, const Task& task,
                                    bool withRobustness) {
    const Expression& formula = task.formula.tree;
    std::vector<TaskRequest> requests{
        {{&formula, Meaning::Boolean},
         [&](const EvaluationResult& truth) { takeTruth(recording, task, truth); }}};
    if (const auto trigger = triggerOf(formula)) {
        requests.push_back(
            {{trigger->formula, Meaning::Boolean}, [&, trigger](const EvaluationResult& truth) {
                 takeTrigger(recording, task, *trigger, truth);
             }});
    }
    const auto requestRobustness = [&](Meaning meaning, const Bounds& bounds) {
        requests.push_back({{&formula, meaning}, [&, bounds](const EvaluationResult& robustness) {
                                takeRobustness(recording, task, bounds, robustness);
                            }});
    };
    if (withRobustness) {
        const bool isDecided = recording.surelyDecidesRobustness(*task.assessment, task.formula);
        requestRobustness(Meaning::LeastRobustness, {true, isDecided});
        if (!isDecided) {
            requestRobustness(Meaning::GreatestRobustness, {false, true});
        }
    }
    return requests;
}

// Each result is looked at when it is there and then let go, so that memory does not grow with the
// number of assessments.
void evaluateTasks(const AssessedRecording& recording, const std::vector<Task>& tasks,
                   bool withRobustness) {
    std::vector<EvaluationRequest> requests;
    std::vector<std::function<void(const EvaluationResult&)>> takers;
    for (const Task& task : tasks) {
        for (TaskRequest& part : requestsOf(recording, task, withRobustness)) {
            requests.push_back(part.request);
            takers.push_back(std::move(part.take));
        }
    }
    const auto take = [&](std::size_t request, const EvaluationResult& result) {
        takers[request](result);
    };
    evaluateEach(requests, recording.lookup(), take, recording.evaluationOptions());
    for (const Task& task : tasks) {
        // Truth and trigger may come from different threads.
        task.outcome->neverTriggered &= task.outcome->verdict == assessments::resultEnum_t::PASS;
    }
}

// One after the other, since an explanation needs the truth of every sub-formula at once.
void explainTasks(const AssessedRecording& recording, const std::vector<Task>& tasks) {
    for (const Task& task : tasks) {
        const AssessmentOutcome& outcome = *task.outcome;
        if (outcome.error.empty() && !(outcome.failures.empty() && outcome.openSpans.empty())) {
            detail::explain(recording, *task.assessment, task.formula,
                            detail::NodeResults(task.formula.tree, {}, recording), *task.outcome);
        }
    }
}

RecordingOutcome runOne(const AssessmentFile& file,
                        const std::vector<const Assessment*>& assessments,
                        const RecordingSource& source, const RunOptions& options) {
    RecordingOutcome outcome;
    outcome.recording = source.name();
    try {
        const AssessedRecording recording(file, assessments, source, options);
        std::vector<Task> tasks;
        outcome.assessments.reserve(assessments.size());
        for (const Assessment* assessment : assessments) {
            outcome.assessments.push_back(detail::describedOutcome(*assessment));
            try {
                tasks.push_back(
                    {assessment, &outcome.assessments.back(), recording.formulaOf(*assessment)});
            } catch (const InputError& error) {
                outcome.assessments.back().error = error.what();
            }
        }
        evaluateTasks(recording, tasks, options.robustness);
        if (options.explain) {
            explainTasks(recording, tasks);
        }
    } catch (const InputError& error) {
        outcome.error = error.what();
    }
    return outcome;
}

std::vector<const Assessment*> chosen(const AssessmentFile& file,
                                      const std::vector<std::string>& only) {
    for (const std::string& name : only) {
        file.find(name);
    }
    std::vector<const Assessment*> assessments;
    for (const Assessment& assessment : file.assessments) {
        if (only.empty() || std::find(only.begin(), only.end(), assessment.name) != only.end()) {
            assessments.push_back(&assessment);
        }
    }
    return assessments;
}

}  // namespace

RunOutcome run(const AssessmentFile& file, const std::vector<RecordingSource>& recordings,
               const RunOptions& options) {
    RunOutcome outcome{file.name, file.title, {}, options.strict};
    outcome.recordings.resize(recordings.size());
    const auto assessments = chosen(file, options.only);

    std::mutex progressMutex;
    const auto atATime = static_cast<unsigned>(
        std::clamp<std::size_t>(recordings.size(), 1, std::max(1U, options.jobs)));
    RunOptions each = options;
    each.jobs = std::max(1U, options.jobs / atATime);
    if (options.progress) {
        each.progress = [&](const std::string& text) {
            const std::lock_guard lock(progressMutex);
            options.progress(text);
        };
    }
    forEachIndex(recordings.size(), atATime, [&](std::size_t i) {
        outcome.recordings[i] = runOne(file, assessments, recordings[i], each);
    });
    return outcome;
}

}  // namespace vorm::evaluation
