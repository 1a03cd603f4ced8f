// Naming the type of a trace in failures, and refusing enumerated traces.

#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments {

template <class T>
AssessmentTypeException::TypeTag TimedTrace_T<T>::errorType() const {
    if (enumTypeName.empty()) {
        return AssessmentTypeException::typeTAG<T>();
    }
    return enumTypeName;
}

template <class T>
void TimedTrace_T<T>::throwExceptionIfEnum() const {
    if (!enumTypeName.empty()) {
        throw AssessmentTypeException(errorType());
    }
}

template <class T>
void TimedTrace_T<T>::throwExceptionIfEnum(const TimedTrace_T& other, bool allowSameEnum) const {
    const bool allowed = allowSameEnum ? enumTypeName == other.enumTypeName
                                       : enumTypeName.empty() && other.enumTypeName.empty();
    if (!allowed) {
        throw AssessmentBinaryTypeException(errorType(), other.errorType());
    }
}

#define VORM_VALUE_TYPE(T)                                                        \
    template AssessmentTypeException::TypeTag TimedTrace_T<T>::errorType() const; \
    template void TimedTrace_T<T>::throwExceptionIfEnum() const;                  \
    template void TimedTrace_T<T>::throwExceptionIfEnum(const TimedTrace_T<T>&, bool) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
