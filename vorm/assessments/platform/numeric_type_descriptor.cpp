#include "numeric_type_descriptor.hpp"

#include "fixed_point.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace vorm::platform {
namespace {

// The shortest text that reads back as the same double.
std::string shortest(double value) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

std::string shortest(int value) {
    return std::to_string(value);
}

template <class Number>
void require(bool holds, const char* name, Number value, const char* remedy) {
    if (!holds) {
        throw std::invalid_argument("Fixed-point type: the " + std::string(name) + " " +
                                    shortest(value) + " cannot be used; " + remedy + ".");
    }
}

double nearestEnd(const NumericTypeDescriptor& descriptor, double infinity) {
    const FixedPointMath saturating(RoundingMode::Nearest, OverflowMode::Saturate);
    return FixedPoint(infinity, descriptor, saturating).toDouble();
}

}  // namespace

NumericTypeDescriptor::NumericTypeDescriptor(NumericScaling scaling, Signedness signedness,
                                             int wordLength, double slope, int fractionLength,
                                             double bias)
    : scaling_(scaling),
      signedness_(signedness),
      wordLength_(wordLength),
      fractionLength_(fractionLength),
      slope_(slope),
      bias_(bias + 0.0) {  // makes a negative zero positive: it has a text of its own
    const bool binaryPoint = scaling == NumericScaling::BinaryPoint;
    require(wordLength >= 1 && wordLength <= largestWordLength, "word length", wordLength,
            "give 1 to 128 bits");
    require(fractionLength >= -largestFractionLength && fractionLength <= largestFractionLength,
            "fraction length", fractionLength, "give -2048 to 2048 bits");
    require(std::isfinite(slope) && slope > 0, "slope", slope, "give a finite number above zero");
    require(std::isfinite(bias), "bias", bias, "give a finite number");
    require(!binaryPoint || slope == 1, "slope", slope,
            "give 1, or choose the scaling by slope and bias");
    require(!binaryPoint || bias == 0, "bias", bias,
            "give 0, or choose the scaling by slope and bias");
}

double NumericTypeDescriptor::minimum() const {
    return nearestEnd(*this, -std::numeric_limits<double>::infinity());
}

double NumericTypeDescriptor::maximum() const {
    return nearestEnd(*this, std::numeric_limits<double>::infinity());
}

std::string NumericTypeDescriptor::text() const {
    std::string text(1, isSigned() ? 's' : 'u');
    text += shortest(wordLength_);
    text += 'f';
    text += shortest(fractionLength_);
    if (scaling_ == NumericScaling::SlopeAndBias) {
        text += '*';
        text += shortest(slope_);
        text += bias_ < 0 ? "" : "+";
        text += shortest(bias_);
    }
    return text;
}

}  // namespace vorm::platform
