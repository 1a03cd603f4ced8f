#pragma once

// What formulas are evaluated on, and the freedom that an engine has which counts in floating-point
// numbers: where lines meet between two ticks, the time of the meeting may be off by a little. A
// requirement whose outcome hangs on that is found by moving all such meetings at random.

#include "quantity.hpp"

#include <cstdint>
#include <map>
#include <string>

namespace vorm::evaluation::test {

struct World {
    std::map<std::string, Quantity> signals;
    /// What of it was recorded, where the rest is a completion.
    const World* recorded = nullptr;
    /// Moves the meetings of lines that are between ticks; 0 does not.
    std::uint64_t inaccuracy = 0;
    /// Whether until counts time in steps, and since does not.
    bool isStepwise = false;
    /// Set by an evaluation in which an inaccuracy could change something.
    mutable bool isDelicate = false;

    /// A number from 0 to 999 that belongs to the text.
    int chance(const std::string& text) const {
        const std::string seeded = text + '#' + std::to_string(inaccuracy);
        return static_cast<int>(std::hash<std::string>()(seeded) % 1000);
    }

    /// 1 or -1: the latter for all texts at first, then the former, then either.
    int side(const std::string& text) const {
        return inaccuracy == 1 || (inaccuracy > 2 && chance(text) % 2 == 0) ? -1 : 1;
    }

    Rational lengthOfMoment(const std::string& edge) const {
        return inaccuracy == 0 ? moment : moment * (1 + chance(edge));
    }
};

/// The greatest distance by which an inaccuracy moves a meeting, in ticks; meetings that differ are
/// much further apart.
inline const Rational inaccurateBy = powerOfTen(-12);

/// Whether two quantities are equal at a time, and do not just cross there: numbers that are
/// interpolated may then come out as different.
inline bool isBlurred(const Quantity& x, const Quantity& y, const Rational& time) {
    const Reading left = x.at(time);
    const Reading right = y.at(time);
    if (left.kind != Reading::Number || right.kind != Reading::Number ||
        left.number != right.number || !(left.isInterpolated || right.isInterpolated)) {
        return false;
    }
    const auto side = [&](const Rational& at) {
        return Rational(x.at(at).number - y.at(at).number).sign();
    };
    const Rational beside = powerOfTen(-9);
    return side(time - beside) * side(time + beside) >= 0;
}

/// A comparison as an engine may see it. The same two quantities meet at the same time in every
/// comparison.
inline TruthCourse observedComparison(const World& world, const Quantity& x, Relation relation,
                                      const Quantity& y, const std::string& quantities) {
    const auto place = [&](const Rational& time) { return quantities + '@' + time.str(); };
    const Times times = meetings(x, y);
    // At ticks, all is exact but where a line that is rounded is met.
    const Times sharp = x.isRounded || y.isRounded ? joined(x.events, y.events) : times;
    const auto isTick = [&](const Rational& time) {
        return isWhole(time) && std::binary_search(sharp.begin(), sharp.end(), time);
    };
    TruthCourse course = tabulated(times, [&](const Rational& time) {
        Reading left = x.at(time);
        if (!isTick(time) && isBlurred(x, y, time)) {
            world.isDelicate = true;
            left.number += world.inaccuracy == 0 ? 0 : world.side(place(time));
        }
        return related(relation, left, y.at(time));
    });
    for (Rational& time : course.events) {
        if (!isTick(time)) {
            world.isDelicate = true;
            time += world.inaccuracy == 0 ? Rational(0)
                                          : inaccurateBy * (world.chance(place(time)) - 500) / 1000;
        }
    }
    return course;
}

inline TruthCourse observedRise(const World& world, const TruthCourse& p,
                                const std::optional<FirstKnown>& start, const std::string& edge) {
    TruthCourse course = rise(p, start, world.lengthOfMoment(edge));
    // Moments are the only reason for more events than there were.
    world.isDelicate = world.isDelicate || course.events.size() > p.events.size();
    return course;
}

/// The usual course, or the other one in a world in which until counts time the other way.
inline TruthCourse observed(const World& world, const TruthCourse& usual,
                            const TruthCourse& other) {
    world.isDelicate = world.isDelicate || usual.events != other.events || usual.at != other.at ||
                       usual.between != other.between;
    return world.isStepwise ? other : usual;
}

inline TruthCourse observedUntil(const World& world, const TruthCourse& p, const Rational& a,
                                 const Rational& b, const TruthCourse& q) {
    return observed(world, until(p, a, b, q), until(p, a, b, q, Handover::UpToTheTime));
}

inline TruthCourse observedSince(const World& world, const TruthCourse& p, const Rational& a,
                                 const Rational& b, const TruthCourse& q) {
    return observed(world, since(p, a, b, q), since(p, a, b, q, Handover::UpToTheGoal));
}

}  // namespace vorm::evaluation::test
