#pragma once

#include <vorm/evaluation/time/time_unit.hpp>

#include <string>

namespace vorm::evaluation {

/// Where an instant lies that is written as a time.
enum class Beside { JustBefore, At, JustAfter };

/// How the times of a recording are counted in its traces: as a double number of ticks, nanoseconds
/// unless stated otherwise, from a time that is near all of them, plus a bias.
///
/// A timeline begins without a bias. Whole ticks are exact then up to 2^53, and what is finer than
/// a tick is rounded once. The bias that `over` adds puts all times of a recording, and those that
/// windows and shifts make of them, into one binade: there neighbouring doubles are equally far
/// apart, by `step`, so that sums and differences are exact, and that what is just after t stays
/// just after t + d whatever d is added.
class Timeline {
public:
    /// Counts ticks of that length, a second at the most, from that time on.
    explicit Timeline(ExactTime tick = nanosecond, ExactTime zero = {})
        : tick_(tick), zero_(zero) {}

    /// The same count with the bias for times between two of it, and for those that lie no further
    /// than `reach` before and after them as far as that leaves a tick sixteen steps.
    Timeline over(double first, double last, double reach = 0) const;

    /// The double that stands for a time; rounded to the nearest one where it is finer than these.
    double at(ExactTime time) const { return ticksIn(time - zero_) + bias_; }

    /// The nearest double to the number of ticks in a length of time.
    double ticksIn(ExactTime length) const { return length.in(tick_); }

    /// As at, on a timeline without a bias. Throws InputError for a time that is so far from zero
    /// that it takes another whole tick's double.
    double counted(ExactTime time) const;

    /// A time that was counted without the bias. Throws InputError where the steps are too coarse
    /// for whole ticks and this one falls between them.
    double biased(double counted) const {
        const double time = counted + bias_;
        if (step_ > coarsestExactStep && time - bias_ != counted) {
            failForSpan(step_);
        }
        return time;
    }

    /// Throws InputError: doubles that far apart cannot tell the times of a recording apart.
    [[noreturn]] void failForSpan(double step) const;

    /// The shortest decimal that stands for the same double; of one that is just after a whole tick
    /// that tick.
    ExactTime timeAt(double counted) const;

    /// Where it lies beside timeAt.
    Beside besideOf(double counted) const;

    /// The shortest decimal for a number of ticks, in the same way.
    ExactTime lengthOf(double ticks) const;

    ExactTime tick() const { return tick_; }
    Timeline withoutBias() const { return Timeline(tick_, zero_); }
    double bias() const { return bias_; }

    /// How far apart neighbouring doubles are, in ticks; 0 without a bias, where that depends on
    /// the time.
    double step() const { return step_; }

private:
    /// What is just after a whole tick has to be before the next one.
    static constexpr double coarsestExactStep = 0.25;

    ExactTime tick_;
    ExactTime zero_;
    double bias_ = 0;
    double step_ = 0;
};

}  // namespace vorm::evaluation
