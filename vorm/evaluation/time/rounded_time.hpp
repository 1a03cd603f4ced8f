#pragma once

#include <vorm/evaluation/time/exact_time.hpp>

namespace vorm::evaluation {

/// More digits behind the point of seconds than a time can have.
inline constexpr int allDigits = 18;

/// The nearest time that has so many digits behind the point of seconds, halves to the later one.
constexpr ExactTime rounded(ExactTime time, int digits) {
    WideInteger unit = 1;
    for (int digit = digits; digit < allDigits; ++digit) {
        unit *= 10;
    }
    const WideInteger shifted = time.attoseconds() + unit / 2;
    const WideInteger rest = shifted % unit;
    return ExactTime(shifted - rest - (rest < 0 ? unit : 0));
}

/// How many digits behind the point of seconds a time has.
constexpr int digitsOf(ExactTime time) {
    int digits = 0;
    while (digits < allDigits && rounded(time, digits) != time) {
        ++digits;
    }
    return digits;
}

}  // namespace vorm::evaluation
