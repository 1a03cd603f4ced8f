#include "number_text.hpp"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <charconv>
#include <limits>

namespace vorm::evaluation {
namespace {

// Far from every number that a value type has, and far from overflow.
constexpr std::int64_t furthestExponent = 1'000'000'000'000;

std::int64_t exponentOf(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(text.starts_with('+') || isNegative ? 1 : 0);
    std::int64_t exponent = furthestExponent;
    std::from_chars(text.data(), text.data() + text.size(), exponent);
    exponent = std::min(exponent, furthestExponent);
    return isNegative ? -exponent : exponent;
}

void dropZeros(Decimal& number) {
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    while (number.digits.ends_with('0')) {
        number.digits.pop_back();
        ++number.exponent;
    }
    if (number.digits.empty()) {
        number = Decimal();
    }
}

}  // namespace

Decimal decimalOf(std::string_view text) {
    Decimal number;
    number.isNegative = text.starts_with('-');
    text.remove_prefix(number.isNegative ? 1 : 0);
    const std::size_t mantissaEnd = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, mantissaEnd);
    if (mantissaEnd < text.size()) {
        number.exponent = exponentOf(text.substr(mantissaEnd + 1));
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    number.digits = mantissa.substr(0, point);
    if (point < mantissa.size()) {
        number.digits += mantissa.substr(point + 1);
        number.exponent -= static_cast<std::int64_t>(mantissa.size() - point - 1);
    }
    dropZeros(number);
    return number;
}

template <class T>
T nearestNumber(std::string_view text) {
    T number = std::numeric_limits<T>::quiet_NaN();
    fast_float::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

template double nearestNumber<double>(std::string_view text);
template float nearestNumber<float>(std::string_view text);

bool isWrittenWhole(std::string_view text) {
    return text.find_first_not_of("0123456789", text.starts_with('-') ? 1 : 0) ==
           std::string_view::npos;
}

}  // namespace vorm::evaluation
