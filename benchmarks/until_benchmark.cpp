// Until and since on truth and on numbers.

#include "signals.hpp"

#include <algorithm>

namespace vorm::bench {
namespace {

using Intervals = std::vector<std::pair<double, double>>;

template <class Container>
Intervals whereTrue(const Container& samples) {
    Intervals intervals;
    for (auto sample = samples.begin(); sample != samples.end(); ++sample) {
        if (sample->value) {
            const auto next = std::next(sample);
            intervals.push_back({sample->time, next == samples.end() ? sample->time : next->time});
        }
    }
    return intervals;
}

// phi until psi within [0, ahead], or since within [0, back], on intervals of truth: each part of
// phi's truth in which psi becomes true holds from `ahead` before that on, or to `back` after it.
template <class Container>
Intervals waiting(const Container& phi, const Container& psi, double ahead, double back) {
    const Intervals holds = whereTrue(phi);
    const Intervals goals = whereTrue(psi);
    Intervals result;
    auto goal = goals.begin();
    for (const auto& [start, end] : holds) {
        while (goal != goals.end() && goal->second <= start) {
            ++goal;
        }
        for (auto reached = goal; reached != goals.end() && reached->first <= end; ++reached) {
            const double from = std::max(start, reached->first - ahead);
            const double to = std::min(end, reached->second + back);
            if (!result.empty() && from <= result.back().second) {
                result.back().second = std::max(result.back().second, to);
            } else {
                result.push_back({from, to});
            }
        }
    }
    return result;
}

void addTruth(double width, std::size_t size) {
    const auto a = alternating(size / 2, 1);
    const auto b = alternating(size / 2, 2);
    const auto phi = toTrace(a, INTERPOLATION_METHOD::ZOH);
    const auto psi = toTrace(b, INTERPOLATION_METHOD::ZOH);
    const auto phiDeque = toDeque(a);
    const auto psiDeque = toDeque(b);
    const std::string job = "Until bool/alternating width " + std::to_string(int(width));
    add(job + "/library", size, [=] { return phi.Until(psi, 0, width); });
    add(job + "/flat", size, [=] { return waiting(a, b, width, 0); });
    add(job + "/deque", size, [=] { return waiting(phiDeque, psiDeque, width, 0); });
    const std::string past = "Since bool/alternating width " + std::to_string(int(width));
    add(past + "/library", size, [=] { return phi.Since(psi, 0, width); });
    add(past + "/flat", size, [=] { return waiting(a, b, 0, width); });
    add(past + "/deque", size, [=] { return waiting(phiDeque, psiDeque, 0, width); });
}

const bool registered = [] {
    for (const std::size_t size : {sizes[1], sizes[2]}) {
        for (const double width : {1.0, 50.0, 5000.0}) {
            addTruth(width, size);
        }
        const auto phi = toTrace(irregular(Course::Noisy, size / 2, 1), INTERPOLATION_METHOD::ZOH);
        const auto psi = toTrace(irregular(Course::Noisy, size / 2, 2), INTERPOLATION_METHOD::ZOH);
        const double unbounded = std::numeric_limits<double>::infinity();
        add("UntimedUntil bool/alternating/library", size,
            [=, phiFlags = toTrace(alternating(size / 2, 1), INTERPOLATION_METHOD::ZOH),
             psiFlags = toTrace(alternating(size / 2, 2), INTERPOLATION_METHOD::ZOH)] {
                return phiFlags.UntimedUntil(psiFlags);
            });
        add("Until double/noisy unbounded/library", size,
            [=] { return phi.Until(psi, unbounded); });
        add("Until double/noisy width 50/library", size, [=] { return phi.Until(psi, 0, 50); });
        add("Since double/noisy unbounded/library", size,
            [=] { return phi.Since(psi, 0, unbounded); });
        add("Since double/noisy width 50/library", size, [=] { return phi.Since(psi, 0, 50); });
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench
