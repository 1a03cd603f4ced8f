#pragma once

// For the quantitative until: the best that waiting for psi within a sliding window can give.
//
// Where waiting on gives x, a step gives max(psi, min(phi, x)), and several steps give a function
// of the same form. The steps of a window are thus one pair of values, kept in the two stacks that
// window_candidates.hpp tells of: steps in front are composed from behind when they are needed
// first, those that enter later one by one.

#include <vorm/assessments/operators/extremum.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace vorm::assessments::detail {

template <class T>
T lesser(const T& a, const T& b) {
    return support::Extremum<support::KeepSmaller>()(a, b);
}

template <class T>
T greater(const T& a, const T& b) {
    return support::Extremum<support::KeepGreater>()(a, b);
}

/// What waiting over some steps makes of the value after them: max(psi, min(phi, value)).
template <class T>
struct Waiting {
    T psi;
    T phi;

    T operator()(const T& after) const { return greater(psi, lesser(phi, after)); }

    /// This waiting, and `later` after it.
    Waiting then(const Waiting& later) const {
        return {(*this)(later.psi), lesser(phi, later.phi)};
    }
};

/// The values of both operands from a time on.
template <class T>
struct UntilStep {
    double time;
    Waiting<T> values;
};

/// A window over steps, of which there is at least one; it begins and ends inside the first one.
template <class T>
class UntilWindow {
public:
    explicit UntilWindow(std::vector<UntilStep<T>> steps)
        : steps_(std::move(steps)), back_(steps_.front().values) {}

    bool allEntered() const { return last_ + 1 == steps_.size(); }
    /// When the step after the window's last one begins. Not if all have entered.
    double entering() const { return steps_[last_ + 1].time; }
    void enter() {
        if (first_ < composed_) {
            const Waiting<T>& entered = steps_[last_].values;
            back_ = composed_ < last_ ? back_.then(entered) : entered;
        }
        ++last_;
    }

    /// Whether the window's first step is the last of all.
    bool allLeft() const { return first_ + 1 == steps_.size(); }
    /// When the window's first step ends. Not if it is the last of all.
    double leaving() const { return steps_[first_ + 1].time; }
    void leave() { ++first_; }

    /// phi at the window's begin, limited by the best that waiting for psi in the window gives.
    T value() {
        const T& goal = steps_[last_].values.psi;
        if (first_ == last_) {
            return lesser(steps_[first_].values.phi, goal);
        }
        if (first_ >= composed_) {
            composeFront();
        }
        return steps_[first_].values(composed_ < last_ ? back_(goal) : goal);
    }

private:
    void composeFront() {
        Waiting<T> ahead = steps_[last_ - 1].values;
        for (std::size_t i = last_; i-- > first_;) {
            Waiting<T>& step = steps_[i].values;
            ahead = i + 1 < last_ ? step.then(ahead) : ahead;
            step = {lesser(step.phi, ahead.psi), ahead.phi};
        }
        composed_ = last_;
    }

    std::vector<UntilStep<T>> steps_;  // before composed_: composed, and limited by their phi
    std::size_t first_ = 0;
    std::size_t last_ = 0;
    std::size_t composed_ = 0;
    Waiting<T> back_;  // the steps from composed_ to before last_, if there are any
};

/// Writes the until of the steps, of which there is at least one, for the windows [t, t + width]
/// of finite width that start up to `lastStart`.
template <class T>
void slideUntil(std::vector<UntilStep<T>> steps, double width, double lastStart,
                support::TraceBuilder<T>& output) {
    double time = steps.front().time;
    UntilWindow<T> window(std::move(steps));
    while (!(time > lastStart)) {
        while (!window.allEntered() && window.entering() - width <= time) {
            window.enter();
        }
        if (!window.allLeft() && window.leaving() <= time) {
            window.leave();
        }
        output.append({time, window.value()});
        if (window.allLeft()) {
            break;
        }
        time = window.leaving();
        if (!window.allEntered()) {
            time = std::min(time, window.entering() - width);
        }
    }
}

}  // namespace vorm::assessments::detail
