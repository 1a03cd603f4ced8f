#include "comparison.hpp"

#include <vorm/assessments/errors/assessment_binary_type_exception.hpp>
#include <vorm/assessments/operators/combine.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

struct ValueEqual {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return a == b;
    }
};

template <class Relation>
TimedTrace_T<bool> related(const TimedTrace& left, const TimedTrace& right, Relation relation) {
    return left.visit([&]<class T>(const TimedTrace_T<T>& typed) {
        return typed.template combine<bool>(right.get<T>(), relation);
    });
}

TimedTrace_T<bool> negated(TimedTrace_T<bool> truth) {
    for (TimedPoint<bool>& point : truth.points) {
        point.value = !point.value;
    }
    return truth;
}

bool isEquality(VORM_OP op) {
    return op == VORM_OP::Eq || op == VORM_OP::Neq;
}

}  // namespace

TimedTrace compare(VORM_OP op, const TimedTrace& left, const TimedTrace& right) {
    requireComparable(op, left, right);
    // None is the negation of another: of a NaN all are false but Neq.
    switch (op) {
        case VORM_OP::Gt:
            return related(left, right, ValueGreater());
        case VORM_OP::Lt:
            return related(right, left, ValueGreater());
        case VORM_OP::Geq:
            return related(left, right, ValueGreaterEq());
        case VORM_OP::Leq:
            return related(right, left, ValueGreaterEq());
        case VORM_OP::Eq:
            return related(left, right, ValueEqual());
        default:
            return negated(related(left, right, ValueEqual()));
    }
}

TimedTrace isNotZero(const TimedTrace& trace) {
    return trace.visit([&]<class T>(const TimedTrace_T<T>& typed) -> TimedTrace {
        if constexpr (std::is_same_v<T, Verdict>) {
            throw AssessmentTypeException(typed.errorType());
        } else {
            typed.throwExceptionIfEnum();
            return compare(VORM_OP::Neq, trace, TimedTrace_T<T>(ZERO<T>()));
        }
    });
}

TimedTrace logicalNot(const TimedTrace& trace) {
    if (trace.which() != int{valueTypeIndex<bool>}) {
        throw AssessmentTypeException(trace.errorType());
    }
    return negated(trace.get<bool>());
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
