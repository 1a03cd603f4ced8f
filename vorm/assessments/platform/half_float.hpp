#pragma once

#include <vorm/assessments/export.hpp>

#include <compare>
#include <cstdint>
#include <iosfwd>

namespace vorm::platform {

/// A half-precision number: IEEE 754 binary16, which has 11 significant bits, magnitudes from
/// 2^-24 to 65504, signed zeros, infinities and NaN.
///
/// Every result is the exact one rounded once to the nearest number, a tie to the one whose last
/// bit is 0; what rounds past 65504 is infinite. NaN stays NaN, its payload is not kept.
/// Nothing here throws. Values are plain bits, so distinct ones may be used from any thread.
class VORM_ASSESSMENTS_EXPORT HalfFloat {
public:
    /// Plus zero.
    constexpr HalfFloat() noexcept = default;

    /// The nearest half-precision number.
    explicit HalfFloat(double value) noexcept;

    /// The same number; each one is a double.
    explicit operator double() const noexcept;

    /// The number of a binary16 pattern: sign, 5 exponent bits, 10 fraction bits.
    static constexpr HalfFloat fromBits(std::uint16_t bits) noexcept {
        HalfFloat value;
        value.bits_ = bits;
        return value;
    }

    /// The binary16 pattern.
    constexpr std::uint16_t bits() const noexcept { return bits_; }

    /// Flips the sign, also of a zero or a NaN.
    constexpr HalfFloat operator-() const noexcept {
        return fromBits(static_cast<std::uint16_t>(bits_ ^ signBit));
    }

    friend VORM_ASSESSMENTS_EXPORT HalfFloat operator+(HalfFloat left, HalfFloat right) noexcept;
    friend VORM_ASSESSMENTS_EXPORT HalfFloat operator-(HalfFloat left, HalfFloat right) noexcept;
    friend VORM_ASSESSMENTS_EXPORT HalfFloat operator*(HalfFloat left, HalfFloat right) noexcept;

    /// Clears the sign.
    friend constexpr HalfFloat abs(HalfFloat value) noexcept { return fromBits(value.magnitude()); }

    friend constexpr bool isnan(HalfFloat value) noexcept {
        return value.magnitude() > infinityBits;
    }

    /// NaN is unordered with everything, the two zeros are equal.
    friend constexpr std::partial_ordering operator<=>(HalfFloat left, HalfFloat right) noexcept {
        if (isnan(left) || isnan(right)) {
            return std::partial_ordering::unordered;
        }
        return left.rank() <=> right.rank();
    }
    friend constexpr bool operator==(HalfFloat left, HalfFloat right) noexcept {
        return !isnan(left) && !isnan(right) && left.rank() == right.rank();
    }

    /// Writes the number as the stream writes a double.
    friend VORM_ASSESSMENTS_EXPORT std::ostream& operator<<(std::ostream& out, HalfFloat value);

private:
    static constexpr std::uint16_t signBit = 0x8000;
    static constexpr std::uint16_t infinityBits = 0x7c00;

    constexpr std::uint16_t magnitude() const noexcept {
        return static_cast<std::uint16_t>(bits_ & ~signBit);
    }
    // Patterns of one sign are in the order of their numbers.
    constexpr int rank() const noexcept {
        return (bits_ & signBit) != 0 ? -int{magnitude()} : int{magnitude()};
    }

    std::uint16_t bits_ = 0;
};

}  // namespace vorm::platform
