#include "half_float.hpp"

// Computing a conversion is as fast as the table of all of them, which takes 256 KiB of cache.
#define IMATH_HALF_NO_LOOKUP_TABLE
#include <Imath/half.h>

#include <bit>
#include <limits>
#include <ostream>

namespace vorm::platform {
namespace {

// Rounds to odd: a number between two floats becomes the one whose last bit is 1. That one lies on
// the number's side of every half and of every tie between halves, so that rounding it again gives
// what rounding the number would have given. (Sylvie Boldo, Guillaume Melquiond: Emulation of FMA
// and correctly rounded sums: proved algorithms using rounding to odd, 2008.)
float roundedToOdd(double value) noexcept {
    constexpr int droppedBits =
        std::numeric_limits<double>::digits - std::numeric_limits<float>::digits;
    constexpr std::uint64_t lastKept = std::uint64_t{1} << droppedBits;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t sticky = bits % lastKept != 0 ? lastKept : 0;
    return static_cast<float>(std::bit_cast<double>((bits - bits % lastKept) | sticky));
}

}  // namespace

HalfFloat::HalfFloat(double value) noexcept : bits_(imath_float_to_half(roundedToOdd(value))) {}

HalfFloat::operator double() const noexcept {
    return static_cast<double>(imath_half_to_float(bits_));
}

// Sums, differences and products of two halves span at most 41 bits: doubles hold them exactly.

HalfFloat operator+(HalfFloat left, HalfFloat right) noexcept {
    return HalfFloat(static_cast<double>(left) + static_cast<double>(right));
}

HalfFloat operator-(HalfFloat left, HalfFloat right) noexcept {
    return HalfFloat(static_cast<double>(left) - static_cast<double>(right));
}

HalfFloat operator*(HalfFloat left, HalfFloat right) noexcept {
    return HalfFloat(static_cast<double>(left) * static_cast<double>(right));
}

std::ostream& operator<<(std::ostream& out, HalfFloat value) {
    return out << static_cast<double>(value);
}

}  // namespace vorm::platform
