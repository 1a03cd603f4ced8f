#include "timed_trace.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments {

namespace detail {

void throwDerivativeOfDiscreteValue() {
    throw AssessmentInternalException("Derivative cannot be set for discrete type value");
}

void throwTimeValueMustIncrease() {
    throw AssessmentException(quillet::assessments::TimeValueMustIncrease());
}

}  // namespace detail

template <class T>
TimedTrace_T<T>::TimedTrace_T(INTERPOLATION_METHOD method, double knownUntil)
    : interpolation(method), lastKnownTime(knownUntil) {}

template <class T>
TimedTrace_T<T>::TimedTrace_T(const T& constant)
    : points{Point{-detail::infinity, constant}},
      interpolation(INTERPOLATION_METHOD::ZOH),
      lastKnownTime(detail::infinity) {}

template <class T>
TimedTrace_T<T>::TimedTrace_T(const TimedTrace_T&) = default;
template <class T>
TimedTrace_T<T>::TimedTrace_T(TimedTrace_T&&) = default;
template <class T>
TimedTrace_T<T>& TimedTrace_T<T>::operator=(const TimedTrace_T&) = default;
template <class T>
TimedTrace_T<T>& TimedTrace_T<T>::operator=(TimedTrace_T&&) = default;
template <class T>
TimedTrace_T<T>::~TimedTrace_T() = default;

template <class T>
void TimedTrace_T<T>::push_back(const Point& point) {
    detail::TraceBuilder<T>(*this).append(point);
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
