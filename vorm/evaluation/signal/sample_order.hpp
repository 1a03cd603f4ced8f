#pragma once

// How the samples of one signal follow each other, by its rules for holes and equal times. For what
// feeds a TraceCollector.

#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/signal/trace_collector.hpp>

namespace vorm::evaluation {

class SampleOrder {
public:
    explicit SampleOrder(SignalRules rules) : rules_(std::move(rules)) {}

    const SignalRules& rules() const { return rules_; }

    /// Calls take(step) with how a sample at that time stands to the one before it; not for one
    /// that does not count. Throws InputError, which names no place, for a time that goes back or,
    /// unless the rules allow it, repeats.
    template <class Take>
    void place(double time, const Take& take) {
        if (time > last_) [[likely]] {
            take(stepOnTo(time));
        } else if (const auto step = stepWithin(time)) {
            take(*step);
        }
    }

private:
    SampleStep stepOnTo(double time) {
        const SampleStep step = !hasSamples_                   ? SampleStep::First
                                : time - last_ > rules_.maxGap ? SampleStep::AfterHole
                                                               : SampleStep::Next;
        hasSamples_ = true;
        last_ = time;
        return step;
    }

    std::optional<SampleStep> stepWithin(double time) const;

    SignalRules rules_;
    bool hasSamples_ = false;
    double last_ = -std::numeric_limits<double>::infinity();
};

}  // namespace vorm::evaluation
