// And and Or as minimum and maximum, and the guarded verdict.

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/extremum.hpp>

namespace vorm::assessments {
namespace {

// The value of two that an order keeps, pointwise. On bool the smaller value is the logical and,
// the greater one the logical or.
template <class Keep, class T>
TimedTrace_T<T> pointwiseExtremum(const TimedTrace_T<T>& a, const TimedTrace_T<T>& b) {
    a.throwExceptionIfEnum(b, false);
    return a.template combine<T>(b, support::Extremum<Keep>());
}

}  // namespace

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::And(const TimedTrace_T& other) const {
    return pointwiseExtremum<support::KeepSmaller>(*this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::Or(const TimedTrace_T& other) const {
    return pointwiseExtremum<support::KeepGreater>(*this, other);
}

template <class T>
TimedTrace_T<T> TimedTrace_T<T>::If([[maybe_unused]] const TimedTrace_T& other) const {
    if constexpr (support::isVerdict<T>) {
        throwExceptionIfEnum(other, false);
        const Verdict noResult(resultEnum_t::NO_RESULT);
        return combine<T>(other, [&](const Verdict& condition, const Verdict& guarded) {
            return condition.get() == resultEnum_t::PASS ? guarded : noResult;
        });
    } else {
        throw AssessmentTypeException(errorType());
    }
}

#define VORM_VALUE_TYPE(T)                                                       \
    template TimedTrace_T<T> TimedTrace_T<T>::And(const TimedTrace_T<T>&) const; \
    template TimedTrace_T<T> TimedTrace_T<T>::Or(const TimedTrace_T<T>&) const;  \
    template TimedTrace_T<T> TimedTrace_T<T>::If(const TimedTrace_T<T>&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
