#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/trace/value_traits.hpp>

namespace vorm::assessments {

namespace detail {
/// Throws AssessmentInternalException "Derivative cannot be set for discrete type value".
[[noreturn]] VORM_ASSESSMENTS_EXPORT void throwDerivativeOfDiscreteValue();
}  // namespace detail

/// One sample of a signal.
template <class T>
struct VORM_ASSESSMENTS_EXPORT TimedPoint {
    double time;            ///< in the signal's unit
    T value;                ///< the value at that time
    double derivative = 0;  ///< slope from here to the next sample, per time unit; 0 where held

    /// Makes the segment that starts here end at `next`. Throws AssessmentInternalException for a
    /// value type that does not interpolate.
    void setDerivative(const TimedPoint& next) { derivative = slopeTo(next); }

    /// The slope of the straight line from here to `next`; throws as setDerivative does.
    double slopeTo(const TimedPoint& next) const {
        if constexpr (IsFloatingPoint<T>::value) {
            return (support::toDouble(next.value) - support::toDouble(value)) / (next.time - time);
        } else {
            detail::throwDerivativeOfDiscreteValue();
        }
    }

    /// The value that this sample gives at a time not before its own: held where the derivative is
    /// 0, else on the straight line, computed in double and converted back.
    T valueAt(double when) const {
        if constexpr (IsFloatingPoint<T>::value) {
            // A NaN or infinite slope must not reach the sample itself.
            if (derivative != 0 && when > time) {
                return support::fromDouble<T>(support::toDouble(value) + (when - time) * derivative,
                                              value);
            }
        }
        return value;
    }
};

}  // namespace vorm::assessments
