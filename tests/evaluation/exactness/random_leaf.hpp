#pragma once

// Random comparisons of numbers, and what else of a formula has no operator on truth in it.

#include "random_recording.hpp"
#include "said.hpp"
#include "windowed_quantity.hpp"

#include <vorm/evaluation/signal/held_name.hpp>

#include <string>

namespace vorm::evaluation::test {

class LeafGrower {
public:
    explicit LeafGrower(const RandomRecording& recording) : recording_(recording) {}

    std::string length(int ticks) const {
        const std::string text = anyLengthText(std::abs(ticks) * recording_.grid.tick);
        return ticks < 0 ? '-' + text : text;
    }

    std::string interval(int a, int b) const { return '[' + length(a) + ", " + length(b) + "]"; }

    template <class Course>
    Said<Course> shift(const Said<Course>& x) const {
        const int distance = anyBetween(-4, 4);
        return of<Course>("Shift[" + length(distance) + "]($)", x,
                          [=](const Course& course) { return shifted(course, distance); });
    }

    SaidTruth leaf() const {
        if (onceIn(10)) {
            return timed();
        }
        const RandomSignal& signal = anySignal();
        if (onceIn(3)) {
            return windowed(signal);
        }
        if (signal.isTruth) {
            return truthOf(signal);
        }
        if (onceIn(6)) {
            return sugared(signal);
        }
        const SaidNumber x = term(signal);
        const RandomSignal& other = anySignal();
        return related(x, onceIn(3) && !other.isTruth ? term(other) : anyLimit());
    }

private:
    const RandomSignal& anySignal() const {
        return recording_.signals[anyIndex(recording_.signals.size())];
    }

    static SaidTruth truthOf(const RandomSignal& signal) {
        return of<TruthCourse>("$", read(signal), [](const Quantity& x) {
            return comparison(x, Relation::Unequal, constantQuantity(0));
        });
    }

    static SaidTruth related(const SaidNumber& x, const SaidNumber& y) {
        return related(x, static_cast<Relation>(anyIndex(6)), y);
    }

    static SaidTruth related(const SaidNumber& x, Relation relation, const SaidNumber& y) {
        static const char* const signs[] = {"<", "<=", ">", ">=", "==", "!="};
        return of<TruthCourse>(
            x, signs[static_cast<int>(relation)], y,
            [relation, quantities = x.text + ", " + y.text](
                const World& world, const Quantity& left, const Quantity& right) {
                return observedComparison(world, left, relation, right, quantities);
            });
    }

    static SaidNumber anyLimit() { return limit(Rational(anyBetween(-4, 6)) / 2); }

    static SaidNumber limit(const Rational& number) {
        return {*decimal(number), [=](const World&) { return constantQuantity(number); }, {}};
    }

    static SaidNumber read(const RandomSignal& signal) { return read(signal.name, signal); }

    static SaidNumber held(const RandomSignal& signal) {
        return read(signal.said.isLinear ? heldName(signal.name) : signal.name, signal);
    }

    static SaidNumber read(const std::string& text, const RandomSignal& signal) {
        return {text, [text](const World& world) { return world.signals.at(text); }, {signal.name}};
    }

    // A comparison of the time. What is computed of it is as exact as doubles are, which have few
    // digits of a second where time 0 is far away.
    SaidTruth timed() const {
        const SaidNumber time{
            timeName, [](const World& world) { return world.signals.at(timeName); }, {timeName}};
        const SaidNumber when = limit(recording_.secondsAt(anyBetween(-2, 20)));
        const bool isNear = abs(recording_.reportedOffset()) < 1000;
        if (!isNear || onceIn(2)) {
            return onceIn(2) ? related(when, time) : related(time, when);
        }
        const SaidNumber x = read(anySignal());
        if (onceIn(2)) {
            return related(of<Quantity>("abs($)", difference(time, when), absolute),
                           limit(anyBetween(0, 6) * recording_.grid.tick));
        }
        return related(time, of<Quantity>("double($)", x, [](const Quantity& y) { return y; }));
    }

    // `0 < x <= 2`, `x in {1, 2}`, or a change.
    static SaidTruth sugared(const RandomSignal& signal) {
        const SaidNumber x = read(signal);
        const int least = anyBetween(-2, 1);
        if (!signal.hasNans() && onceIn(2)) {
            return of<TruthCourse>("changed($)", held(signal),
                                   [start = signal.said.samples.front().time](
                                       const Quantity& number) { return change(number, start); });
        }
        const auto compared = [=](Relation first, int left, Relation second, int right,
                                  const auto& joint) {
            const SaidTruth one = related(x, first, limit(left));
            const SaidTruth other = related(x, second, limit(right));
            return [=](const World& world) { return joint(one.in(world), other.in(world)); };
        };
        const std::string low = std::to_string(least);
        const std::string high = std::to_string(least + 2);
        if (onceIn(2)) {
            return {'(' + x.text + " in {" + low + ", " + high + "})",
                    compared(Relation::Equal, least, Relation::Equal, least + 2, disjunction),
                    x.signals};
        }
        return {'(' + low + " < " + x.text + " <= " + high + ')',
                compared(Relation::Greater, least, Relation::LessEqual, least + 2, conjunction),
                x.signals};
    }

    // A comparison of what a window holds.
    SaidTruth windowed(const RandomSignal& signal) const {
        const int a = anyBetween(-4, 3);
        const int b = a + anyBetween(1, 6);
        const std::string bounds = interval(a, b) + "($)";
        const auto overWindow = [&](const std::string& word, const auto& x, const auto& function) {
            return of<Quantity>(word + bounds, x,
                                [=](const auto& course) { return function(a, b, course); });
        };
        if (signal.isTruth) {
            const SaidTruth p = truthOf(signal);
            if (onceIn(2)) {
                return related(overWindow("count", p, count), limit(anyBetween(0, 2)));
            }
            return related(inSeconds(overWindow("duration", p, duration)), seconds(0, 4));
        }
        if (signal.hasNans() || onceIn(3)) {
            const SaidNumber x = read(signal);
            const bool isLeast = onceIn(2);
            const auto extremum = [=](int first, int last, const Quantity& number) {
                return extremeWithin(isLeast ? Extreme::Least : Extreme::Greatest, first, last,
                                     number);
            };
            return related(overWindow(isLeast ? "min" : "max", x, extremum), anyLimit());
        }
        const SaidNumber x = held(signal);
        if (onceIn(2)) {
            return related(inSeconds(overWindow("integral", x, integral)), seconds(-3, 6));
        }
        const auto mean = [](int first, int last, const Quantity& number) {
            return scaled(Rational(1, last - first), integral(first, last, number));
        };
        return related(overWindow("mean", x, mean), anyLimit());
    }

    SaidNumber inSeconds(const SaidNumber& ticks) const {
        return {ticks.text,
                [ticks, tick = recording_.grid.tick](const World& world) {
                    return scaled(tick, ticks.in(world));
                },
                ticks.signals};
    }

    SaidNumber seconds(int fewestTicks, int mostTicks) const {
        return limit(anyBetween(fewestTicks, mostTicks) * recording_.grid.tick);
    }

    SaidNumber term(const RandomSignal& signal) const {
        const SaidNumber x = read(signal);
        const RandomSignal& second = anySignal();
        const SaidNumber y = second.isTruth ? limit(anyBetween(-2, 2))
                             : onceIn(2)    ? held(second)
                                            : read(second);
        const bool isHeld = second.isTruth || y.text != second.name || !second.said.isLinear;
        const bool hasNans = signal.hasNans() || second.hasNans();
        switch (anyIndex(12)) {
            case 0:
                return of<Quantity>("abs($)", x, absolute);
            case 1:
                return of<Quantity>("(2 * $)", x, [](const Quantity& z) { return scaled(2, z); });
            case 2:
                return of<Quantity>("(-$)", x, [](const Quantity& z) { return scaled(-1, z); });
            case 3:
                return shift(x);
            case 4:
                return of<Quantity>(x, "+", y, sum);
            case 5:
                return of<Quantity>("abs($)", difference(x, y), absolute);
            case 6:
                return second.isTruth ? x : difference(x, shift(y));
            case 7:
                return isHeld ? of<Quantity>(x, "*", y, product) : x;
            case 8:
                return isHeld ? of<Quantity>(x, "/", y, quotient) : x;
            case 9:
                return hasNans ? x : extremum(x, y);
            default:
                return x;
        }
    }

    static SaidNumber extremum(const SaidNumber& x, const SaidNumber& y) {
        const bool isLeast = onceIn(2);
        SaidNumber result =
            of<Quantity>(x, ",", y, [=](const Quantity& left, const Quantity& right) {
                return extreme(isLeast ? Extreme::Least : Extreme::Greatest, left, right);
            });
        result.text = (isLeast ? "min" : "max") + result.text;
        return result;
    }

    static SaidNumber difference(const SaidNumber& x, const SaidNumber& y) {
        return of<Quantity>(x, "-", y, [](const Quantity& left, const Quantity& right) {
            return sum(left, scaled(-1, right));
        });
    }

    const RandomRecording& recording_;
};

}  // namespace vorm::evaluation::test
