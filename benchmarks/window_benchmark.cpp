// Sliding window extrema over held and linear signals, and the bounded operators on truth.

#include "signals.hpp"

#include <algorithm>

namespace vorm::bench {
namespace {

// Held values: the usual monotone queue, with an output wherever the maximum changes. A sample
// enters at its time less the width and leaves when the next one comes.
template <class Value, class Container>
Container slidingMaximum(const Container& samples, double width) {
    std::deque<std::size_t> queue;
    Container output;
    const double start = samples.front().time;
    const double last = samples.back().time - width;
    const auto emit = [&](double time) {
        const Value value = samples[queue.front()].value;
        if (output.empty() || output.back().value != value) {
            if (!output.empty() && output.back().time == time) {
                output.back().value = value;
            } else {
                output.push_back({time, value});
            }
        }
    };
    const auto enter = [&](std::size_t i) {
        while (!queue.empty() && samples[i].value >= samples[queue.back()].value) {
            queue.pop_back();
        }
        queue.push_back(i);
    };
    std::size_t entering = 0;
    while (entering < samples.size() && samples[entering].time - start <= width) {
        enter(entering++);
    }
    emit(start);
    std::size_t leaving = 0;
    while (true) {
        const double enters = entering < samples.size() ? samples[entering].time - width : INFINITY;
        const double leaves = leaving + 1 < samples.size() ? samples[leaving + 1].time : INFINITY;
        const double time = std::min(enters, leaves);
        if (!(time <= last)) {
            return output;
        }
        if (enters == time) {
            enter(entering++);
        }
        if (leaves == time) {
            if (queue.front() == leaving) {
                queue.pop_front();
            }
            ++leaving;
        }
        emit(time);
    }
}

// Linear values: between two events (a sample at either end of the window) the maximum is that of
// the two ends, which are straight, and of the samples between.
template <class Container>
Container slidingMaximumOfLine(const Container& samples, double width) {
    std::deque<std::size_t> queue;
    Container output;
    const auto at = [&](std::size_t i, double time) {
        if (i + 1 >= samples.size()) {
            return samples[i].value;
        }
        const auto& p = samples[i];
        const auto& q = samples[i + 1];
        return p.value + (time - p.time) * (q.value - p.value) / (q.time - p.time);
    };
    const double last = samples.back().time - width;
    std::vector<double> corners;
    std::size_t left = 0;
    std::size_t right = 0;
    double time = samples.front().time;
    const auto enter = [&](std::size_t i) {
        while (!queue.empty() && samples[i].value >= samples[queue.back()].value) {
            queue.pop_back();
        }
        queue.push_back(i);
    };
    while (right + 1 < samples.size() && samples[right + 1].time - time <= width) {
        enter(++right);
    }
    while (true) {
        const double enters =
            right + 1 < samples.size() ? samples[right + 1].time - width : INFINITY;
        const double leaves = left + 1 < samples.size() ? samples[left + 1].time : INFINITY;
        const double next = std::min({enters, leaves, last});
        const double inner = queue.empty() ? -INFINITY : samples[queue.front()].value;
        const double l0 = at(left, time);
        const double r0 = at(right, time + width);
        const double l1 = at(left, next);
        const double r1 = at(right, next + width);
        output.push_back({time, std::max({l0, r0, inner})});
        // Corners of the maximum of two lines and a level between two events.
        corners.clear();
        const auto meet = [&](double a0, double a1, double b0, double b1) {
            if ((a0 < b0) != (a1 < b1)) {
                corners.push_back(time + (next - time) * (b0 - a0) / ((a1 - a0) - (b1 - b0)));
            }
        };
        meet(l0, l1, r0, r1);
        meet(l0, l1, inner, inner);
        meet(r0, r1, inner, inner);
        std::sort(corners.begin(), corners.end());
        for (const double corner : corners) {
            if (corner > output.back().time && corner < next) {
                output.push_back(
                    {corner, std::max({at(left, corner), at(right, corner + width), inner})});
            }
        }
        if (!(next < last)) {
            output.push_back({last, std::max({l1, r1, inner})});
            return output;
        }
        if (enters == next) {
            enter(++right);
        }
        if (leaves == next) {
            ++left;
            if (!queue.empty() && queue.front() == left) {
                queue.pop_front();
            }
        }
        time = next;
    }
}

void addHeld(Course course, double width, std::size_t size) {
    const auto samples = irregular(course, size);
    const auto trace = toTrace(samples, INTERPOLATION_METHOD::ZOH);
    const auto deque = toDeque(samples);
    const std::string job =
        "Eventually held/" + name(course) + " width " + std::to_string(int(width));
    add(job + "/library", size, [=] { return trace.Eventually(0, width); });
    add(job + "/flat", size, [=] { return slidingMaximum<double>(samples, width); });
    add(job + "/deque", size, [=] { return slidingMaximum<double>(deque, width); });
}

void addLinear(Course course, double width, std::size_t size) {
    const auto samples = irregular(course, size);
    const auto trace = toTrace(samples, INTERPOLATION_METHOD::LINEAR);
    const auto deque = toDeque(samples);
    const std::string job =
        "Eventually linear/" + name(course) + " width " + std::to_string(int(width));
    add(job + "/library", size, [=] { return trace.Eventually(0, width); });
    add(job + "/flat", size, [=] { return slidingMaximumOfLine(samples, width); });
    add(job + "/deque", size, [=] { return slidingMaximumOfLine(deque, width); });
}

void addTruth(double width, std::size_t size) {
    const auto samples = alternating(size);
    const auto trace = toTrace(samples, INTERPOLATION_METHOD::ZOH);
    const auto deque = toDeque(samples);
    const std::string job = "Globally bool/alternating width " + std::to_string(int(width));
    const auto negated = [](auto container) {
        for (auto& sample : container) {
            sample.value = !sample.value;
        }
        return container;
    };
    add(job + "/library", size, [=] { return trace.Globally(0, width); });
    add(job + "/flat", size,
        [=, flat = negated(samples)] { return slidingMaximum<bool>(flat, width); });
    add(job + "/deque", size,
        [=, flat = negated(deque)] { return slidingMaximum<bool>(flat, width); });
}

const bool registered = [] {
    for (const std::size_t size : {sizes[1], sizes[2]}) {
        for (const Course course : {Course::Noisy, Course::Smooth, Course::Falling}) {
            for (const double width : {50.0, 5000.0}) {
                addHeld(course, width, size);
                addLinear(course, width, size);
            }
        }
        const auto noisy = toTrace(irregular(Course::Noisy, size), INTERPOLATION_METHOD::ZOH);
        add("timedWindow any order/noisy width 50/library", size, [=] {
            auto trace = noisy;
            trace.timedWindow(50, [](double a, double b) { return a >= b; });
            return trace;
        });
        for (const double width : {1.0, 50.0, 5000.0}) {
            addTruth(width, size);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench
