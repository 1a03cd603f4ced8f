#include "literal.hpp"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <charconv>
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

}  // namespace

assessments::FixedPoint fixedPointOf(std::string_view storedInteger, std::string_view text) {
    return FixedPoint::fromStored(storedInteger, descriptorOf(text));
}

}  // namespace vorm::evaluation
