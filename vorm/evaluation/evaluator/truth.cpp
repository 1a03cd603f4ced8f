#include "truth.hpp"

#include <vorm/evaluation/evaluator/truth_writer.hpp>

namespace vorm::evaluation {

using namespace assessments;

Truth truthOf(const TracePieces& pieces) {
    TruthWriter truth;
    for (const TimedTrace& piece : pieces) {
        if (piece.which() != int{valueTypeIndex<bool>}) {
            throw AssessmentTypeException(piece.errorType());
        }
        const TimedTrace_T<bool>& values = piece.get<bool>();
        for (const TimedPoint<bool>& point : values.points) {
            if (point.time > values.lastKnownTime) {
                break;
            }
            truth.change(point.time, point.value ? certainlyTrue : certainlyFalse);
        }
        truth.openAfter(values.lastKnownTime);
    }
    return truth.finish();
}

TracePieces knownPieces(const Truth& truth) {
    TracePieces pieces;
    TimedTrace_T<bool> piece(INTERPOLATION_METHOD::ZOH, support::infinity);
    for (const Truth::Point& point : truth.points) {
        if (point.value != isOpen) {
            piece.points.push_back({point.time, point.value == certainlyTrue});
        } else if (!piece.points.empty()) {
            piece.lastKnownTime = support::previousTime(point.time);
            pieces.emplace_back(std::move(piece));
            piece = TimedTrace_T<bool>(INTERPOLATION_METHOD::ZOH, support::infinity);
        }
    }
    if (!piece.points.empty()) {
        pieces.emplace_back(std::move(piece));
    }
    return pieces;
}

Truth epsilonShifted(const Truth& truth, double direction) {
    const bool later = direction >= 0;
    TruthWriter shifted;
    bool isKnownBefore =
        false;  // at some time; or just before, where the shift is to earlier times
    for (const Truth::Point& point : truth.points) {
        const bool begins = point.value != isOpen && !isKnownBefore;
        if (later) {
            const bool stays = begins || point.value == isOpen;
            shifted.change(stays ? point.time : support::nextTime(point.time), point.value);
            isKnownBefore = isKnownBefore || begins;
        } else {
            shifted.change(begins ? point.time : support::previousTime(point.time), point.value);
            isKnownBefore = point.value != isOpen;
        }
    }
    return shifted.finish();
}

}  // namespace vorm::evaluation
