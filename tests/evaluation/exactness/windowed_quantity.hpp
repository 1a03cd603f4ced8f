#pragma once

// Numbers over windows of time: extremes, integrals, means, lengths and counts of truth. A window
// is closed and lies from t + a to t + b.

#include "quantity.hpp"

#include <functional>
#include <vector>

namespace vorm::evaluation::test {

/// The ends of a window, the times within it at which something happens, and one between any two.
inline Times lookedAt(const Times& events, const Rational& first, const Rational& last) {
    Times times{first, last};
    for (const Rational& event : events) {
        if (first < event && event < last) {
            times.push_back(event);
        }
    }
    sortOut(times);
    const std::size_t ends = times.size();
    for (std::size_t i = 1; i < ends; ++i) {
        times.push_back(timeBefore(times, i));
    }
    sortOut(times);
    return times;
}

/// Whether the least is meant, or the greatest.
enum class Extreme { Least, Greatest };

inline Reading better(Extreme extreme, const Reading& x, const Reading& y) {
    if (x.kind != Reading::Number || y.kind != Reading::Number) {
        return x.kind < y.kind ? x : y;
    }
    const bool isFirst = extreme == Extreme::Least ? x.number <= y.number : x.number >= y.number;
    Reading result = isFirst ? x : y;
    result.isInterpolated = x.isInterpolated || y.isInterpolated;
    return result;
}

inline Quantity extreme(Extreme which, const Quantity& x, const Quantity& y) {
    return {meetings(x, y),
            [=](const Rational& time) { return better(which, x.at(time), y.at(time)); }};
}

/// Of what has no jumps but those of a held number.
inline Quantity extremeWithin(Extreme which, const Rational& a, const Rational& b,
                              const Quantity& x) {
    const Quantity first = shifted(x, a);
    const Quantity last = shifted(x, b);
    Times events = meetings(first, last);
    for (const Rational& event : x.events) {
        const Quantity extremum = constantQuantity(x.at(event).number);
        events = joined(events, crossings({events, first.at}, extremum));
        events = joined(events, crossings({events, last.at}, extremum));
    }
    return {events, [=](const Rational& time) {
                Reading result = x.at(time + a);
                for (const Rational& each : lookedAt(x.events, time + a, time + b)) {
                    result = better(which, result, x.at(each));
                }
                return result;
            }};
}

/// Of a held number without NaN.
inline Quantity integral(const Rational& a, const Rational& b, const Quantity& x) {
    const Times events = moved(x.events, {-a, -b});
    const auto at = [=](const Rational& time) {
        const Times times = lookedAt(x.events, time + a, time + b);
        Rational area = 0;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const Reading reading = x.at(times[i]);
            if (reading.kind != Reading::Number) {
                return Reading{};
            }
            if (i % 2 == 1) {
                area += reading.number * (times[i + 1] - times[i - 1]);
            }
        }
        const bool isBetween = !std::binary_search(events.begin(), events.end(), time);
        const bool isLevel = x.at(time + a).number == x.at(time + b).number;
        return Reading{Reading::Number, area, isBetween && !isLevel};
    };
    return {events, at, true};
}

/// One where p is true, and none where it is false.
inline Quantity numberOf(const TruthCourse& p) {
    return {p.events, [=](const Rational& time) {
                const Truth truth = p.valueAt(time);
                return truth == Open ? Reading{} : numberReading(truth == True ? 1 : 0);
            }};
}

inline Quantity duration(const Rational& a, const Rational& b, const TruthCourse& p) {
    return integral(a, b, numberOf(p));
}

/// The number of stretches in which p is true.
inline Quantity count(const Rational& a, const Rational& b, const TruthCourse& p) {
    return {moved(p.events, {-a, -b}), [=](const Rational& time) {
                if (!spansOf(p, Open, time + a, time + b).empty()) {
                    return Reading{};
                }
                return numberReading(spansOf(p, True, time + a, time + b).size());
            }};
}

/// True where a number without NaN is another one than just before; not at its first sample.
inline TruthCourse change(const Quantity& x, const Rational& start) {
    return tabulated(x.events, [&](const Rational& time) {
        const Reading now = x.at(time);
        const Reading before = x.at(time - powerOfTen(-9));
        if (now.kind == Reading::Unknown) {
            return Open;
        }
        if (time == start) {
            return False;
        }
        if (before.kind == Reading::Unknown) {
            return Open;
        }
        return now.number == before.number ? False : True;
    });
}

}  // namespace vorm::evaluation::test
