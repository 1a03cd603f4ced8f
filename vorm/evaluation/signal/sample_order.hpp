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

    /// How a sample at that time stands to the one before it; nothing for one that does not count.
    /// Throws InputError, which names no place, for a time that goes back or, unless the rules
    /// allow it, repeats.
    std::optional<SampleStep> stepTo(double time) {
        if (!(time > last_)) [[unlikely]] {
            return stepWithin(time);
        }
        const SampleStep step = !hasSamples_                   ? SampleStep::First
                                : time - last_ > rules_.maxGap ? SampleStep::AfterHole
                                                               : SampleStep::Next;
        hasSamples_ = true;
        last_ = time;
        return step;
    }

private:
    std::optional<SampleStep> stepWithin(double time) const;

    SignalRules rules_;
    bool hasSamples_ = false;
    double last_ = -std::numeric_limits<double>::infinity();
};

}  // namespace vorm::evaluation
