#include "fixed_point_math.hpp"

namespace vorm::platform {

const FixedPointMath& FixedPointMath::global() noexcept {
    static constexpr FixedPointMath defaults;
    return defaults;
}

bool FixedPointMath::roundsUp(bool floorIsNegative, bool floorIsOdd,
                              std::strong_ordering distanceToHalf) const noexcept {
    const bool tie = distanceToHalf == 0;
    switch (rounding_) {
        case RoundingMode::Nearest:
            return tie ? !floorIsNegative : distanceToHalf > 0;
        case RoundingMode::Convergent:
            return tie ? floorIsOdd : distanceToHalf > 0;
        case RoundingMode::Ceiling:
            return true;
        case RoundingMode::TowardZero:
            return floorIsNegative;
        case RoundingMode::Floor:
            break;
    }
    return false;
}

}  // namespace vorm::platform
