#include "signal_evaluation.hpp"

#include <map>
#include <utility>

namespace vorm::evaluation::detail {

SignalLookup lookupIn(const Recording& recording) {
    std::map<boost::uuids::uuid, SharedPieces> pieces;
    for (const Signal& signal : recording.signals) {
        pieces.emplace(signalId(signal.name), signal.pieces);
    }
    return [pieces = std::move(pieces)](const assessments::variable& variable) {
        return pieces.at(variable.id);
    };
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
