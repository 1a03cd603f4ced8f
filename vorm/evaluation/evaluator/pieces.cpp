#include "pieces.hpp"

#include <vorm/assessments/errors/assessment_binary_type_exception.hpp>
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
    return trace.isConstantScalar() && trace.getStartTime() == -detail::infinity;
}

void appendPiece(TracePieces& pieces, TimedTrace piece) {
    if (isKnownNowhere(piece)) {
        return;
    }
    const double start = piece.getStartTime();
    if (!pieces.empty() && pieces.back().getLastKnownTime() >= start) {
        pieces.back() =
            pieces.back().extractWindow(-detail::infinity, detail::previousTime(start), 0);
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

const TimedTrace& PiecePairs::left() {
    return cut(left_[l_], cutLeft_);
}

const TimedTrace& PiecePairs::right() {
    return cut(right_[r_], cutRight_);
}

const TimedTrace& PiecePairs::cut(const TimedTrace& piece, Storage& storage) {
    const bool single = left_.size() == 1 && right_.size() == 1;
    if (single || isConstant(piece)) {
        return piece;
    }
    const double start = std::max(left_[l_].getStartTime(), right_[r_].getStartTime());
    const double end = std::min(left_[l_].getLastKnownTime(), right_[r_].getLastKnownTime());
    if (piece.getStartTime() == start && piece.getLastKnownTime() == end) {
        return piece;
    }
    return storage.emplace(piece.extractWindow(start, end, 0));
}

}  // namespace vorm::evaluation
