#include "fixed_point.hpp"

#include <boost/multiprecision/cpp_int.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>

namespace vorm::platform {
namespace {

// Every real value here is an integer times a power of two, so that all arithmetic is on integers:
// of any width in general, of 128 bits on the short way.
using boost::multiprecision::cpp_int;
__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 StoredBits;

constexpr int doubleBits = std::numeric_limits<double>::digits;
constexpr int smallestDoubleExponent = std::numeric_limits<double>::min_exponent - doubleBits;
constexpr FixedPointMath nearestEven(RoundingMode::Convergent, OverflowMode::Saturate);

struct SplitDouble {
    std::int64_t significand;
    int exponent;
};

SplitDouble split(double finite) {
    int exponent = 0;
    const double fraction = std::frexp(finite, &exponent);
    return {static_cast<std::int64_t>(std::ldexp(fraction, doubleBits)), exponent - doubleBits};
}

template <class Integer>
Integer roundedQuotient(const Integer& numerator, const Integer& positiveDenominator,
                        const FixedPointMath& math) {
    Integer floor = numerator / positiveDenominator;
    Integer remainder = numerator % positiveDenominator;
    if (remainder == 0) {
        return floor;
    }
    if (remainder < 0) {
        floor -= 1;
        remainder += positiveDenominator;
    }
    const Integer rest = positiveDenominator - remainder;
    const auto distanceToHalf = remainder < rest   ? std::strong_ordering::less
                                : remainder > rest ? std::strong_ordering::greater
                                                   : std::strong_ordering::equal;
    if (math.roundsUp(floor < 0, floor % 2 != 0, distanceToHalf)) {
        floor += 1;
    }
    return floor;
}

StoredBits lowBits(Int128 integer) {
    return static_cast<StoredBits>(integer);
}

StoredBits lowBits(const cpp_int& integer) {
    const cpp_int magnitude = abs(integer) & std::numeric_limits<StoredBits>::max();
    const auto bits = static_cast<StoredBits>(magnitude);
    return integer < 0 ? StoredBits{0} - bits : bits;
}

template <class Integer>
Integer storedValue(StoredBits stored, bool isSigned) {
    if (isSigned && static_cast<Int128>(stored) < 0) {
        return -Integer(StoredBits{0} - stored);
    }
    return Integer(stored);
}

StoredBits wrapped(StoredBits bits, const NumericTypeDescriptor& descriptor) {
    const int unused = NumericTypeDescriptor::largestWordLength - descriptor.wordLength();
    const StoredBits raised = bits << unused;
    return descriptor.isSigned() ? lowBits(static_cast<Int128>(raised) >> unused)
                                 : raised >> unused;
}

StoredBits endOfRange(const NumericTypeDescriptor& descriptor, bool lower) {
    const int unused = NumericTypeDescriptor::largestWordLength - descriptor.wordLength();
    const StoredBits allOnes = ~StoredBits{0} >> unused;
    if (!descriptor.isSigned()) {
        return lower ? StoredBits{0} : allOnes;
    }
    const StoredBits largest = allOnes >> 1;
    return lower ? ~largest : largest;
}

template <class Integer>
StoredBits fitted(const Integer& wanted, const NumericTypeDescriptor& descriptor,
                  const FixedPointMath& math) {
    const StoredBits kept = wrapped(lowBits(wanted), descriptor);
    if (math.overflow() == OverflowMode::Wrap ||
        storedValue<Integer>(kept, descriptor.isSigned()) == wanted) {
        return kept;
    }
    return endOfRange(descriptor, wanted < 0);
}

// On the short way stored integers fit 64 signed bits, their products 127.
bool isShort(const NumericTypeDescriptor& descriptor) {
    return descriptor.scaling() == NumericScaling::BinaryPoint &&
           descriptor.wordLength() <= (descriptor.isSigned() ? 64 : 63);
}

bool isShortShift(int shift) {
    return shift <= 0 && shift >= -120;
}

Int128 shifted(Int128 significand, int shift, const FixedPointMath& math) {
    return roundedQuotient(significand, Int128{1} << -shift, math);
}

// The integer of a text, unless that is none or longer than any that is stored.
std::optional<cpp_int> writtenInteger(std::string_view text) {
    constexpr std::size_t mostDigits = std::numeric_limits<StoredBits>::digits10 + 1;
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative ? 1 : 0);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    if (text.size() > mostDigits) {
        return std::nullopt;
    }
    cpp_int magnitude = 0;
    for (const char digit : text) {
        magnitude = magnitude * 10 + (digit - '0');
    }
    return isNegative ? cpp_int(-magnitude) : magnitude;
}

StoredBits storedInfinity(double value, const NumericTypeDescriptor& descriptor,
                          const FixedPointMath& math) {
    if (std::isnan(value)) {
        throw std::invalid_argument("Fixed-point type " + descriptor.text() +
                                    " has no NaN; leave the sample out or give a number.");
    }
    if (math.overflow() == OverflowMode::Wrap) {
        throw std::invalid_argument("Fixed-point type " + descriptor.text() +
                                    " cannot wrap an infinity; give a finite number or saturate.");
    }
    return endOfRange(descriptor, value < 0);
}

}  // namespace

/// significand * 2^exponent
struct FixedPoint::Exact {
    cpp_int significand;
    int exponent;

    static Exact of(double finite) {
        const SplitDouble parts = split(finite);
        return {cpp_int(parts.significand), parts.exponent};
    }
    static Exact stepOf(const NumericTypeDescriptor& descriptor) {
        const SplitDouble slope = split(descriptor.slope());
        return {cpp_int(slope.significand), slope.exponent - descriptor.fractionLength()};
    }

    Exact operator-() const { return {-significand, exponent}; }
    Exact operator*(const Exact& other) const {
        return {significand * other.significand, exponent + other.exponent};
    }
    Exact operator+(const Exact& other) const {
        const int common = std::min(exponent, other.exponent);
        return {alignedTo(common) + other.alignedTo(common), common};
    }
    Exact operator-(const Exact& other) const { return *this + -other; }

    cpp_int alignedTo(int smallerExponent) const {
        return significand << (exponent - smallerExponent);
    }
    cpp_int dividedBy(const Exact& positive, const FixedPointMath& math) const {
        const int common = std::min(exponent, positive.exponent);
        return roundedQuotient(alignedTo(common), positive.alignedTo(common), math);
    }

    double nearestDouble() const;
    std::string text() const;
};

double FixedPoint::Exact::nearestDouble() const {
    if (significand == 0) {
        return 0;
    }
    const cpp_int magnitude = abs(significand);
    const int bits = static_cast<int>(msb(magnitude)) + 1;
    const int lastBit = std::max(exponent + bits - doubleBits, smallestDoubleExponent);
    const cpp_int kept = dividedBy({1, lastBit}, nearestEven);
    return std::ldexp(static_cast<double>(static_cast<std::int64_t>(kept)), lastBit);
}

std::string FixedPoint::Exact::text() const {
    if (exponent >= 0 || significand == 0) {
        return cpp_int(alignedTo(std::min(exponent, 0))).str();
    }
    const cpp_int magnitude = abs(significand);
    const int trailingZeros = std::min(static_cast<int>(lsb(magnitude)), -exponent);
    const auto places = static_cast<unsigned>(-exponent - trailingZeros);
    // n / 2^k is n * 5^k / 10^k
    std::string digits = cpp_int((magnitude >> trailingZeros) * pow(cpp_int(5), places)).str();
    if (places > 0) {
        digits.insert(0, digits.size() > places ? 0 : places + 1 - digits.size(), '0');
        digits.insert(digits.size() - places, ".");
    }
    return significand < 0 ? "-" + digits : digits;
}

FixedPoint::FixedPoint(double value, const NumericTypeDescriptor& descriptor,
                       const FixedPointMath& math)
    : stored_(0), descriptor_(descriptor), math_(math) {
    if (!std::isfinite(value)) {
        stored_ = storedInfinity(value, descriptor, math);
        return;
    }
    const SplitDouble parts = split(value);
    const int shift = parts.exponent + descriptor.fractionLength();
    if (isShort(descriptor) && isShortShift(shift)) {
        stored_ = fitted(shifted(parts.significand, shift, math), descriptor, math);
    } else {
        stored_ = rounded(Exact::of(value)).stored_;
    }
}

FixedPoint::FixedPoint(StoredBits stored, const FixedPoint& like)
    : stored_(stored), descriptor_(like.descriptor_), math_(like.math_) {}

FixedPoint FixedPoint::fromStored(std::string_view integer, const NumericTypeDescriptor& descriptor,
                                  const FixedPointMath& math) {
    const auto wanted = writtenInteger(integer);
    const StoredBits stored = wanted ? wrapped(lowBits(*wanted), descriptor) : 0;
    if (!wanted || storedValue<cpp_int>(stored, descriptor.isSigned()) != *wanted) {
        throw std::invalid_argument(std::string(integer) + " is no stored integer of " +
                                    descriptor.text() + ".");
    }
    return {stored, FixedPoint(0, descriptor, math)};
}

const FixedPoint& FixedPoint::zero() {
    static const FixedPoint shared(0);
    return shared;
}

FixedPoint FixedPoint::rounded(const Exact& value) const {
    const Exact unbiased = descriptor_.bias() == 0 ? value : value - Exact::of(descriptor_.bias());
    const cpp_int quotient = unbiased.dividedBy(Exact::stepOf(descriptor_), math_);
    return {fitted(quotient, descriptor_, math_), *this};
}

FixedPoint::Exact FixedPoint::exact() const {
    const Exact stored{storedValue<cpp_int>(stored_, descriptor_.isSigned()), 0};
    const Exact unbiased = stored * Exact::stepOf(descriptor_);
    return descriptor_.bias() == 0 ? unbiased : unbiased + Exact::of(descriptor_.bias());
}

bool FixedPoint::sharesShortWay(const FixedPoint& other) const {
    return isShort(descriptor_) && descriptor_ == other.descriptor_;
}

template <class Operation>
FixedPoint FixedPoint::combined(const FixedPoint& other, Operation operation) const {
    if (!sharesShortWay(other)) {
        return rounded(operation(exact(), other.exact()));
    }
    const Int128 result =
        operation(static_cast<Int128>(stored_), static_cast<Int128>(other.stored_));
    return {fitted(result, descriptor_, math_), *this};
}

double FixedPoint::toDouble() const {
    constexpr Int128 exactInDouble = Int128{1} << doubleBits;
    const auto stored = static_cast<Int128>(stored_);
    if (isShort(descriptor_) && stored >= -exactInDouble && stored <= exactInDouble) {
        return std::ldexp(static_cast<double>(stored), -descriptor_.fractionLength());
    }
    return exact().nearestDouble();
}

std::string FixedPoint::text() const {
    return exact().text();
}

std::string FixedPoint::storedInteger() const {
    return storedValue<cpp_int>(stored_, descriptor_.isSigned()).str();
}

FixedPoint FixedPoint::operator-() const {
    return combined(*this, [](const auto& value, const auto&) { return -value; });
}

FixedPoint operator+(const FixedPoint& left, const FixedPoint& right) {
    return left.combined(right, std::plus<>());
}

FixedPoint operator-(const FixedPoint& left, const FixedPoint& right) {
    return left.combined(right, std::minus<>());
}

FixedPoint operator*(const FixedPoint& left, const FixedPoint& right) {
    const int shift = -left.descriptor_.fractionLength();
    if (!left.sharesShortWay(right) || !isShortShift(shift)) {
        return left.rounded(left.exact() * right.exact());
    }
    const Int128 product = static_cast<Int128>(left.stored_) * static_cast<Int128>(right.stored_);
    const Int128 quotient = shifted(product, shift, left.math_);
    return {fitted(quotient, left.descriptor_, left.math_), left};
}

FixedPoint abs(const FixedPoint& value) {
    return value < FixedPoint::zero() ? -value : value;
}

std::weak_ordering operator<=>(const FixedPoint& left, const FixedPoint& right) {
    if (left.descriptor_ != right.descriptor_) {
        return (left.exact() - right.exact()).significand.sign() <=> 0;
    }
    // A slope is positive: values of one type are in the order of their stored integers.
    if (left.descriptor_.isSigned()) {
        return static_cast<Int128>(left.stored_) <=> static_cast<Int128>(right.stored_);
    }
    return left.stored_ <=> right.stored_;
}

std::string FixedPointClassName() {
    return "fixedpoint";
}

}  // namespace vorm::platform
