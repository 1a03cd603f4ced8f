#pragma once

// Random formulas: the text for the engine, and beside it what the oracle takes it to mean.

#include "random_leaf.hpp"

#include <set>
#include <string>

namespace vorm::evaluation::test {

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
                return leaves_.shift(truth(levels - 1));
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
    SaidTruth window(const SaidTruth& p) const {
        const int a = onceIn(4) ? -anyBetween(0, 6) : anyBetween(0, 4);
        const int b = a + anyBetween(0, 8);
        const bool isAlways = anyIndex(2) == 0;
        if (a >= 0 && onceIn(2)) {
            return of<TruthCourse>(
                (isAlways ? "historically" : "once") + leaves_.interval(a, b) + "($)", p,
                [=](const TruthCourse& course) {
                    return isAlways ? always(-b, -a, course) : eventually(-b, -a, course);
                });
        }
        if (a >= 0 && onceIn(3)) {
            return unbounded(isAlways, a, p);
        }
        return of<TruthCourse>(
            (isAlways ? "always" : "eventually") + leaves_.interval(a, b) + "($)", p,
            [=](const TruthCourse& course) {
                return isAlways ? always(a, b, course) : eventually(a, b, course);
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
            word + "[" + leaves_.length(a) + ", " + end + "]($)", p,
            [=](const TruthCourse& course) {
                TruthCourse q = isAlways ? course : negation(course);
                if (isRecorded && !recorded.empty()) {
                    q = trueBeyond(q, isPast, isPast ? recorded.front() : recorded.back());
                }
                const TruthCourse all = isPast ? alwaysBefore(a, q) : alwaysFrom(a, q);
                return isAlways ? all : negation(all);
            });
    }

    Times recordedTimes(const std::set<std::string>& names) const {
        return timesOf(signalsCalled(recording_, names));
    }

    SaidTruth untilOf(const SaidTruth& p, const SaidTruth& q) const {
        const int a = anyBetween(0, 4);
        const int b = a + anyBetween(0, 8);
        if (onceIn(2)) {
            return of<TruthCourse>(
                p, "since" + leaves_.interval(a, b), q,
                [=](const World& world, const TruthCourse& left, const TruthCourse& right) {
                    return observedSince(world, left, a, b, right);
                });
        }
        return of<TruthCourse>(
            p, "until" + leaves_.interval(a, b), q,
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

    SaidTruth leaf() const { return leaves_.leaf(); }

    const RandomRecording& recording_;
    LeafGrower leaves_{recording_};
};

}  // namespace vorm::evaluation::test
