#pragma once

#include <vorm/assessments/trace/timed_point.hpp>

#include <vector>

namespace example {

/// The speed of a car in m/s, twice a second for two minutes: it cruises at 19 m/s, slows down for
/// a town and returns to 19 m/s. Its cruise control overshoots both times. The same on each call.
std::vector<vorm::assessments::TimedPoint<double>> simulatedDrive();

}  // namespace example
