#pragma once

// For the evaluator: operations on traces, applied to quantities in pieces. Each result is made of
// one piece of each operand, so that nothing is ever looked at across a hole.

#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

namespace vorm::evaluation {

/// Whether a trace is known at no time.
bool isKnownNowhere(const assessments::TimedTrace& trace);

/// Whether a trace is a constant that is known at all times.
bool isConstant(const assessments::TimedTrace& trace);

/// Whether a trace is linear between its samples.
bool isLine(const assessments::TimedTrace& trace);

/// The trace looked at that much ahead, known also before it begins.
assessments::TimedTrace shiftedFreely(const assessments::TimedTrace& trace, double delay);

/// Adds a piece, unless it is known nowhere. Where a rounded time makes it touch the piece before
/// it, that one ends earlier.
void appendPiece(TracePieces& pieces, assessments::TimedTrace piece);

/// The operation on every piece.
template <class Operation>
SharedPieces onPieces(const TracePieces& operand, Operation operation) {
    auto results = std::make_shared<TracePieces>();
    for (const assessments::TimedTrace& piece : operand) {
        appendPiece(*results, operation(piece));
    }
    return results;
}

/// Walks over the pairs of pieces, one of each operand, that have a time in common.
class PiecePairs {
public:
    /// Throws AssessmentBinaryTypeException for operands of different types.
    PiecePairs(const TracePieces& left, const TracePieces& right);

    bool done() const { return l_ == left_.size() || r_ == right_.size(); }
    void advance();

    /// The pieces of the pair, whole.
    const assessments::TimedTrace& left() const { return left_[l_]; }
    const assessments::TimedTrace& right() const { return right_[r_]; }

    /// What they have in common.
    CountedSpan span() const;

private:
    void skipPairsApart();
    void passEarlierEnd();

    const TracePieces& left_;
    const TracePieces& right_;
    std::size_t l_ = 0;
    std::size_t r_ = 0;
};

/// A piece on a span, so that a long one does not count whole against each of many short ones;
/// nothing where it is no longer, or a constant.
std::optional<assessments::TimedTrace> cutTo(const CountedSpan& span,
                                             const assessments::TimedTrace& piece);

/// The operation on every pair of pieces that have a time in common. Throws
/// AssessmentBinaryTypeException for operands of different types.
template <class Operation>
SharedPieces onPairs(const TracePieces& left, const TracePieces& right, Operation operation) {
    auto results = std::make_shared<TracePieces>();
    const bool areWhole = left.size() == 1 && right.size() == 1;
    for (PiecePairs pairs(left, right); !pairs.done(); pairs.advance()) {
        const auto cutLeft = areWhole ? std::nullopt : cutTo(pairs.span(), pairs.left());
        const auto cutRight = areWhole ? std::nullopt : cutTo(pairs.span(), pairs.right());
        appendPiece(*results, operation(cutLeft ? *cutLeft : pairs.left(),
                                        cutRight ? *cutRight : pairs.right()));
    }
    return results;
}

}  // namespace vorm::evaluation
