// Growing a trace and cutting a window out of it.

#include "signals.hpp"

#include <algorithm>

namespace vorm::bench {
namespace {

// What push_back does for a held trace, written down once: check the time, store changes.
template <class Container>
Container pushAll(const Flat<double>& samples) {
    Container stored;
    for (const Sample<double>& sample : samples) {
        if (!stored.empty()) {
            if (!(sample.time > stored.back().time)) {
                throw std::invalid_argument("time");
            }
            if (sample.value == stored.back().value) {
                continue;
            }
        }
        stored.push_back(sample);
    }
    return stored;
}

template <class Container>
Container cut(const Container& samples, double start, double end) {
    const auto after = [](double time, const Sample<double>& sample) { return time < sample.time; };
    const auto first = std::upper_bound(samples.begin(), samples.end(), start, after) - 1;
    const auto last = std::upper_bound(first, samples.end(), end, after);
    Container window(first, last);
    window.front().time = start;
    return window;
}

const bool registered = [] {
    for (const std::size_t size : sizes) {
        const auto samples = irregular(Course::Noisy, size);
        add("push_back/held/library", size,
            [=] { return toTrace(samples, INTERPOLATION_METHOD::ZOH); });
        add("push_back/held/flat", size, [=] { return pushAll<Flat<double>>(samples); });
        add("push_back/held/deque", size, [=] { return pushAll<Deque<double>>(samples); });

        const double start = samples[size / 10].time + 0.01;
        const double end = samples[9 * size / 10].time + 0.01;
        const auto trace = toTrace(samples, INTERPOLATION_METHOD::ZOH);
        const auto deque = toDeque(samples);
        add("extractWindow/held/library", size, [=] { return trace.extractWindow(start, end, 0); });
        add("extractWindow/held/flat", size, [=] { return cut(samples, start, end); });
        add("extractWindow/held/deque", size, [=] { return cut(deque, start, end); });
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench
