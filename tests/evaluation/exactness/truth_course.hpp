#pragma once

// Truth in three values over the whole real line, as a list of instants with what holds at each and
// on each open interval between neighbours. Every operator says what it is at one time, by its
// definition, and is tabulated at the instants between which nothing can change and once between
// any two of them. Nothing here rounds.

#include "rational.hpp"

#include <algorithm>
#include <vector>

namespace vorm::evaluation::test {

/// Negation is the sign, "and" the least, "or" the greatest.
enum Truth : int { False = -1, Open = 0, True = 1 };

inline Truth negated(Truth p) {
    return static_cast<Truth>(-p);
}

using Times = std::vector<Rational>;

inline void sortOut(Times& times) {
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
}

inline Times joined(Times times, const Times& others) {
    times.insert(times.end(), others.begin(), others.end());
    sortOut(times);
    return times;
}

/// The times, each once as it is moved by each of the distances.
inline Times moved(const Times& times, const Times& distances) {
    Times result;
    for (const Rational& distance : distances) {
        for (const Rational& time : times) {
            result.push_back(time + distance);
        }
    }
    sortOut(result);
    return result;
}

/// A time within the i-th open interval of those that the events make, from before all on.
inline Rational timeBefore(const Times& events, std::size_t i) {
    if (events.empty()) {
        return 0;
    }
    if (i == 0) {
        return events.front() - 1;
    }
    return i == events.size() ? Rational(events.back() + 1)
                              : Rational((events[i - 1] + events[i]) / 2);
}

struct TruthCourse {
    Times events;
    std::vector<Truth> at;           // one per event
    std::vector<Truth> between{{}};  // before the first event, after it, ...: one more

    Truth valueAt(const Rational& time) const {
        const auto next = std::lower_bound(events.begin(), events.end(), time);
        const auto i = static_cast<std::size_t>(next - events.begin());
        return next != events.end() && *next == time ? at[i] : between[i];
    }
};

/// What the function says, which changes at the given times only.
template <class Function>
TruthCourse tabulated(const Times& events, const Function& valueAt) {
    TruthCourse course;
    course.between = {valueAt(timeBefore(events, 0))};
    for (std::size_t i = 0; i < events.size(); ++i) {
        const Truth at = valueAt(events[i]);
        const Truth after = valueAt(timeBefore(events, i + 1));
        if (at != after || at != course.between.back()) {
            course.events.push_back(events[i]);
            course.at.push_back(at);
            course.between.push_back(after);
        }
    }
    return course;
}

inline TruthCourse negation(TruthCourse p) {
    std::transform(p.at.begin(), p.at.end(), p.at.begin(), negated);
    std::transform(p.between.begin(), p.between.end(), p.between.begin(), negated);
    return p;
}

inline TruthCourse conjunction(const TruthCourse& p, const TruthCourse& q) {
    return tabulated(joined(p.events, q.events),
                     [&](const Rational& t) { return std::min(p.valueAt(t), q.valueAt(t)); });
}

inline TruthCourse disjunction(const TruthCourse& p, const TruthCourse& q) {
    return negation(conjunction(negation(p), negation(q)));
}

/// p at t + distance.
inline TruthCourse shifted(TruthCourse p, const Rational& distance) {
    for (Rational& event : p.events) {
        event -= distance;
    }
    return p;
}

/// The least value on the closed interval, which is not empty.
inline Truth leastWithin(const TruthCourse& p, const Rational& first, const Rational& last) {
    Truth least = p.valueAt(first);
    for (std::size_t i = 0; i < p.events.size(); ++i) {
        const Rational& event = p.events[i];
        if (first <= event && event <= last) {
            least = std::min(least, p.at[i]);
        }
        if (first < event && (i == 0 || p.events[i - 1] < last)) {
            least = std::min(least, p.between[i]);
        }
    }
    return p.events.empty() || p.events.back() >= last ? least : std::min(least, p.between.back());
}

inline TruthCourse always(const Rational& a, const Rational& b, const TruthCourse& p) {
    return tabulated(moved(p.events, {-a, -b}),
                     [&](const Rational& t) { return leastWithin(p, t + a, t + b); });
}

inline TruthCourse eventually(const Rational& a, const Rational& b, const TruthCourse& p) {
    return negation(always(a, b, negation(p)));
}

/// p from t + a on for ever.
inline TruthCourse alwaysFrom(const Rational& a, const TruthCourse& p) {
    const Rational beyond = p.events.empty() ? Rational(0) : Rational(p.events.back() + 1);
    return tabulated(moved(p.events, {-a}), [&](const Rational& t) {
        return leastWithin(p, t + a, std::max<Rational>(t + a, beyond));
    });
}

/// p at all times up to t - a.
inline TruthCourse alwaysBefore(const Rational& a, const TruthCourse& p) {
    const Rational beyond = p.events.empty() ? Rational(0) : Rational(p.events.front() - 1);
    return tabulated(moved(p.events, {a}), [&](const Rational& t) {
        return leastWithin(p, std::min<Rational>(t - a, beyond), t - a);
    });
}

/// p, but true at all times after the end, or before the begin.
inline TruthCourse trueBeyond(const TruthCourse& p, bool isBegin, const Rational& end) {
    return tabulated(joined(p.events, {end}), [&](const Rational& t) {
        return (isBegin ? t < end : end < t) ? True : p.valueAt(t);
    });
}

/// The least value on the half-open interval, which does not hold its end; true where it is empty.
inline Truth leastBefore(const TruthCourse& p, const Rational& first, const Rational& end) {
    if (first == end) {
        return True;
    }
    // From the last event before the end on nothing changes.
    const auto next = std::lower_bound(p.events.begin(), p.events.end(), end);
    const Rational latest = next == p.events.begin() ? first : std::max(first, *std::prev(next));
    return leastWithin(p, first, (latest + end) / 2);
}

/// The least value on the half-open interval, which does not hold its begin.
inline Truth leastAfter(const TruthCourse& p, const Rational& begin, const Rational& last) {
    if (begin == last) {
        return True;
    }
    const auto next = std::upper_bound(p.events.begin(), p.events.end(), begin);
    const Rational earliest = next == p.events.end() ? last : std::min(last, *next);
    return leastWithin(p, (begin + earliest) / 2, last);
}

/// How far p has to hold for a goal that lies right after the time at which p ends.
enum class Handover { UpToTheGoal, UpToTheTime };

/// q at some time of [t + a, t + b], p from t up to just before it, and p throughout [t, t + a].
/// Where q begins right after the last time of p there is no such time on the real line; there is
/// one for who counts time in steps, however small: both ways can be had.
inline TruthCourse until(const TruthCourse& p, const Rational& a, const Rational& b,
                         const TruthCourse& q, Handover handover = Handover::UpToTheGoal) {
    const Times events = joined(p.events, q.events);
    return tabulated(moved(events, {0, -a, -b}), [&](const Rational& t) {
        Times goals{t + a, t + b};
        for (const Rational& event : events) {
            if (t + a < event && event < t + b) {
                goals.push_back(event);
            }
        }
        sortOut(goals);
        const std::size_t ends = goals.size();
        for (std::size_t i = 1; i < ends; ++i) {
            goals.push_back(timeBefore(goals, i));
        }
        Truth best = False;
        for (std::size_t i = 0; i < goals.size(); ++i) {
            const bool isStep = i >= ends && handover == Handover::UpToTheTime;
            const Truth before =
                isStep ? leastWithin(p, t, goals[i - ends]) : leastBefore(p, t, goals[i]);
            best = std::max(best, std::min(q.valueAt(goals[i]), before));
        }
        return std::min(best, leastWithin(p, t, t + a));
    });
}

/// q at some time of [t - b, t - a], p from right after it up to t, and p throughout [t - a, t].
/// With UpToTheTime a q that ends where p begins counts; on the real line no such time is the last.
inline TruthCourse since(const TruthCourse& p, const Rational& a, const Rational& b,
                         const TruthCourse& q, Handover handover = Handover::UpToTheTime) {
    const Times events = joined(p.events, q.events);
    return tabulated(moved(events, {0, a, b}), [&](const Rational& t) {
        Times goals{t - a, t - b};
        for (const Rational& event : events) {
            if (t - b < event && event < t - a) {
                goals.push_back(event);
            }
        }
        sortOut(goals);
        Truth best = False;
        for (std::size_t i = 0; i < goals.size(); ++i) {
            best = std::max(best, std::min(q.valueAt(goals[i]), leastAfter(p, goals[i], t)));
            if (i > 0) {
                const Rational inside = timeBefore(goals, i);
                const Truth after = handover == Handover::UpToTheTime ? leastWithin(p, goals[i], t)
                                                                      : leastAfter(p, inside, t);
                best = std::max(best, std::min(q.valueAt(inside), after));
            }
        }
        return std::min(best, leastWithin(p, t - a, t));
    });
}

/// How long what becomes true right after a time only has just become true. Shorter than anything
/// that recordings and formulas say, and longer than nothing: it is read as an instant.
inline const Rational moment = powerOfTen(-30);

/// Where a truth value is first known: at an instant, or only right after it.
struct FirstKnown {
    Rational time;
    bool isRightAfter;
};

inline std::optional<FirstKnown> firstKnown(const TruthCourse& p) {
    if (p.between[0] != Open || p.events.empty()) {
        return std::nullopt;
    }
    return FirstKnown{p.events[0], p.at[0] == Open};
}

/// True for the instant at which p becomes true; where p does so only right after a time, for a
/// moment right after it. Open where p is open, and where p is true and what was just before is
/// open; but where p is first known, nothing has become of it, whatever was before.
inline TruthCourse rise(const TruthCourse& p, const std::optional<FirstKnown>& start,
                        const Rational& lasting = moment) {
    const auto change = [](Truth before, Truth now) {
        return now == Open ? Open : std::min(negated(before), now);
    };
    TruthCourse result;
    result.between = {change(p.between[0], p.between[0])};
    for (std::size_t i = 0; i < p.events.size(); ++i) {
        const bool isStart = start && start->time == p.events[i];
        const Truth resting = change(p.between[i + 1], p.between[i + 1]);
        const Truth soon =
            isStart && start->isRightAfter ? False : change(p.at[i], p.between[i + 1]);
        result.events.push_back(p.events[i]);
        result.at.push_back(isStart && !start->isRightAfter ? False
                                                            : change(p.between[i], p.at[i]));
        result.between.push_back(soon);
        if (soon != resting) {
            result.events.push_back(p.events[i] + lasting);
            result.at.push_back(soon);
            result.between.push_back(resting);
        }
    }
    return result;
}

/// A stretch of time, whose ends may belong to it or not; an instant has equal ends.
struct Span {
    Rational start;
    Rational end;
};

/// What becomes of a requirement in a closed range of time.
struct Judgement {
    std::string verdict;  ///< PASS, FAIL or NO_RESULT
    Rational from;
    Rational to;
    std::vector<Span> failures;
    std::vector<Span> openSpans;
    Rational passed = 0;
    Rational failed = 0;
    Rational open = 0;
};

/// The greatest sets without gaps on which the course has a value, from `from` to `to`.
inline std::vector<Span> spansOf(const TruthCourse& course, Truth value, const Rational& from,
                                 const Rational& to) {
    std::vector<Span> spans;
    bool goesOn = false;
    const auto add = [&](const Rational& start, const Rational& end, Truth here) {
        if (here == value) {
            if (goesOn) {
                spans.back().end = end;
            } else {
                spans.push_back({start, end});
            }
        }
        goesOn = here == value;
    };
    Times ends = joined(course.events, {from, to});
    std::erase_if(ends, [&](const Rational& time) { return time < from || to < time; });
    for (std::size_t i = 0; i < ends.size(); ++i) {
        if (i > 0) {
            add(ends[i - 1], ends[i], course.valueAt(timeBefore(ends, i)));
        }
        add(ends[i], ends[i], course.valueAt(ends[i]));
    }
    return spans;
}

inline Rational lengthOf(const std::vector<Span>& spans) {
    Rational length = 0;
    for (const Span& span : spans) {
        length += span.end - span.start;
    }
    return length;
}

inline Judgement judged(const TruthCourse& course, const Rational& from, const Rational& to) {
    const std::vector<Span> passing = spansOf(course, True, from, to);
    Judgement judgement;
    judgement.from = from;
    judgement.to = to;
    judgement.failures = spansOf(course, False, from, to);
    judgement.openSpans = spansOf(course, Open, from, to);
    judgement.verdict = !judgement.failures.empty() ? "FAIL"
                        : passing.empty()           ? "NO_RESULT"
                                                    : "PASS";
    judgement.passed = lengthOf(passing);
    judgement.failed = lengthOf(judgement.failures);
    judgement.open = lengthOf(judgement.openSpans);
    return judgement;
}

}  // namespace vorm::evaluation::test
