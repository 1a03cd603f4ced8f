#pragma once

// Where two straight segments cross.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_point.hpp>

#include <cmath>
#include <limits>

namespace vorm::assessments::detail {

/// The time at which the lines through two samples meet; minus infinity for parallel ones, NaN
/// where a slope is too steep for a double.
template <class T>
double meetingTime(const TimedPoint<T>& left, const TimedPoint<T>& right) {
    const double slopeDifference = left.derivative - right.derivative;
    if (slopeDifference == 0) {
        return -support::infinity;
    }
    if (!std::isfinite(slopeDifference)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    // Measured from the steeper line's sample, since far from the origin of time a product of time
    // and slope loses digits. A constant has no slope and no time to measure from.
    const bool leftIsSteeper = std::fabs(left.derivative) >= std::fabs(right.derivative);
    const TimedPoint<T>& steep = leftIsSteeper ? left : right;
    const TimedPoint<T>& flat = leftIsSteeper ? right : left;
    const double flatRise = flat.derivative == 0 ? 0 : flat.derivative * (steep.time - flat.time);
    const double gap = support::toDouble(flat.value) + flatRise - support::toDouble(steep.value);
    return steep.time + gap / (steep.derivative - flat.derivative);
}

/// `time`, or the nearest representable time strictly inside the open interval; where rounding
/// leaves no time inside, one of its ends.
inline double clampInside(double time, double start, double end) {
    if (start >= time) {
        return std::nextafter(start, end);
    }
    if (time >= end) {
        return std::nextafter(end, start);
    }
    return time;
}

}  // namespace vorm::assessments::detail
