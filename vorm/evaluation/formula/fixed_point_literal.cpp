#include "literal.hpp"
#include "number_text.hpp"

#include <fast_float/fast_float.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace vorm::evaluation {
namespace {

using assessments::FixedPoint;
using platform::NumericScaling;
using platform::NumericTypeDescriptor;
using platform::Signedness;

template <class Number>
void take(std::string_view& text, Number& number) {
    const char* end = text.data() + text.size();
    const char* stop = text.data();
    if constexpr (std::is_integral_v<Number>) {
        stop = std::from_chars(text.data(), end, number).ptr;
    } else {
        stop = fast_float::from_chars(text.data(), end, number).ptr;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
}

void skip(std::string_view& text, std::size_t characters) {
    text.remove_prefix(std::min(characters, text.size()));
}

// Reads leniently; that the type has the same text again shows what does not belong.
NumericTypeDescriptor descriptorOf(std::string_view text) {
    std::string_view rest = text;
    int wordLength = 0;
    int fractionLength = 0;
    double slope = 1;
    double bias = 0;
    const auto signedness = rest.starts_with('s') ? Signedness::Signed : Signedness::Unsigned;
    const auto scaling = rest.find('*') == std::string_view::npos ? NumericScaling::BinaryPoint
                                                                  : NumericScaling::SlopeAndBias;
    skip(rest, 1);
    take(rest, wordLength);
    skip(rest, 1);
    take(rest, fractionLength);
    if (scaling == NumericScaling::SlopeAndBias) {
        skip(rest, 1);
        take(rest, slope);
        skip(rest, rest.starts_with('+') ? 1 : 0);
        take(rest, bias);
    }
    const NumericTypeDescriptor type(scaling, signedness, wordLength, slope, fractionLength, bias);
    if (type.text() != text) {
        throw std::invalid_argument("'" + std::string(text) + "' is no fixed-point type");
    }
    return type;
}

// The number of the stored integer 1 or -1. A type's step can be far below every double, but its
// largest number times one part in as many as it has rounds to the step.
FixedPoint unitOf(const NumericTypeDescriptor& unbiased, bool isNegative) {
    const double infinity = std::numeric_limits<double>::infinity();
    const int valueBits = unbiased.wordLength() - (unbiased.isSigned() ? 1 : 0);
    const NumericTypeDescriptor oneBit(NumericScaling::BinaryPoint, Signedness::Unsigned, 1, 1,
                                       valueBits, 0);
    return FixedPoint(isNegative ? -infinity : infinity, unbiased) *
           FixedPoint(std::ldexp(1.0, -valueBits), oneBit);
}

FixedPoint timesTen(const FixedPoint& number) {
    const FixedPoint twice = number + number;
    const FixedPoint fourTimes = twice + twice;
    return fourTimes + fourTimes + twice;
}

}  // namespace

assessments::FixedPoint fixedPointOf(std::string_view storedInteger, std::string_view text) {
    const NumericTypeDescriptor type = descriptorOf(text);
    const NumericTypeDescriptor unbiased(type.scaling(), type.signedness(), type.wordLength(),
                                         type.slope(), type.fractionLength(), 0);
    const Decimal number = decimalOf(storedInteger);
    const std::string digits =
        number.digits + std::string(number.exponent > 0 && number.exponent < 40
                                        ? static_cast<std::size_t>(number.exponent)
                                        : 0,
                                    '0');
    const FixedPoint unit = unitOf(unbiased, number.isNegative);
    FixedPoint sum(0, unbiased);
    for (std::size_t digit = 0; digit < std::min<std::size_t>(digits.size(), 40); ++digit) {
        sum = timesTen(sum);
        for (char count = '0'; count < digits[digit]; ++count) {
            sum = sum + unit;
        }
    }
    // A sum past the range saturated on the way.
    if (!isWrittenWhole(storedInteger) || decimalOf(sum.storedInteger()) != number) {
        throw std::invalid_argument(std::string(storedInteger) + " is no stored integer of " +
                                    std::string(text));
    }
    return FixedPoint(type.bias(), type) + sum;
}

}  // namespace vorm::evaluation
