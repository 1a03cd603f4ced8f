// Integrals and counts over windows, products and quotients of held signals.

#include "signals.hpp"

#include <algorithm>

namespace vorm::bench {
namespace {

// The integral over [t, t + width] wherever a sample enters or leaves the window.
template <class Container>
Flat<double> slidingIntegral(const Container& samples, double width) {
    Flat<double> output;
    const double last = samples.back().time - width;
    double integral = 0;
    double begin = samples.front().time;
    double end = begin;
    std::size_t leaving = 0;
    std::size_t entering = 0;
    const auto grow = [&](double to) {
        while (entering + 1 < samples.size() && samples[entering + 1].time <= to) {
            integral += (samples[entering + 1].time - end) * samples[entering].value;
            end = samples[++entering].time;
        }
        integral += (to - end) * samples[entering].value;
        end = to;
    };
    grow(begin + width);
    while (begin <= last) {
        output.push_back({begin, integral});
        const double leaves = leaving + 1 < samples.size() ? samples[leaving + 1].time : INFINITY;
        const double enters =
            entering + 1 < samples.size() ? samples[entering + 1].time - width : INFINITY;
        const double next = std::min(leaves, enters);
        integral -= (next - begin) * samples[leaving].value;
        leaving += leaves <= next ? 1 : 0;
        begin = next;
        if (begin <= last) {
            grow(begin + width);
        }
    }
    return output;
}

template <class Container>
Flat<double> product(const Container& a, const Container& b) {
    Flat<double> output;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        const double left = i < a.size() ? a[i].time : INFINITY;
        const double right = j < b.size() ? b[j].time : INFINITY;
        i += left <= right ? 1U : 0U;
        j += right <= left ? 1U : 0U;
        if (i > 0 && j > 0) {
            output.push_back({std::min(left, right), a[i - 1].value * b[j - 1].value});
        }
    }
    return output;
}

const bool registered = [] {
    for (const std::size_t size : {sizes[1], sizes[2]}) {
        const auto numbers = irregular(Course::Noisy, size, 1);
        const auto held = toTrace(numbers, INTERPOLATION_METHOD::ZOH);
        const auto numberDeque = toDeque(numbers);
        const auto flags = toTrace(alternating(size, 1), INTERPOLATION_METHOD::ZOH);
        for (const double width : {1.0, 50.0, 5000.0}) {
            const std::string job = "Integral double/noisy width " + std::to_string(int(width));
            add(job + "/library", size, [=] { return held.Integral(width); });
            add(job + "/flat", size, [=] { return slidingIntegral(numbers, width); });
            add(job + "/deque", size, [=] { return slidingIntegral(numberDeque, width); });
        }
        add("Integral bool/alternating width 50/library", size, [=] { return flags.Integral(50); });
        add("Count bool/alternating width 50/library", size, [=] { return flags.Count(50); });
        const auto a = irregular(Course::Noisy, size / 2, 1);
        const auto b = irregular(Course::Noisy, size / 2, 2);
        const auto x = toTrace(a, INTERPOLATION_METHOD::ZOH);
        const auto y = toTrace(b, INTERPOLATION_METHOD::ZOH);
        add("Multiply double/noisy/library", size, [=] { return x.Multiply(y); });
        add("Multiply double/noisy/flat", size, [=] { return product(a, b); });
        add("Divide double/noisy/library", size, [=] { return x.Divide(y); });
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench
