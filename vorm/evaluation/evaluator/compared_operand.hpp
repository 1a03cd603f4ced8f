#pragma once

// For comparisons and the arithmetic of lines: one operand on a span of time throughout which it is
// known.

#include <vorm/assessments/operators/operand_cursor.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <iterator>

namespace vorm::evaluation {

/// The samples from the one in force at the span's start to its end, to be walked; and the course
/// between them, which is read off both neighbours: the product comes before the division, so that
/// whole numbers on a grid of times come out exact. Only after a line's last sample its slope
/// counts. All values are numbers of double or more.
template <class T>
class ComparedOperand {
public:
    using Point = assessments::TimedPoint<T>;
    using Trace = assessments::TimedTrace_T<T>;

    /// The trace is known throughout the span. `isComputed` tells whether its samples are rounded.
    ComparedOperand(const Trace& trace, double start, double end, bool isComputed)
        : ComparedOperand(trace, start, samplesUpTo(trace, end), isComputed) {}

    bool isLine() const { return isLine_; }
    bool isComputed() const { return isComputed_; }
    assessments::support::OperandCursor<T>& cursor() { return cursor_; }

    /// The value at an event of the walk, from the sample in force then.
    double valueAt(const Point* inForce, double time) const {
        return !isLine_ || inForce->time == time ? toDouble(inForce->value)
                                                 : onLine<double>(inForce, next(inForce), time);
    }

    /// Whether that value was recorded, and not computed by lines.
    bool isRecorded(const Point* inForce, double time) const {
        return !isLine_ || (!isComputed_ && inForce->time == time);
    }

    /// The course up to an event of the walk.
    struct Course {
        const Point* from;
        const Point* to;  ///< null where only a slope leads on
    };
    Course courseUpTo(const Point* inForce, double event) const {
        return inForce->time == event ? Course{inForce - 1, inForce}
                                      : Course{inForce, next(inForce)};
    }

    /// The value on that course, at its end the one that it leads to; wider than double, since
    /// crossings of long segments would else miss the times that they are at.
    long double onCourse(const Course& course, double time) const {
        return isLine_ ? onLine<long double>(course.from, course.to, time)
                       : static_cast<long double>(toDouble(course.from->value));
    }

private:
    using Iterator = typename Trace::Points::const_iterator;

    ComparedOperand(const Trace& trace, double start, Iterator end, bool isComputed)
        : isLine_(trace.interpolation == assessments::INTERPOLATION_METHOD::LINEAR),
          isComputed_(isComputed),
          beyond_(end == trace.points.end() ? nullptr : &*end),
          cursor_(trace.TimedPointIteratorForValueAt(start, true), end) {}

    static Iterator samplesUpTo(const Trace& trace, double end) {
        return end > trace.points.front().time ? trace.TimedPointIteratorForValueAt(end, false)
                                               : std::next(trace.points.begin());
    }

    static double toDouble(const T& value) { return assessments::support::toDouble(value); }

    const Point* next(const Point* inForce) const { return cursor_.done() ? beyond_ : inForce + 1; }

    template <class Real>
    static Real onLine(const Point* from, const Point* to, double time) {
        const Real value = toDouble(from->value);
        if (time == from->time) {
            return value;
        }
        const Real passed = Real(time) - from->time;
        if (to == nullptr) {
            return from->derivative == 0 ? value : value + passed * from->derivative;
        }
        const Real end = toDouble(to->value);
        return time == to->time || end == value
                   ? end
                   : value + passed * (end - value) / (Real(to->time) - from->time);
    }

    bool isLine_;
    bool isComputed_;
    const Point* beyond_;  // the sample after the span, to which a line leads
    assessments::support::OperandCursor<T> cursor_;
};

}  // namespace vorm::evaluation
