#pragma once

// For the operators that walk two traces at once.
//
// Which operand's sample comes next is as good as random, so that a branch on it would be guessed
// wrong every other time. The walk therefore advances both operands by a computed step. It does so
// in blocks of samples copied out of the deques, since a step in a deque is a branch too.

#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace vorm::assessments::support {

/// The end of the samples that lie at or before `time`. Looks from the end, where it mostly is.
template <class T>
auto samplesUpTo(const TimedTrace_T<T>& trace, double time) {
    auto end = trace.points.end();
    while (end != trace.points.begin() && std::prev(end)->time > time) {
        --end;
    }
    return end;
}

/// The samples of one operand in the order of time, a block at a time. It stands between two
/// samples: one in force, one to come.
template <class T>
class OperandCursor {
public:
    using Iterator = typename TimedTrace_T<T>::Points::const_iterator;

    OperandCursor(Iterator begin, Iterator end) : source_(begin), end_(end) { fill(); }

    bool done() const { return next_ == block_.size(); }

    /// The time of the sample to come; plus infinity after the last one.
    double nextTime() const { return done() ? infinity : block_[next_].time; }

    /// The sample passed last. Only after the first advance(); until the next one.
    const TimedPoint<T>& inForce() const { return block_[next_ - 1]; }

    /// The samples to come that are at hand. Valid until the next advance.
    const TimedPoint<T>* begin() const { return block_.data() + next_; }
    const TimedPoint<T>* end() const { return block_.data() + block_.size(); }

    /// Passes `count` of the samples at hand.
    void advance(std::size_t count = 1) {
        next_ += count;
        if (next_ == block_.size() && source_ != end_) {
            fill();
        }
    }

    /// Passes all samples before `time`.
    void advanceTo(double time) {
        while (!done() && nextTime() < time) {
            advance();
        }
    }

private:
    static constexpr std::size_t blockSize = 256;

    // Compiled in the library: it is called rarely and from many places.
    VORM_ASSESSMENTS_EXPORT void fill();

    Iterator source_;
    Iterator end_;
    std::vector<TimedPoint<T>> block_;
    std::size_t next_ = 0;
};

/// Calls visit(time, left, right) at every sample time of either operand, with pointers to the
/// samples in force. In front of a sample that is in force since that very time stands the one
/// that was in force before, if there was one. Both operands are in force from the first visit on
/// if they begin together or one has been advanced to the other's begin.
template <class T, class Visit>
void walk(OperandCursor<T>& left, OperandCursor<T>& right, Visit visit) {
    while (!left.done() && !right.done()) {
        const TimedPoint<T>* a = left.begin();
        const TimedPoint<T>* b = right.begin();
        while (a != left.end() && b != right.end()) {
            const double aTime = a->time;
            const double bTime = b->time;
            // Advances also if a time is NaN, which push_back accepts for a first sample.
            a += !(bTime < aTime);
            b += !(aTime < bTime);
            visit(aTime < bTime ? aTime : bTime, a - 1, b - 1);
        }
        left.advance(static_cast<std::size_t>(a - left.begin()));
        right.advance(static_cast<std::size_t>(b - right.begin()));
    }
    const auto walkRest = [](OperandCursor<T>& rest, auto visitSample) {
        while (!rest.done()) {
            std::for_each(rest.begin(), rest.end(), visitSample);
            rest.advance(static_cast<std::size_t>(rest.end() - rest.begin()));
        }
    };
    walkRest(left, [&](const TimedPoint<T>& a) { visit(a.time, &a, &right.inForce()); });
    walkRest(right, [&](const TimedPoint<T>& b) { visit(b.time, &left.inForce(), &b); });
}

}  // namespace vorm::assessments::support
