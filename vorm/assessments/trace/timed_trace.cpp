#include "timed_trace.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments {

void detail::throwDerivativeOfDiscreteValue() {
    throw AssessmentInternalException("Derivative cannot be set for discrete type value");
}

void support::throwTimeValueMustIncrease() {
    throw AssessmentException(quillet::assessments::TimeValueMustIncrease());
}

template <class T>
TimedTrace_T<T>::TimedTrace_T(INTERPOLATION_METHOD method, double knownUntil)
    : interpolation(method), lastKnownTime(knownUntil) {}

template <class T>
TimedTrace_T<T>::TimedTrace_T(const T& constant)
    : points{Point{-support::infinity, constant}},
      interpolation(INTERPOLATION_METHOD::ZOH),
      lastKnownTime(support::infinity) {}

template <class T>
TimedTrace_T<T>::TimedTrace_T(const TimedTrace_T&) = default;
template <class T>
TimedTrace_T<T>::TimedTrace_T(TimedTrace_T&&) = default;
// By way of a copy, since a deque assigns by code that is as long as all the rest of this file.
template <class T>
TimedTrace_T<T>& TimedTrace_T<T>::operator=(const TimedTrace_T& other) {
    return *this = TimedTrace_T(other);
}
template <class T>
TimedTrace_T<T>& TimedTrace_T<T>::operator=(TimedTrace_T&&) = default;
template <class T>
TimedTrace_T<T>::~TimedTrace_T() = default;

template <class T>
void TimedTrace_T<T>::push_back(const Point& point) {
    support::TraceBuilder<T>(*this).append(point);
}

#define VORM_VALUE_TYPE(T)                                                        \
    template TimedTrace_T<T>::TimedTrace_T(INTERPOLATION_METHOD, double);         \
    template TimedTrace_T<T>::TimedTrace_T(const T&);                             \
    template TimedTrace_T<T>::TimedTrace_T(const TimedTrace_T<T>&);               \
    template TimedTrace_T<T>::TimedTrace_T(TimedTrace_T<T>&&);                    \
    template TimedTrace_T<T>& TimedTrace_T<T>::operator=(const TimedTrace_T<T>&); \
    template TimedTrace_T<T>& TimedTrace_T<T>::operator=(TimedTrace_T<T>&&);      \
    template TimedTrace_T<T>::~TimedTrace_T();                                    \
    template void TimedTrace_T<T>::push_back(const TimedPoint<T>&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
