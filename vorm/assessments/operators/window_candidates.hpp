#pragma once

// The sliding window extremum behind timedWindow, as a queue of samples that tells its extremum.
//
// Two stacks make the queue: samples enter a back part of which only the extremum is kept; when
// the samples in front are used up, the back part is walked once from its end and the samples that
// are an extremum of all after them become the front. Every sample is thus looked at twice at
// most, whatever the width of the window. Unlike the usual monotone queue this takes no branch
// that noise makes unpredictable.
//
// Source of the two-stack queue: Tangwongsan, Hirzel, Schneider, "Low-Latency Sliding-Window
// Aggregation in Worst-Case Constant Time" (2017), which calls it folklore.

#include <vorm/assessments/trace/timed_trace.hpp>

#include <iterator>
#include <vector>

namespace vorm::assessments::detail {

/// The samples of a trace that are inside the window, in the order of time.
template <class T, class KeepFirst>
class WindowCandidates {
public:
    using Iterator = typename TimedTrace_T<T>::Points::const_iterator;

    struct Candidate {
        const TimedPoint<T>* sample = nullptr;
        const TimedPoint<T>* next = nullptr;  ///< the sample after it; null after the last one
    };

    /// No sample of [begin, end) has entered yet.
    WindowCandidates(Iterator begin, Iterator end, const KeepFirst& keepFirst)
        : keepFirst_(keepFirst), entering_(begin), end_(end) {}

    bool allEntered() const { return entering_ == end_; }

    /// The sample that enters next.
    const TimedPoint<T>& entering() const { return *entering_; }

    /// The sample that entered last.
    const TimedPoint<T>& entered() const { return *std::prev(entering_); }

    /// Whether no sample is in the window.
    bool empty() const { return best_.sample == nullptr; }

    /// The extremum of the window; of equal samples the latest.
    const Candidate& best() const { return best_; }

    /// Whether the entering sample is an extremum of the window that it enters.
    bool entersAsBest() const {
        return empty() || keepFirst_(entering_->value, best_.sample->value);
    }

    /// Takes the entering sample into the window. Returns whether it is the extremum now.
    // Inlined by force: wide windows spend their time here.
    [[gnu::always_inline]] bool enter() {
        const TimedPoint<T>& sample = *entering_;
        ++entering_;
        if (back_.sample == nullptr || keepFirst_(sample.value, back_.sample->value)) {
            back_ = {&sample, allEntered() ? nullptr : &*entering_};
        }
        if (!empty() && !keepFirst_(sample.value, best_.sample->value)) {
            return false;
        }
        front_.clear();
        best_ = back_;
        return true;
    }

    /// The extremum and all samples before it leave the window.
    void leaveBest() {
        if (front_.empty()) {
            rebuildFront();
        } else {
            front_.pop_back();
        }
        const bool backIsBest =
            front_.empty() || (back_.sample != nullptr &&
                               keepFirst_(back_.sample->value, front_.back().sample->value));
        if (backIsBest) {
            front_.clear();
            best_ = back_;
        } else {
            best_ = front_.back();
        }
    }

private:
    // The extremum that leaves was the back part's, so that what stays is what entered after it.
    void rebuildFront() {
        const TimedPoint<T>* next = allEntered() ? nullptr : &*entering_;
        for (Iterator sample = std::prev(entering_); &*sample != best_.sample; --sample) {
            if (front_.empty() || !keepFirst_(front_.back().sample->value, sample->value)) {
                front_.push_back({&*sample, next});
            }
            next = &*sample;
        }
        back_ = {};
    }

    const KeepFirst& keepFirst_;
    Iterator entering_;
    Iterator end_;
    std::vector<Candidate> front_;  // the extremum last; empty where the back part has it
    Candidate back_;
    Candidate best_;
};

}  // namespace vorm::assessments::detail
