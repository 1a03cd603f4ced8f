#pragma once

#include <vorm/assessments/export.hpp>

#include <cstdint>

namespace vorm::assessments {

/// How a trace is read between two samples.
enum class VORM_ASSESSMENTS_EXPORT INTERPOLATION_METHOD : std::uint32_t {
    ZOH = 0,     ///< zero-order hold: the earlier sample's value holds until the next sample
    LINEAR = 1,  ///< the value follows the earlier sample's derivative
};

}  // namespace vorm::assessments
