#pragma once

// For comparisons: two operands of which at least one is a line.
//
// From event to event the difference of the two is a straight line. Mostly it is far from zero and
// keeps its sign, which doubles tell; what is done then is all that most samples cost. Whatever is
// closer is settled in a wider type.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/compared_operand.hpp>
#include <vorm/evaluation/evaluator/line_crossing.hpp>
#include <vorm/evaluation/evaluator/relation.hpp>
#include <vorm/evaluation/evaluator/truth_writer.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorm::evaluation {

template <class T>
class LineComparison {
public:
    LineComparison(ComparedOperand<T> left, ComparedOperand<T> right, const Relation& relation,
                   TruthWriter& truth)
        : isComputed_(left.isComputed() || right.isComputed()),
          left_(std::move(left)),
          right_(std::move(right)),
          relation_(relation),
          truth_(truth) {}

    void run(double start, double end) {
        left_.cursor().advanceTo(start);
        right_.cursor().advanceTo(start);
        // A local that nothing refers to stays in registers.
        Event last{std::numeric_limits<double>::quiet_NaN(),
                   0,
                   0,
                   true,
                   Order::Unordered,
                   Order::Unordered};
        const auto visit = [&](double time, const Point* left, const Point* right)
            __attribute__((always_inline)) {
            Event now{time,
                      left_.valueAt(left, time),
                      right_.valueAt(right, time),
                      left_.isRecorded(left, time) && right_.isRecorded(right, time),
                      last.order,
                      last.order};
            if (!goesOn(last, now)) {
                if (crossesPlainly(last, now)) {
                    now.order = now.before = orderOf(now.left, now.right);
                } else {
                    const Orders orders = settle(last, now, left, right);
                    now.order = orders.atEnd;
                    now.before = orders.inside;
                }
            }
            last = now;
        };
        if (isLeftBesideConstant()) {
            walkBesideConstant(last, visit);
        } else {
            assessments::support::walk(left_.cursor(), right_.cursor(), visit);
        }
        if (last.time < end && std::isfinite(end)) {
            visit(end, &left_.cursor().inForce(), &right_.cursor().inForce());
        }
    }

private:
    using Point = assessments::TimedPoint<T>;
    using Real = long double;
    static constexpr double epsilon = std::numeric_limits<double>::epsilon();

    struct Event {
        double time;
        double left;
        double right;
        bool isRecorded;  // of both operands
        Order order;
        Order before;  // inside the stretch that ends here
    };

    // What the difference is at the two ends of a straight stretch.
    struct Stretch {
        double from;
        double to;
        Real leftStart, rightStart, leftEnd, rightEnd;

        Real length() const { return Real(to) - from; }
        Real rise() const { return (leftEnd - rightEnd) - (leftStart - rightStart); }
        // A step from one time to the next has no inside and no slope.
        bool isStep() const { return !(assessments::support::nextTime(from) < to); }
    };

    // Whether the left operand is a recorded line and the right one has its only value already.
    bool isLeftBesideConstant() {
        return left_.isLine() && !left_.isComputed() && !right_.isLine() && right_.cursor().done();
    }

    // As walk, but the samples that stay on their side of the constant cost a comparison each and
    // nothing else: a limit that is seldom crossed takes half of the time.
    [[gnu::always_inline]] void walkBesideConstant(Event& last, const auto& visit) {
        auto& cursor = left_.cursor();
        const Point& constant = right_.cursor().inForce();
        const double limit = assessments::support::toDouble(constant.value);
        while (!cursor.done()) {
            const Point* const end = cursor.end();
            for (const Point* sample = cursor.begin(); sample != end; ++sample) {
                const Point* const other = firstOnOtherSide(sample, end, last.order, limit);
                if (other != sample) {
                    last.time = other[-1].time;
                    last.left = assessments::support::toDouble(other[-1].value);
                    last.before = last.order;
                }
                if (other == end) {
                    break;
                }
                sample = other;
                visit(sample->time, sample, &constant);
            }
            cursor.advance(static_cast<std::size_t>(end - cursor.begin()));
        }
    }

    static const Point* firstOnOtherSide(const Point* sample, const Point* end, Order order,
                                         double limit) {
        const auto pass = [&](const auto& stays) {
            return std::find_if(sample, end, [&](const Point& point) {
                return !stays(assessments::support::toDouble(point.value));
            });
        };
        switch (order) {
            case Order::Greater:
                return pass([limit](double value) { return value > limit; });
            case Order::Less:
                return pass([limit](double value) { return value < limit; });
            default:
                return sample;
        }
    }

    // How much the difference can be and still be zero at `time`. Of computed operands each one is
    // uncertain, however equal their slopes are.
    Real closeness(const Stretch& stretch, double time) const {
        if (stretch.isStep()) {
            return 0;
        }
        const Real rise = isComputed_ ? std::fabs(stretch.leftEnd - stretch.leftStart) +
                                            std::fabs(stretch.rightEnd - stretch.rightStart)
                                      : std::fabs(stretch.rise());
        const Real change = rise * reachOf(time, isComputed_) / stretch.length();
        return std::isfinite(change) ? change : 0;
    }

    // The same of one operand where the other one steps: the line goes on.
    Real ownCloseness(const ComparedOperand<T>& operand, const auto& course, double time) const {
        if (!isComputed_ || !operand.isLine() || course.to == nullptr ||
            !(assessments::support::nextTime(course.from->time) < course.to->time)) {
            return 0;
        }
        const Real rise = Real(assessments::support::toDouble(course.to->value)) -
                          assessments::support::toDouble(course.from->value);
        const Real change = std::fabs(rise) * reachOf(time, isComputed_) /
                            (Real(course.to->time) - course.from->time);
        return std::isfinite(change) ? change : 0;
    }

    // The same where nothing lies before; a sample is what it is.
    Real closenessOnLine(const ComparedOperand<T>& operand, const Point* inForce,
                         double time) const {
        return inForce->time == time
                   ? 0
                   : ownCloseness(operand, operand.courseUpTo(inForce, time), time);
    }

    // Whether the order stays what it was, beyond doubt.
    [[gnu::always_inline]] bool goesOn(const Event& last, const Event& now) const {
        const double leftEnd = left_.isLine() ? now.left : last.left;
        const double rightEnd = right_.isLine() ? now.right : last.right;
        const bool stays =
            last.order == Order::Greater
                ? leftEnd > rightEnd && now.left > now.right
                : last.order == Order::Less && leftEnd < rightEnd && now.left < now.right;
        return stays &&
               ((now.isRecorded && last.isRecorded) || isClear(last, now, leftEnd - rightEnd));
    }

    // Whether neither end is near enough to zero to be zero in truth. Both differences have one
    // sign, and the time is at least as long as the stretch or the stretch longer than any
    // rounding.
    static bool isClear(const Event& last, const Event& now, double endDifference) {
        const double start = std::fabs(last.left - last.right);
        const double end = std::fabs(endDifference);
        const double jump = std::fabs(now.left - now.right);
        const double least = std::min({start, end, jump});
        const double values = std::fabs(now.left) + std::fabs(now.right) + std::fabs(last.left) +
                              std::fabs(last.right);
        const double length = now.time - last.time;
        const double times = std::fabs(now.time) + length;
        return least > 8 * epsilon * values && least * length > 4 * epsilon * times * (start + end);
    }

    // Writes the usual crossing, between recorded samples, on a stretch short enough for doubles to
    // tell the nearest time. Says whether it is one.
    [[gnu::noinline]] bool crossesPlainly(Event last, Event now) {
        const double start = last.left - last.right;
        const double end = now.left - now.right;
        const double length = now.time - last.time;
        const bool isPlain = last.isRecorded && now.isRecorded && length < now.time / 64 &&
                             (left_.isLine() || now.left == last.left) &&
                             (right_.isLine() || now.right == last.right);
        const double time = last.time + start * length / (start - end);
        if (!isPlain || !(last.time < time && time < now.time)) {
            return false;
        }
        const Order order = orderOf(now.left, now.right);
        write(time, Order::Equal);
        const double after = assessments::support::nextTime(time);
        write(after, order);
        return true;
    }

    static Order orderWithin(Real tolerance, Real left, Real right) {
        return std::fabs(left - right) <= tolerance ? Order::Equal : orderOf(left, right);
    }

    static Real lastPlaces(Real left, Real right) {
        const Real size = std::fabs(left) + std::fabs(right);
        return std::isfinite(size) ? 4 * epsilon * size : 0;
    }

    struct Orders {
        Order inside;  // a stretch, at last
        Order atEnd;
    };

    // Writes what lies between two events and at the second one.
    [[gnu::noinline]] Orders settle(Event last, Event now, const Point* left, const Point* right) {
        Real tolerance = now.isRecorded ? 0 : lastPlaces(now.left, now.right);
        if (std::isnan(last.time)) {
            if (!now.isRecorded) {
                tolerance = std::max(tolerance, closenessOnLine(left_, left, now.time) +
                                                    closenessOnLine(right_, right, now.time));
            }
            const Order first = write(now.time, orderWithin(tolerance, now.left, now.right));
            return {first, first};
        }
        const auto leftCourse = left_.courseUpTo(left, now.time);
        const auto rightCourse = right_.courseUpTo(right, now.time);
        const Stretch stretch{last.time,
                              now.time,
                              left_.onCourse(leftCourse, last.time),
                              right_.onCourse(rightCourse, last.time),
                              left_.onCourse(leftCourse, now.time),
                              right_.onCourse(rightCourse, now.time)};
        // Only the course after the last event may tell that the operands are equal there.
        const bool isEqual =
            !last.isRecorded &&
            std::fabs(stretch.leftStart - stretch.rightStart) <= closeness(stretch, last.time);
        const Order start = isEqual ? write(last.time, Order::Equal) : last.order;
        const bool isOver = !now.isRecorded && endsJustBefore(stretch);
        if (!now.isRecorded && stretch.isStep()) {
            tolerance = std::max(tolerance, ownCloseness(left_, leftCourse, now.time) +
                                                ownCloseness(right_, rightCourse, now.time));
        } else if (!now.isRecorded) {
            tolerance = std::max(tolerance, isOver ? 2 * closeness(stretch, std::ceil(now.time))
                                                   : closeness(stretch, now.time));
        }
        Order end = orderWithin(tolerance, stretch.leftEnd, stretch.rightEnd);
        if (isOver && end == Order::Equal) {
            // They meet when the stretch is over.
            end = start;
        }
        Order inside = start;
        if (!stretch.isStep()) {
            inside = writeInside(stretch, start, end);
        } else if (!last.isRecorded && start == Order::Equal) {
            // What is drawn just before a step belongs to the stretch that the step ends.
            inside = write(last.time, last.before);
        }
        const Real leftNow = left_.isLine() ? stretch.leftEnd : now.left;
        const Real rightNow = right_.isLine() ? stretch.rightEnd : now.right;
        const bool jumps = leftNow != stretch.leftEnd || rightNow != stretch.rightEnd;
        return {inside, write(now.time, jumps ? orderWithin(tolerance, leftNow, rightNow) : end)};
    }

    // Whether a stretch ends just before a whole time, to which crossings beside it are drawn.
    bool endsJustBefore(const Stretch& stretch) const {
        const double whole = std::ceil(stretch.to);
        return isComputed_ && !stretch.isStep() && stretch.to < whole &&
               whole - stretch.to <= reachOf(whole, isComputed_);
    }

    Order write(double time, Order order) {
        truth_.change(time, relation_(order));
        return order;
    }

    // Gives the order that it comes to.
    Order writeInside(const Stretch& stretch, Order start, Order end) {
        if (start == end || (end == Order::Equal && start != Order::Unordered)) {
            return start;
        }
        double turn = stretch.from;
        if (start == Order::Unordered || end == Order::Unordered) {
            end = Order::Unordered;
        } else if (start != Order::Equal) {
            turn = crossing(stretch);
            write(turn, Order::Equal);
        }
        const double after = assessments::support::nextTime(turn);
        if (after < stretch.to) {
            write(after, end);
        }
        return end;
    }

    double crossing(const Stretch& stretch) const {
        return crossingTime(stretch.from, stretch.to, stretch.leftStart - stretch.rightStart,
                            stretch.rise(), isComputed_);
    }

    const bool isComputed_;
    ComparedOperand<T> left_;
    ComparedOperand<T> right_;
    const Relation& relation_;
    TruthWriter& truth_;
};

}  // namespace vorm::evaluation
