#pragma once

// Round numbers for axes: multiples of 1, 2 and 5 times a power of ten.

#include <vorm/evaluation/time/exact_time.hpp>

#include <cstddef>
#include <vector>

namespace vorm::evaluation {

/// At most so many round times between two, both included, that are equally far apart.
std::vector<ExactTime> timeTicks(ExactTime from, ExactTime to, std::size_t most);

/// Round values between two that are finite, both included, so far apart that at most so many of
/// their distances fit between the two; exact to nine digits and more.
std::vector<double> valueTicks(double least, double greatest, std::size_t most);

}  // namespace vorm::evaluation
