#pragma once

// Numbers over the whole real line: what they are at any time, and the times between which they run
// straight, or are no number or not known throughout.

#include "truth_course.hpp"

#include <functional>
#include <optional>
#include <string>

namespace vorm::evaluation::test {

struct Reading {
    enum Kind { Unknown, NotANumber, Number } kind = Unknown;
    Rational number = 0;
    bool isInterpolated = false;  ///< read between two samples of a line that is not level
};

inline Reading numberReading(const Rational& number) {
    return {Reading::Number, number};
}

struct Quantity {
    Times events;
    std::function<Reading(const Rational&)> at;
    bool isRounded =
        false;  ///< a computed line: where it meets others, floating-point numbers round
};

struct Sample {
    Rational time;
    std::optional<int> value;  ///< nothing: NaN
};

/// What a recording says of a signal.
struct Samples {
    std::vector<Sample> samples;  ///< in strictly increasing time, at least one
    bool isLinear = false;
    std::optional<Rational> maxGap;  ///< neighbours that are further apart have a hole between them

    Reading readingAt(const Rational& time) const {
        const auto next = std::upper_bound(
            samples.begin(), samples.end(), time,
            [](const Rational& t, const Sample& sample) { return t < sample.time; });
        if (next == samples.begin()) {
            return {};
        }
        const Sample& last = *std::prev(next);
        if (last.time == time) {
            return last.value ? numberReading(*last.value) : Reading{Reading::NotANumber};
        }
        if (next == samples.end() || (maxGap && next->time - last.time > *maxGap)) {
            return {};
        }
        if (!last.value || (isLinear && !next->value)) {
            return {Reading::NotANumber};
        }
        if (!isLinear || *next->value == *last.value) {
            return numberReading(*last.value);
        }
        const Rational share = (time - last.time) / (next->time - last.time);
        return {Reading::Number, *last.value + share * (*next->value - *last.value), true};
    }

    Quantity quantity() const {
        Times events;
        for (const Sample& sample : samples) {
            events.push_back(sample.time);
        }
        return {events, [*this](const Rational& time) { return readingAt(time); }};
    }
};

/// The recorded quantity where it is known, and the filling elsewhere.
inline Quantity completed(const Quantity& recorded, const Quantity& filling) {
    return {joined(recorded.events, filling.events), [=](const Rational& time) {
                const Reading reading = recorded.at(time);
                return reading.kind == Reading::Unknown ? filling.at(time) : reading;
            }};
}

inline Quantity constantQuantity(const Rational& number) {
    return {{}, [=](const Rational&) { return numberReading(number); }};
}

inline Quantity shifted(const Quantity& x, const Rational& distance) {
    return {moved(x.events, {-distance}),
            [=](const Rational& time) { return x.at(time + distance); }};
}

inline Quantity scaled(const Rational& factor, const Quantity& x) {
    return {x.events,
            [=](const Rational& time) {
                const Reading reading = x.at(time);
                return Reading{reading.kind, factor * reading.number, reading.isInterpolated};
            },
            x.isRounded};
}

inline Quantity sum(const Quantity& x, const Quantity& y) {
    return {joined(x.events, y.events), [=](const Rational& time) {
                const Reading left = x.at(time);
                const Reading right = y.at(time);
                return Reading{std::min(left.kind, right.kind), left.number + right.number,
                               left.isInterpolated || right.isInterpolated};
            }};
}

inline Quantity product(const Quantity& x, const Quantity& y) {
    return {joined(x.events, y.events), [=](const Rational& time) {
                const Reading left = x.at(time);
                const Reading right = y.at(time);
                return Reading{std::min(left.kind, right.kind), left.number * right.number,
                               left.isInterpolated || right.isInterpolated};
            }};
}

/// No number where y is 0.
inline Quantity quotient(const Quantity& x, const Quantity& y) {
    return product(x, {y.events, [=](const Rational& time) {
                           Reading divisor = y.at(time);
                           if (divisor.kind == Reading::Number && divisor.number == 0) {
                               divisor.kind = Reading::NotANumber;
                           } else if (divisor.kind == Reading::Number) {
                               divisor.number = 1 / divisor.number;
                           }
                           return divisor;
                       }});
}

/// The times at which two quantities meet within a stretch on which both run straight.
inline Times crossings(const Quantity& x, const Quantity& y) {
    const Times events = joined(x.events, y.events);
    const auto distance = [&](const Rational& time) -> std::optional<Rational> {
        const Reading left = x.at(time);
        const Reading right = y.at(time);
        if (std::min(left.kind, right.kind) != Reading::Number) {
            return std::nullopt;
        }
        return left.number - right.number;
    };
    Times result;
    for (std::size_t i = 1; i < events.size(); ++i) {
        const Rational third = (events[i] - events[i - 1]) / 3;
        const auto early = distance(events[i - 1] + third);
        const auto late = distance(events[i] - third);
        if (early && late && *early != *late) {
            const Rational meeting = events[i - 1] + third + *early * third / (*early - *late);
            if (events[i - 1] < meeting && meeting < events[i]) {
                result.push_back(meeting);
            }
        }
    }
    return result;
}

inline Quantity absolute(const Quantity& x) {
    return {joined(x.events, crossings(x, constantQuantity(0))), [=](const Rational& time) {
                const Reading reading = x.at(time);
                return Reading{reading.kind, abs(reading.number), reading.isInterpolated};
            }};
}

enum class Relation { Less, LessEqual, Greater, GreaterEqual, Equal, Unequal };

inline bool holds(Relation relation, const Rational& left, const Rational& right) {
    switch (relation) {
        case Relation::Less:
            return left < right;
        case Relation::LessEqual:
            return left <= right;
        case Relation::Greater:
            return left > right;
        case Relation::GreaterEqual:
            return left >= right;
        case Relation::Equal:
            return left == right;
        default:
            return left != right;
    }
}

inline Truth related(Relation relation, const Reading& left, const Reading& right) {
    switch (std::min(left.kind, right.kind)) {
        case Reading::Unknown:
            return Open;
        case Reading::NotANumber:
            return relation == Relation::Unequal ? True : False;
        default:
            return holds(relation, left.number, right.number) ? True : False;
    }
}

/// The times at which the comparison of two quantities can change.
inline Times meetings(const Quantity& x, const Quantity& y) {
    return joined(joined(x.events, y.events), crossings(x, y));
}

inline TruthCourse comparison(const Quantity& x, Relation relation, const Quantity& y) {
    return tabulated(meetings(x, y), [&](const Rational& time) {
        return related(relation, x.at(time), y.at(time));
    });
}

}  // namespace vorm::evaluation::test
