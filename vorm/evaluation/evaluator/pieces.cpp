#include "pieces.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>

namespace vorm::evaluation {

using namespace assessments;

bool isKnownNowhere(const TimedTrace& trace) {
    return trace.visit([](const auto& typed) {
        return typed.points.empty() || typed.points.front().time > typed.lastKnownTime;
    });
}

bool isConstant(const TimedTrace& trace) {
    return trace.isConstantScalar() && trace.getStartTime() == -support::infinity;
}

bool isLine(const TimedTrace& trace) {
    return trace.getInterpolation() == INTERPOLATION_METHOD::LINEAR;
}

TimedTrace shiftedFreely(const TimedTrace& trace, double delay) {
    return trace.visit([&](const auto& typed) -> TimedTrace { return typed.Shift(delay, false); });
}

void appendPiece(TracePieces& pieces, TimedTrace piece) {
    if (isKnownNowhere(piece)) {
        return;
    }
    const double start = piece.getStartTime();
    if (!pieces.empty() && pieces.back().getLastKnownTime() >= start) {
        pieces.back() =
            pieces.back().extractWindow(-support::infinity, support::previousTime(start), 0);
        if (isKnownNowhere(pieces.back())) {
            pieces.pop_back();
        }
    }
    pieces.push_back(std::move(piece));
}

PiecePairs::PiecePairs(const TracePieces& left, const TracePieces& right)
    : left_(left), right_(right) {
    if (!left.empty() && !right.empty() && left.front().which() != right.front().which()) {
        throw AssessmentBinaryTypeException(left.front().errorType(), right.front().errorType());
    }
    skipPairsApart();
}

void PiecePairs::advance() {
    passEarlierEnd();
    skipPairsApart();
}

void PiecePairs::skipPairsApart() {
    while (!done() && (left_[l_].getStartTime() > right_[r_].getLastKnownTime() ||
                       right_[r_].getStartTime() > left_[l_].getLastKnownTime())) {
        passEarlierEnd();
    }
}

void PiecePairs::passEarlierEnd() {
    const bool leftEndsLater = left_[l_].getLastKnownTime() > right_[r_].getLastKnownTime();
    ++(leftEndsLater ? r_ : l_);
}

CountedSpan PiecePairs::span() const {
    return {std::max(left().getStartTime(), right().getStartTime()),
            std::min(left().getLastKnownTime(), right().getLastKnownTime())};
}

std::optional<TimedTrace> cutTo(const CountedSpan& span, const TimedTrace& piece) {
    const bool isWhole =
        piece.getStartTime() == span.first && piece.getLastKnownTime() == span.last;
    if (isWhole || isConstant(piece)) {
        return std::nullopt;
    }
    return piece.extractWindow(span.first, span.last, 0);
}

}  // namespace vorm::evaluation
