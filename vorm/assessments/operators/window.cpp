// The sliding window extremum in any order of the values, and what all windows have in common.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/operators/sliding_extremum.hpp>

namespace vorm::assessments {

bool configLastWindow::minimize = false;

namespace detail {

void requireWindowWidth(double width) {
    if (!(width >= 0)) {
        throw AssessmentInternalException(
            "The width of a time window must not be negative or NaN.");
    }
}

void requireFiniteStart(double a) {
    if (!std::isfinite(a)) {
        throw AssessmentInternalException("The start of a time window must be a finite time.");
    }
}

}  // namespace detail

template <class T>
void TimedTrace_T<T>::timedWindow(const double& width, std::function<bool(T, T)> keepFirst) {
    *this = detail::slidingExtremum(*this, width, keepFirst);
}

#define VORM_VALUE_TYPE(T) \
    template void TimedTrace_T<T>::timedWindow(const double&, std::function<bool(T, T)>);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments
