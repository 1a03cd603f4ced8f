// The verdict that counts only where a condition holds.

#include <vorm/assessments/operators/combine.hpp>

namespace vorm::assessments {

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

#define VORM_VALUE_TYPE(T) \
    template TimedTrace_T<T> TimedTrace_T<T>::If(const TimedTrace_T<T>&) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
