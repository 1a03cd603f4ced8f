#pragma once

// One step in time is always one representable double.

#include <cmath>
#include <limits>

namespace vorm::assessments::support {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

/// The next representable time; infinities and NaN stay as they are.
inline double nextTime(double time) {
    return std::isfinite(time) ? std::nextafter(time, infinity) : time;
}

/// The representable time before; infinities and NaN stay as they are.
inline double previousTime(double time) {
    return std::isfinite(time) ? std::nextafter(time, -infinity) : time;
}

}  // namespace vorm::assessments::support
