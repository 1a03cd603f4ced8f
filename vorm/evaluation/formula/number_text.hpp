#pragma once

// Numbers as formulas write them: their exact decimal meaning, and the nearest binary number.

#include <cstdint>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The number digits * 10^exponent in full. Zero has no digits; no number has a zero at either end.
struct Decimal {
    bool isNegative = false;
    std::string digits;
    std::int64_t exponent = 0;

    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// What a number's text says, as `-12.50e3`. Of a text that is no finite number anything.
Decimal decimalOf(std::string_view text);

/// The nearest double or float to a number's text, infinite past its range; also of `nan`, `inf`
/// and `-inf`.
template <class T>
T nearestNumber(std::string_view text);

/// Whether a number is written with digits only, that is, without point and exponent.
bool isWrittenWhole(std::string_view text);

}  // namespace vorm::evaluation
