#include "signal_evaluation.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/signal/time_line.hpp>

#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

using namespace assessments;

bool isComparison(const binary_op& node) {
    return support::familyOf(node.op) == support::OperatorFamily::Comparison;
}

// The numbers that the time is compared with.
std::set<double> timesIn(const std::vector<const Expression*>& formulas) {
    const auto time = signalId(timeName);
    std::set<double> numbers;
    const auto add = [&](const Expression& one, const Expression& other) {
        const auto* signal = boost::get<variable>(&one);
        const auto* literal = boost::get<constantValue>(&other);
        const auto* number = literal == nullptr ? nullptr : boost::get<double>(&literal->value);
        if (signal != nullptr && signal->id == time && number != nullptr &&
            std::isfinite(*number)) {
            numbers.insert(*number);
        }
    };
    for (const Expression* formula : formulas) {
        support::forEachNode(*formula, [&](const Expression& tree) {
            const auto* node = boost::get<binary_op>(&tree);
            if (node != nullptr && isComparison(*node)) {
                add(node->lhs, node->rhs);
                add(node->rhs, node->lhs);
            }
        });
    }
    return numbers;
}

}  // namespace

SignalLookup lookupIn(const Recording& recording, const std::vector<const Expression*>& formulas) {
    std::map<boost::uuids::uuid, SharedPieces> pieces;
    for (const Signal& signal : recording.signals) {
        pieces.emplace(signalId(signal.name), signal.pieces);
    }
    if (recording.time) {
        const auto& known = recording.time->pieces->front();
        const CountedSpan span{known.getStartTime(), known.getLastKnownTime()};
        pieces.emplace(signalId(timeName), timeLine(recording.timeline, span, timesIn(formulas)));
    }
    return [pieces = std::move(pieces)](const variable& signal) { return pieces.at(signal.id); };
}

EvaluationOptions evaluationOptions(const Recording& recording, const RunOptions& options) {
    EvaluationOptions evaluation;
    evaluation.timeline = recording.timeline;
    evaluation.jobs = options.jobs;
    if (options.progress) {
        evaluation.progress = [&](std::size_t done, std::size_t all) {
            options.progress("evaluating " + recording.name + ": " + std::to_string(done) + " of " +
                             std::to_string(all) + " sub-formulas");
        };
    }
    return evaluation;
}

}  // namespace vorm::evaluation::detail
