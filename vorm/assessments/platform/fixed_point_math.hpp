#pragma once

#include <vorm/assessments/export.hpp>

#include <compare>
#include <cstdint>

namespace vorm::platform {

/// Where a number between two representable ones goes.
enum class RoundingMode : std::uint8_t {
    Nearest,     ///< to the nearer one, from the middle away from zero
    Convergent,  ///< to the nearer one, from the middle to the even stored integer
    Floor,       ///< down
    Ceiling,     ///< up
    TowardZero,  ///< to the one whose stored integer is nearer to zero
};

/// What becomes of a number outside the representable range, after rounding.
enum class OverflowMode : std::uint8_t {
    Saturate,  ///< the nearer end of the range
    Wrap,      ///< the stored integer modulo 2 to the power of the word length
};

/// How fixed-point values round and overflow. Rounding acts on the stored integer, so that "zero"
/// and "even" above are those of the stored integer, also where a bias shifts the real values.
class VORM_ASSESSMENTS_EXPORT FixedPointMath {
public:
    /// Rounds to nearest and saturates.
    constexpr FixedPointMath() noexcept = default;
    constexpr FixedPointMath(RoundingMode rounding, OverflowMode overflow) noexcept
        : rounding_(rounding), overflow_(overflow) {}

    /// The default settings, one constant object for the whole process.
    static const FixedPointMath& global() noexcept;

    constexpr RoundingMode rounding() const noexcept { return rounding_; }
    constexpr OverflowMode overflow() const noexcept { return overflow_; }

    /// Whether a number strictly between the integers `floor` and `floor` + 1 becomes the upper
    /// one, given how its distance from `floor` compares with one half.
    bool roundsUp(bool floorIsNegative, bool floorIsOdd,
                  std::strong_ordering distanceToHalf) const noexcept;

    friend constexpr bool operator==(const FixedPointMath&, const FixedPointMath&) = default;

private:
    RoundingMode rounding_ = RoundingMode::Nearest;
    OverflowMode overflow_ = OverflowMode::Saturate;
};

}  // namespace vorm::platform
