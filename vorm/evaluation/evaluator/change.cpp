#include "change.hpp"

#include <vorm/assessments/expression/vorm_op.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/value_traits.hpp>
#include <vorm/evaluation/evaluator/function.hpp>
#include <vorm/evaluation/evaluator/truth_writer.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

template <class T>
void writeChanges(const TimedTrace_T<T>& piece, bool isFirst, TruthWriter& truth) {
    double quietFrom = piece.points.front().time;
    if (!isFirst) {
        truth.change(quietFrom, isOpen);
        quietFrom = support::nextTime(quietFrom);
    }
    for (auto point = piece.points.begin() + 1; point < piece.points.end(); ++point) {
        const bool isKnown = point->time <= piece.lastKnownTime;
        if (isKnown && !support::sameValue(point->value, (point - 1)->value)) {
            if (quietFrom < point->time) {
                truth.change(quietFrom, certainlyFalse);
            }
            truth.change(point->time, certainlyTrue);
            quietFrom = support::nextTime(point->time);
        }
    }
    if (quietFrom <= piece.lastKnownTime) {
        truth.change(quietFrom, certainlyFalse);
    }
    truth.openAfter(piece.lastKnownTime);
}

}  // namespace

Truth changesOf(const TracePieces& quantity) {
    TruthWriter truth;
    for (const TimedTrace& piece : quantity) {
        requireHeldFor(VORM_OP::Changed, piece);
        piece.visit(
            [&](const auto& typed) { writeChanges(typed, &piece == quantity.data(), truth); });
    }
    return truth.finish();
}

}  // namespace vorm::evaluation
