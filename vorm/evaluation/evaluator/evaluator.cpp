#include "evaluator.hpp"

#include <vorm/evaluation/evaluator/failure_chain.hpp>
#include <vorm/evaluation/evaluator/formula_graph.hpp>
#include <vorm/evaluation/evaluator/node_evaluation.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>
#include <vorm/evaluation/evaluator/robustness.hpp>
#include <vorm/evaluation/evaluator/schedule.hpp>

#include <algorithm>
#include <mutex>
#include <new>
#include <utility>

namespace vorm::evaluation {

using namespace assessments;

namespace {

// Each link holds a copy of its formula and its text, so that all links of a deep formula would
// take the square of its size. The ones next to the fault tell what is wrong.
constexpr std::size_t mostInnerLinks = 100;

class Evaluation {
public:
    Evaluation(const std::vector<EvaluationRequest>& requests, const SignalLookup& signals,
               const ResultConsumer& consume, const Timeline& timeline)
        : requests_(requests),
          signals_(signals),
          consume_(consume),
          timeline_(timeline),
          graph_(requests),
          requestsOf_(graph_.vertices.size()),
          outcomes_(graph_.vertices.size()) {
        for (std::size_t request = 0; request < requests.size(); ++request) {
            requestsOf_[graph_.roots[request]].push_back(request);
        }
    }

    void run(const EvaluationOptions& options) {
        runSchedule(graph_, options,
                    {[this](std::size_t vertex) {
                         compute(vertex);
                         deliver(vertex);
                     },
                     [this](std::size_t vertex) { outcomes_[vertex].value = Value(); }});
        if (consumerFailure_) {
            std::rethrow_exception(consumerFailure_);
        }
    }

private:
    // Written by the thread that computes the vertex, read after that. A fault is kept where it
    // happened; the vertices that fail by it only know the operand that did.
    struct Outcome {
        Value value;
        std::exception_ptr fault;
        const std::size_t* failedOperand = nullptr;

        bool failed() const { return fault != nullptr || failedOperand != nullptr; }
    };

    void compute(std::size_t place) {
        const FormulaVertex& vertex = graph_.vertices[place];
        Outcome& outcome = outcomes_[place];
        std::vector<Value> operands;
        try {
            for (const std::size_t& operand : vertex.operandVertices()) {
                if (outcomes_[operand].failed()) {
                    outcome.failedOperand = &operand;
                    return;
                }
                operands.push_back(outcomes_[operand].value);
            }
            outcome.value =
                evaluateNode(*vertex.formula, vertex.meaning, operands, signals_, timeline_);
        } catch (const std::bad_alloc&) {
            throw;  // no fault of this formula, nor one that others of its meanings share
        } catch (...) {
            outcome.fault = std::current_exception();
        }
    }

    void deliver(std::size_t vertex) {
        try {
            for (const std::size_t request : requestsOf_[vertex]) {
                consume_(request, resultOf(request));
            }
        } catch (...) {
            const std::lock_guard lock(consumerFailureMutex_);
            consumerFailure_ = std::current_exception();
        }
    }

    EvaluationResult resultOf(std::size_t request) const {
        const std::size_t root = graph_.roots[request];
        if (outcomes_[root].failed()) {
            return {nullptr, nullptr, failureOf(root, *requests_[request].formula)};
        }
        const Value& value = outcomes_[root].value;
        if (isTruth(value)) {
            return {asTruth(value), nullptr, nullptr};
        }
        const SharedPieces pieces = asPieces(value);
        if (isRobustness(requests_[request].meaning)) {
            return {nullptr, withFinalCertainty(pieces), nullptr};
        }
        return {pieces->empty() ? asTruth(value) : nullptr, pieces, nullptr};
    }

    static SharedPieces withFinalCertainty(const SharedPieces& pieces) {
        const bool isFinal = std::none_of(pieces->begin(), pieces->end(), hasFiniteCertainty);
        return isFinal ? pieces : onPieces(*pieces, withInfiniteCertainty);
    }

    std::exception_ptr failureOf(std::size_t root, const Expression& formula) const {
        std::vector<const Expression*> path{&formula};
        std::size_t place = root;
        while (outcomes_[place].failedOperand != nullptr) {
            place = *outcomes_[place].failedOperand;
            // The robustness of a term is that of the same formula.
            if (graph_.vertices[place].formula != path.back()) {
                path.push_back(graph_.vertices[place].formula);
            }
        }
        if (path.size() > mostInnerLinks + 1) {
            path.erase(path.begin() + 1, path.end() - mostInnerLinks);
        }
        std::reverse(path.begin(), path.end());
        return failureChain(outcomes_[place].fault, path);
    }

    const std::vector<EvaluationRequest>& requests_;
    const SignalLookup& signals_;
    const ResultConsumer& consume_;
    const Timeline& timeline_;
    const FormulaGraph graph_;
    std::vector<std::vector<std::size_t>> requestsOf_;  // of each vertex
    std::vector<Outcome> outcomes_;
    std::mutex consumerFailureMutex_;
    std::exception_ptr consumerFailure_;
};

}  // namespace

void evaluateEach(const std::vector<EvaluationRequest>& requests, const SignalLookup& signals,
                  const ResultConsumer& consume, const EvaluationOptions& options) {
    Evaluation(requests, signals, consume, options.timeline).run(options);
}

std::vector<EvaluationResult> evaluate(const std::vector<EvaluationRequest>& requests,
                                       const SignalLookup& signals,
                                       const EvaluationOptions& options) {
    std::vector<EvaluationResult> results(requests.size());
    evaluateEach(
        requests, signals,
        [&results](std::size_t request, EvaluationResult result) {
            results[request] = std::move(result);
        },
        options);
    return results;
}

}  // namespace vorm::evaluation
