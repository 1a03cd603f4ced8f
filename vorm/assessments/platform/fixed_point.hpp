#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/fixed_point_math.hpp>
#include <vorm/assessments/platform/numeric_type_descriptor.hpp>

#include <compare>
#include <string>
#include <string_view>

namespace vorm::platform {

/// A fixed-point number: a stored integer of 1 to 128 bits and the type that gives it its meaning.
///
/// Arithmetic is exact on the real values; the exact result then becomes a value of the left
/// operand's type, rounded and overflowed once by the left operand's FixedPointMath. Operands of
/// one type give that type; with two types `a + b` and `b + a` can differ. Negation and absolute
/// value keep their operand's type: with saturation the negative of an unsigned number is zero or
/// the least value of its type.
///
/// Comparison is exact on the real values, whatever the types. It is a weak order: equal numbers
/// can be of different types.
///
/// Values are copied with everything they hold; distinct ones may be used from any thread.
/// Numbers of one binary-point type of up to 63 bits are computed with in some tens of
/// nanoseconds without allocation, all others with integers of any width.
class VORM_ASSESSMENTS_EXPORT FixedPoint {
public:
    /// The value of the type that `math` gives for a real number. Infinities saturate. Throws
    /// std::invalid_argument for NaN, and for an infinity when `math` wraps.
    explicit FixedPoint(double value, const NumericTypeDescriptor& descriptor = {},
                        const FixedPointMath& math = FixedPointMath::global());

    /// A number of the type and the math of another value; throws as the constructor does.
    static FixedPoint fromDouble(double value, const FixedPoint& like) {
        return FixedPoint(value, like.descriptor_, like.math_);
    }

    /// The number of a stored integer in decimal, as storedInteger gives it: digits, perhaps with a
    /// minus sign before them. Throws std::invalid_argument for any other text and for an integer
    /// that the type does not store.
    static FixedPoint fromStored(std::string_view integer, const NumericTypeDescriptor& descriptor,
                                 const FixedPointMath& math = FixedPointMath::global());

    /// One zero of the default type, shared by the whole process. As a left operand it makes the
    /// result one of its own type: `fromDouble(0, x)` is the zero of the type of `x`.
    static const FixedPoint& zero();

    /// The nearest double, a tie to the one whose last bit is 0; infinite past the range of double.
    double toDouble() const;
    explicit operator double() const { return toDouble(); }

    /// The real value in full, in decimal without exponent: `-0.0625`, `3`.
    std::string text() const;
    /// The stored integer in decimal.
    std::string storedInteger() const;

    const NumericTypeDescriptor& descriptor() const noexcept { return descriptor_; }
    const FixedPointMath& math() const noexcept { return math_; }

    FixedPoint operator-() const;
    friend VORM_ASSESSMENTS_EXPORT FixedPoint operator+(const FixedPoint&, const FixedPoint&);
    friend VORM_ASSESSMENTS_EXPORT FixedPoint operator-(const FixedPoint&, const FixedPoint&);
    friend VORM_ASSESSMENTS_EXPORT FixedPoint operator*(const FixedPoint&, const FixedPoint&);
    friend VORM_ASSESSMENTS_EXPORT FixedPoint abs(const FixedPoint&);

    friend VORM_ASSESSMENTS_EXPORT std::weak_ordering operator<=>(const FixedPoint&,
                                                                  const FixedPoint&);
    friend bool operator==(const FixedPoint& left, const FixedPoint& right) {
        return (left <=> right) == 0;
    }

private:
    struct Exact;
    __extension__ typedef unsigned __int128 StoredBits;

    FixedPoint(StoredBits stored, const FixedPoint& like);
    FixedPoint rounded(const Exact& value) const;
    Exact exact() const;
    bool sharesShortWay(const FixedPoint& other) const;
    template <class Operation>
    FixedPoint combined(const FixedPoint& other, Operation operation) const;

    // Two's complement; the bits above the word length repeat the sign, or are 0 when unsigned.
    StoredBits stored_;
    NumericTypeDescriptor descriptor_;
    FixedPointMath math_;
};

/// The name that messages give the type of FixedPoint.
VORM_ASSESSMENTS_EXPORT std::string FixedPointClassName();

}  // namespace vorm::platform
