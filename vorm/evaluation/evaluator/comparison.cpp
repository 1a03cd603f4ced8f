#include "comparison.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/evaluation/evaluator/line_comparison.hpp>
#include <vorm/evaluation/evaluator/pieces.hpp>

#include <type_traits>

namespace vorm::evaluation {

using namespace assessments;

namespace {

bool isEquality(VORM_OP op) {
    return op == VORM_OP::Eq || op == VORM_OP::Neq;
}

template <class T>
void compareHeld(ComparedOperand<T> left, ComparedOperand<T> right, double start,
                 const Relation& relation, TruthWriter& truth) {
    left.cursor().advanceTo(start);
    right.cursor().advanceTo(start);
    const auto visit = [&](double time, const TimedPoint<T>* l, const TimedPoint<T>* r)
        __attribute__((always_inline)) {
        truth.change(time, relation(orderOf(l->value, r->value)));
    };
    support::walk(left.cursor(), right.cursor(), visit);
}

// Two pieces, on a span in which both are known.
template <class T>
void comparePieces(ComparedOperand<T> left, ComparedOperand<T> right, const CountedSpan& span,
                   const Relation& relation, TruthWriter& truth) {
    if constexpr (IsFloatingPoint<T>::value) {
        if (left.isLine() || right.isLine()) {
            LineComparison<T>(std::move(left), std::move(right), relation, truth)
                .run(span.first, span.last);
            return;
        }
    }
    compareHeld(std::move(left), std::move(right), span.first, relation, truth);
}

TracePieces zerosFor(const TracePieces& pieces) {
    if (pieces.empty()) {
        return {};
    }
    return {pieces.front().visit([]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (std::is_same_v<T, Verdict>) {
            throw AssessmentTypeException(typed.errorType());
        } else {
            typed.throwExceptionIfEnum();
            return TimedTrace_T<T>(ZERO<T>());
        }
    })};
}

}  // namespace

Truth compare(VORM_OP op, const Compared& left, const Compared& right) {
    const Relation relation(op);
    TruthWriter truth;
    for (PiecePairs pairs(left.pieces, right.pieces); !pairs.done(); pairs.advance()) {
        requireComparable(op, pairs.left(), pairs.right());
        const CountedSpan span = pairs.span();
        pairs.left().visit([&]<class T>(const TimedTrace_T<T>& typed) {
            comparePieces(
                ComparedOperand<T>(typed, span.first, span.last, left.isComputed),
                ComparedOperand<T>(pairs.right().get<T>(), span.first, span.last, right.isComputed),
                span, relation, truth);
        });
        truth.openAfter(span.last);
    }
    return truth.finish();
}

Truth isNotZero(const Compared& quantity) {
    const TracePieces zero = zerosFor(quantity.pieces);
    return compare(VORM_OP::Neq, quantity, {zero, false});
}

void requireComparable(VORM_OP op, const TimedTrace& left, const TimedTrace& right) {
    if (left.which() != right.which()) {
        throw AssessmentBinaryTypeException(left.errorType(), right.errorType());
    }
    left.visit([&]<class T>(const TimedTrace_T<T>& typed) {
        typed.throwExceptionIfEnum(right.get<T>(), isEquality(op));
    });
}

}  // namespace vorm::evaluation
