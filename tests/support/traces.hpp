#pragma once

// Traces as short literals, and readable differences between traces.

#include "support/numbers.hpp"

#include <vorm/assessments/trace/timed_trace.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>

namespace vorm::assessments {

template <class T>
void writeValue(std::ostream& out, const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        out << (value ? "true" : "false");
    } else if constexpr (std::is_same_v<T, Verdict>) {
        out << static_cast<int>(value.get());
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        out << value.get().text();
    } else if constexpr (std::is_same_v<T, HalfFloat>) {
        out << value;
    } else {
        out << +value;
    }
}

template <class T>
void PrintTo(const TimedTrace_T<T>& trace, std::ostream* out) {
    out->precision(std::numeric_limits<double>::max_digits10);
    *out << (trace.interpolation == INTERPOLATION_METHOD::ZOH ? "held" : "linear");
    for (const TimedPoint<T>& point : trace.points) {
        *out << ' ' << point.time << ':';
        writeValue(*out, point.value);
        if (point.derivative != 0) {
            *out << '/' << point.derivative;
        }
    }
    *out << " known " << trace.lastKnownTime;
}

}  // namespace vorm::assessments

namespace vorm::test {

using namespace vorm::assessments;

/// The neighbours of a representable time.
inline double after(double time) {
    return std::nextafter(time, infinity);
}
inline double before(double time) {
    return std::nextafter(time, -infinity);
}

inline constexpr auto held = INTERPOLATION_METHOD::ZOH;
inline constexpr auto linear = INTERPOLATION_METHOD::LINEAR;

template <class T>
T valueOf(double number) {
    if constexpr (std::is_same_v<T, Verdict>) {
        return Verdict(static_cast<resultEnum_t>(static_cast<int>(number)));
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return T(FixedPoint(number));
    } else {
        return static_cast<T>(number);
    }
}

/// A trace of samples "time:value time:value ...", pushed one by one; `known` after them if given.
template <class T = double>
TimedTrace_T<T> trace(INTERPOLATION_METHOD method, const std::string& samples, double known = nan) {
    TimedTrace_T<T> result(method, -infinity);
    std::istringstream in(samples);
    std::string time;
    std::string value;
    while (std::getline(in >> std::ws, time, ':') && in >> value) {
        result.push_back({std::stod(time), valueOf<T>(std::stod(value))});
    }
    if (known == known) {
        result.lastKnownTime = known;
    }
    return result;
}

template <class T = double>
TimedTrace_T<T> trace(const std::string& samples, double known = nan) {
    return trace<T>(held, samples, known);
}

inline bool sameNumber(double a, double b) {
    return a == b || (a != a && b != b);
}

/// Whether two traces are the same in every field; NaNs are equal.
template <class T>
testing::AssertionResult same(const TimedTrace_T<T>& actual, const TimedTrace_T<T>& expected) {
    bool equal = actual.interpolation == expected.interpolation &&
                 sameNumber(actual.lastKnownTime, expected.lastKnownTime) &&
                 actual.enumTypeName == expected.enumTypeName &&
                 actual.points.size() == expected.points.size();
    for (std::size_t i = 0; equal && i < actual.points.size(); ++i) {
        const auto& a = actual.points[i];
        const auto& e = expected.points[i];
        equal = sameNumber(a.time, e.time) && support::sameValue(a.value, e.value) &&
                sameNumber(a.derivative, e.derivative);
    }
    if (equal) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "\n  actual:   " << testing::PrintToString(actual)
                                       << "\n  expected: " << testing::PrintToString(expected);
}

}  // namespace vorm::test
