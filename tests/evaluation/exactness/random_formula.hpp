#pragma once

// Random formulas: the text for the engine, and beside it what the oracle takes it to mean.

#include "random_recording.hpp"
#include "said.hpp"

#include <functional>
#include <set>
#include <string>

namespace vorm::evaluation::test {

/// The text with the operand's in the place of `$`.
inline std::string filled(const std::string& pattern, const std::string& operand) {
    const std::size_t place = pattern.find('$');
    return pattern.substr(0, place) + operand + pattern.substr(place + 1);
}

template <class To, class From, class Function>
Said<To> of(const std::string& pattern, const Said<From>& x, const Function& function) {
    return {filled(pattern, x.text), [=](const World& world) { return function(x.in(world)); },
            x.signals};
}

/// The function may want to know the world, too.
template <class To, class From, class Function>
Said<To> of(const Said<From>& x, const std::string& sign, const Said<From>& y,
            const Function& function) {
    std::set<std::string> signals = x.signals;
    signals.insert(y.signals.begin(), y.signals.end());
    const auto in = [=](const World& world) {
        if constexpr (std::is_invocable_v<Function, World, From, From>) {
            return function(world, x.in(world), y.in(world));
        } else {
            return function(x.in(world), y.in(world));
        }
    };
    return {'(' + x.text + ' ' + sign + ' ' + y.text + ')', in, signals};
}

class FormulaGrower {
public:
    explicit FormulaGrower(const RandomRecording& recording) : recording_(recording) {}

    SaidTruth truth(std::size_t levels) const {
        if (levels == 0) {
            return leaf();
        }
        switch (anyIndex(12)) {
            case 0:
                return leaf();
            case 1:
                return of<TruthCourse>("~($)", truth(levels - 1), negation);
            case 2:
                return of<TruthCourse>(truth(levels - 1), anyOf<std::string>({"&", "and"}),
                                       truth(levels - 1), conjunction);
            case 3:
                return of<TruthCourse>(truth(levels - 1), "|", truth(levels - 1), disjunction);
            case 4:
            case 5:
                return of<TruthCourse>(truth(levels - 1), "->", truth(levels - 1),
                                       [](const TruthCourse& p, const TruthCourse& q) {
                                           return disjunction(negation(p), q);
                                       });
            case 6:
                return shift(truth(levels - 1));
            case 7:
            case 8:
                return window(truth(levels - 1));
            case 9:
                return untilOf(truth(levels - 1), truth(levels - 1));
            default:
                return edge(truth(levels - 1));
        }
    }

private:
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

    SaidTruth window(const SaidTruth& p) const {
        const int a = onceIn(4) ? -anyBetween(0, 6) : anyBetween(0, 4);
        const int b = a + anyBetween(0, 8);
        const bool isAlways = anyIndex(2) == 0;
        if (a >= 0 && onceIn(2)) {
            return of<TruthCourse>((isAlways ? "historically" : "once") + interval(a, b) + "($)", p,
                                   [=](const TruthCourse& course) {
                                       return isAlways ? always(-b, -a, course)
                                                       : eventually(-b, -a, course);
                                   });
        }
        if (a >= 0 && onceIn(3)) {
            return unbounded(isAlways, a, p);
        }
        return of<TruthCourse>((isAlways ? "always" : "eventually") + interval(a, b) + "($)", p,
                               [=](const TruthCourse& course) {
                                   return isAlways ? always(a, b, course)
                                                   : eventually(a, b, course);
                               });
    }

    // To the end of time, or of what was recorded of the operand's signals; or back to its begin.
    SaidTruth unbounded(bool isAlways, int a, const SaidTruth& p) const {
        const bool isPast = onceIn(2);
        const bool isRecorded = onceIn(2);
        const std::string word = isPast     ? isAlways ? "historically" : "once"
                                 : isAlways ? "always"
                                            : "eventually";
        const std::string end = !isRecorded ? "inf" : isPast ? "begin" : "end";
        const Times recorded = recordedTimes(p.signals);
        return of<TruthCourse>(
            word + "[" + length(a) + ", " + end + "]($)", p, [=](const TruthCourse& course) {
                TruthCourse q = isAlways ? course : negation(course);
                if (isRecorded && !recorded.empty()) {
                    q = trueBeyond(q, isPast, isPast ? recorded.front() : recorded.back());
                }
                const TruthCourse all = isPast ? alwaysBefore(a, q) : alwaysFrom(a, q);
                return isAlways ? all : negation(all);
            });
    }

    Times recordedTimes(const std::set<std::string>& names) const {
        std::vector<RandomSignal> signals = recording_.signals;
        std::erase_if(signals,
                      [&](const RandomSignal& each) { return !names.contains(each.name); });
        return timesOf(signals);
    }

    SaidTruth untilOf(const SaidTruth& p, const SaidTruth& q) const {
        const int a = anyBetween(0, 4);
        const int b = a + anyBetween(0, 8);
        if (onceIn(2)) {
            return of<TruthCourse>(
                p, "since" + interval(a, b), q,
                [=](const World& world, const TruthCourse& left, const TruthCourse& right) {
                    return observedSince(world, left, a, b, right);
                });
        }
        return of<TruthCourse>(
            p, "until" + interval(a, b), q,
            [=](const World& world, const TruthCourse& left, const TruthCourse& right) {
                return observedUntil(world, left, a, b, right);
            });
    }

    static SaidTruth edge(const SaidTruth& p) {
        const bool isRise = anyIndex(2) == 0;
        const auto changing = [=](const World& world) {
            return isRise ? p.in(world) : negation(p.in(world));
        };
        return {filled(isRise ? "rise($)" : "fall($)", p.text),
                [=](const World& world) {
                    const TruthCourse course = changing(world);
                    const auto start =
                        firstKnown(world.recorded == nullptr ? course : changing(*world.recorded));
                    return observedRise(world, course, start, p.text);
                },
                p.signals};
    }

    SaidTruth leaf() const {
        const RandomSignal& signal = recording_.signals[anyIndex(recording_.signals.size())];
        if (signal.isTruth) {
            return of<TruthCourse>("$", read(signal), [](const Quantity& x) {
                return comparison(x, Relation::Unequal, constantQuantity(0));
            });
        }
        const SaidNumber x = term(signal);
        const RandomSignal& other = recording_.signals[anyIndex(recording_.signals.size())];
        return related(x, onceIn(3) && !other.isTruth ? term(other) : limit());
    }

    static SaidTruth related(const SaidNumber& x, const SaidNumber& y) {
        static const char* const signs[] = {"<", "<=", ">", ">=", "==", "!="};
        const std::size_t which = anyIndex(6);
        return of<TruthCourse>(
            x, signs[which], y,
            [which, quantities = x.text + ", " + y.text](const World& world, const Quantity& left,
                                                         const Quantity& right) {
                return observedComparison(world, left, static_cast<Relation>(which), right,
                                          quantities);
            });
    }

    static SaidNumber limit() {
        const Rational number = Rational(anyBetween(-4, 6)) / 2;
        return {*decimal(number), [=](const World&) { return constantQuantity(number); }, {}};
    }

    static SaidNumber read(const RandomSignal& signal) {
        return {signal.name,
                [name = signal.name](const World& world) { return world.signals.at(name); },
                {signal.name}};
    }

    SaidNumber term(const RandomSignal& signal) const {
        const SaidNumber x = read(signal);
        const RandomSignal& other = recording_.signals[anyIndex(recording_.signals.size())];
        switch (anyIndex(9)) {
            case 0:
                return of<Quantity>("abs($)", x, absolute);
            case 1:
                return of<Quantity>("(2 * $)", x, [](const Quantity& y) { return scaled(2, y); });
            case 2:
                return of<Quantity>("(-$)", x, [](const Quantity& y) { return scaled(-1, y); });
            case 3:
                return shift(x);
            case 4:
                return other.isTruth ? x : of<Quantity>(x, "+", read(other), sum);
            case 5:
                return other.isTruth ? x
                                     : of<Quantity>("abs($)", difference(x, read(other)), absolute);
            case 6:
                return other.isTruth ? x : difference(x, shift(read(other)));
            default:
                return x;
        }
    }

    static SaidNumber difference(const SaidNumber& x, const SaidNumber& y) {
        return of<Quantity>(x, "-", y, [](const Quantity& left, const Quantity& right) {
            return sum(left, scaled(-1, right));
        });
    }

    const RandomRecording& recording_;
};

}  // namespace vorm::evaluation::test
