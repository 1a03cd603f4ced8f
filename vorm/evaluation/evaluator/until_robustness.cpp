#include "until_robustness.hpp"

#include <vorm/assessments/operators/extremum.hpp>
#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>
#include <vorm/evaluation/evaluator/robustness.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace vorm::evaluation {

using namespace assessments;

namespace {

constexpr support::Extremum<support::KeepSmaller> smaller;
constexpr support::Extremum<support::KeepGreater> greater;

struct Event {
    double time;
    double condition;
    double goal;
};

// A straight stretch of both operands. `later` is what waiting for the goal from its end on gives:
// the best over all times of the goal there and the least of the condition before, that time
// excluded, so that a condition may end in the step that reaches the goal.
class Stretch {
public:
    Stretch(const Event& from, const Event& to, double later)
        : from_(from),
          to_(to),
          isRising_(from.condition <= to.condition || !(support::nextTime(from.time) < to.time)),
          bound_(isRising_ ? later : smaller(to.condition, later)),
          meeting_(meetingOf(from.condition - from.goal, to.condition - to.goal)) {}

    double untilAt(double time) const {
        return greater(smaller(conditionAt(time), goalAt(time)), waitingFrom(time));
    }

    // What waiting from the begin on gives; the goal may be reached at once.
    double later() const { return greater(from_.goal, waitingFrom(from_.time)); }

    // The times at which the until can bend, in order.
    std::array<double, 3> bends() const {
        std::array<double, 3> times{meeting_,
                                    meetingOf(from_.condition - bound_, to_.condition - bound_),
                                    meetingOf(from_.goal - bound_, to_.goal - bound_)};
        std::sort(times.begin(), times.end());
        return times;
    }

private:
    // A rising condition is least where the waiting begins, a falling one where it ends; what a
    // goal that rises through a falling condition gives is best where they meet.
    double waitingFrom(double time) const {
        if (isRising_) {
            return smaller(conditionAt(time), bound_);
        }
        const bool isAhead = from_.goal < to_.goal && time < meeting_;
        return isAhead ? greater(conditionAt(meeting_), bound_) : bound_;
    }

    double conditionAt(double time) const { return between(from_.condition, to_.condition, time); }
    double goalAt(double time) const { return between(from_.goal, to_.goal, time); }

    double between(double start, double end, double time) const {
        if (start == end || time == from_.time) {
            return start;
        }
        return start + (time - from_.time) * (end - start) / (to_.time - from_.time);
    }

    // When a difference passes zero; the begin where it does not.
    double meetingOf(double start, double end) const {
        return (start < 0 && end > 0) || (start > 0 && end < 0)
                   ? from_.time + start * (to_.time - from_.time) / (start - end)
                   : from_.time;
    }

    Event from_;
    Event to_;
    bool isRising_;
    double bound_;
    double meeting_;
};

std::vector<Event> eventsOf(const TimedTrace_T<double>& condition,
                            const TimedTrace_T<double>& goal) {
    support::OperandCursor<double> left(condition.points.begin(), condition.points.end());
    support::OperandCursor<double> right(goal.points.begin(), goal.points.end());
    std::vector<Event> events;
    events.reserve(condition.points.size() + goal.points.size());
    support::walk(left, right,
                  [&](double time, const TimedPoint<double>* l, const TimedPoint<double>* r) {
                      events.push_back({time, l->valueAt(time), r->valueAt(time)});
                  });
    return events;
}

// The until without a bound, of lines over all of time: backwards from event to event.
//
// Source: Donzé, Ferrère, Maler, "Efficient Robust Monitoring for STL" (2013).
TimedTrace_T<double> untilSomeTime(const std::vector<Event>& events) {
    std::vector<Stretch> stretches;
    stretches.reserve(events.size());
    double later = events.back().goal;
    for (std::size_t i = events.size() - 1; i > 0; --i) {
        stretches.emplace_back(events[i - 1], events[i], later);
        later = stretches.back().later();
    }
    TimedTrace_T<double> result(INTERPOLATION_METHOD::LINEAR, -support::infinity);
    support::TraceBuilder<double> output(result);
    for (std::size_t i = 0; i + 1 < events.size(); ++i) {
        const Stretch& stretch = stretches[stretches.size() - 1 - i];
        output.append({events[i].time, stretch.untilAt(events[i].time)});
        for (const double time : stretch.bends()) {
            if (result.lastKnownTime < time && time < events[i + 1].time) {
                output.append({time, stretch.untilAt(time)});
            }
        }
    }
    const Event& last = events.back();
    output.append({last.time, smaller(last.condition, last.goal)});
    result.lastKnownTime = support::infinity;
    return result;
}

TimedTrace untilOfLines(const TimedTrace& condition, const TimedTrace& goal, double a, double b) {
    const TimedTrace until = untilSomeTime(eventsOf(condition.get<double>(), goal.get<double>()));
    return onFinite(until.Globally(0, a), goal.Eventually(a, b),
                    [](const TimedTrace& l, const TimedTrace& r) { return l.And(r); });
}

}  // namespace

TimedTrace untilRobustness(const TimedTrace& condition, const TimedTrace& goal, double a,
                           double b) {
    const auto isHeld = [](const TimedTrace& trace) {
        return trace.getInterpolation() == INTERPOLATION_METHOD::ZOH;
    };
    if (isHeld(condition) && isHeld(goal)) {
        return condition.Until(a, b, goal);
    }
    return onFinite(condition, goal, [&](const TimedTrace& l, const TimedTrace& r) {
        return untilOfLines(l, r, a, b);
    });
}

}  // namespace vorm::evaluation
