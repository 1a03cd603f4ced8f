#pragma once

// Exact numbers, and decimal texts of them.

#include <boost/multiprecision/cpp_int.hpp>

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vorm::evaluation::test {

using Integer = boost::multiprecision::cpp_int;
using Rational = boost::multiprecision::cpp_rational;

inline Rational powerOfTen(int exponent) {
    const auto digits = static_cast<unsigned>(std::abs(exponent));
    const Integer power = boost::multiprecision::pow(Integer(10), digits);
    return exponent < 0 ? Rational(Integer(1), power) : Rational(power);
}

inline bool isWhole(const Rational& number) {
    return denominator(number) == 1;
}

/// Halves are rounded up.
inline Rational nearestWhole(const Rational& number) {
    const Rational up = number + Rational(1, 2);
    Integer whole = numerator(up) / denominator(up);
    if (whole > up) {
        --whole;
    }
    return Rational(whole);
}

/// What a decimal text says: `-3`, `1700000000.3`, `3.5e-7`.
inline Rational rationalOf(std::string_view text) {
    const std::size_t e = text.find_first_of("eE");
    int exponent = e == std::string_view::npos ? 0 : std::stoi(std::string(text.substr(e + 1)));
    std::string digits;
    bool isFraction = false;
    for (const char c : text.substr(0, e)) {
        if (c == '.' && !isFraction) {
            isFraction = true;
        } else if ((c >= '0' && c <= '9') || (c == '-' && digits.empty())) {
            digits += c;
            exponent -= isFraction ? 1 : 0;
        } else {
            throw std::invalid_argument("no decimal number: " + std::string(text));
        }
    }
    // A leading zero would make the rest octal.
    const bool isNegative = digits.starts_with('-');
    const std::size_t first = digits.find_first_not_of("-0");
    const Integer magnitude(first == std::string::npos ? "0" : digits.substr(first));
    return Rational(isNegative ? -magnitude : magnitude) * powerOfTen(exponent);
}

/// The digits of a finite decimal fraction, with at least `places` after the point. Nothing for
/// numbers such as 1/3.
inline std::optional<std::string> decimal(const Rational& number, int places = 0) {
    constexpr int mostPlaces = 40;
    int needed = 0;
    while (!isWhole(number * powerOfTen(needed))) {
        if (++needed > mostPlaces) {
            return std::nullopt;
        }
    }
    needed = std::max(needed, places);
    const Rational scaled = abs(number) * powerOfTen(needed);
    std::string digits = numerator(scaled).str();
    const auto width = static_cast<std::size_t>(needed);
    if (digits.size() <= width) {
        digits.insert(0, width + 1 - digits.size(), '0');
    }
    if (width > 0) {
        digits.insert(digits.size() - width, ".");
    }
    return (number < 0 ? "-" : "") + digits;
}

/// For messages: the decimal digits, or a fraction.
inline std::string shown(const Rational& number) {
    return decimal(number).value_or(number.str());
}

}  // namespace vorm::evaluation::test
