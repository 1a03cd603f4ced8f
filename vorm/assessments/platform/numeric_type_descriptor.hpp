#pragma once

#include <vorm/assessments/export.hpp>

#include <cstdint>
#include <string>

namespace vorm::platform {

/// How a stored integer stands for a real value.
enum class NumericScaling : std::uint8_t {
    BinaryPoint,   ///< integer * 2^-fractionLength
    SlopeAndBias,  ///< slope * 2^-fractionLength * integer + bias
};

enum class Signedness : std::uint8_t { Signed, Unsigned };

/// The type of a fixed-point number: which integers are stored and which real values they mean,
///
///     real value = slope * 2^-fractionLength * stored integer + bias.
///
/// Signed integers are in two's complement. Two descriptors are equal when all their fields are;
/// 2 * 2^0 and 1 * 2^1 mean the same real values, yet are different types.
class VORM_ASSESSMENTS_EXPORT NumericTypeDescriptor {
public:
    static constexpr int largestWordLength = 128;
    /// Bounds the size of exact results; it reaches past all exponents of a double.
    static constexpr int largestFractionLength = 2048;

    /// Signed, 32 bits, 16 of them after the binary point.
    NumericTypeDescriptor() noexcept = default;

    /// Throws std::invalid_argument when the word length is not in [1, 128], the fraction length
    /// not in [-2048, 2048], the slope not finite and above zero, the bias not finite, or when a
    /// binary point comes with a slope other than 1 or a bias other than 0.
    NumericTypeDescriptor(NumericScaling scaling, Signedness signedness, int wordLength,
                          double slope, int fractionLength, double bias);

    NumericScaling scaling() const noexcept { return scaling_; }
    Signedness signedness() const noexcept { return signedness_; }
    bool isSigned() const noexcept { return signedness_ == Signedness::Signed; }
    /// Bits of the stored integer, with the sign bit.
    int wordLength() const noexcept { return wordLength_; }
    double slope() const noexcept { return slope_; }
    /// Bits after the binary point; negative when the last bits before it are not stored either.
    int fractionLength() const noexcept { return fractionLength_; }
    double bias() const noexcept { return bias_; }

    /// The double nearest to the smallest real value, infinite past the range of double.
    double minimum() const;
    /// The double nearest to the largest real value, infinite past the range of double.
    double maximum() const;

    /// `s` or `u`, word length, `f`, fraction length: `s32f16`. With slope and bias, these follow:
    /// `u16f4*0.1+5`, `s8f-2*1+0`. Equal texts mean equal descriptors.
    std::string text() const;

    friend bool operator==(const NumericTypeDescriptor&,
                           const NumericTypeDescriptor&) noexcept = default;

private:
    NumericScaling scaling_ = NumericScaling::BinaryPoint;
    Signedness signedness_ = Signedness::Signed;
    int wordLength_ = 32;
    int fractionLength_ = 16;
    double slope_ = 1;
    double bias_ = 0;
};

}  // namespace vorm::platform
