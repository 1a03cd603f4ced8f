// Combining two traces with different time bases, and comparing a line with a constant.

#include "signals.hpp"

#include <memory>

namespace vorm::bench {
namespace {

// The sum of two held signals at the union of their sample times.
template <class Container>
Container addHeld(const Container& a, const Container& b) {
    Container sums;
    auto i = a.begin();
    auto j = b.begin();
    double left = 0;
    double right = 0;
    while (i != a.end() || j != b.end()) {
        const double leftTime = i != a.end() ? i->time : INFINITY;
        const double rightTime = j != b.end() ? j->time : INFINITY;
        const double time = std::min(leftTime, rightTime);
        if (leftTime == time) {
            left = i->value;
            ++i;
        }
        if (rightTime == time) {
            right = j->value;
            ++j;
        }
        sums.push_back({time, left + right});
    }
    return sums;
}

// Where a line through the samples is not above the limit, as intervals.
template <class Container>
std::vector<std::pair<double, double>> notAbove(const Container& line, double limit) {
    std::vector<std::pair<double, double>> intervals;
    auto before = line.begin();
    double start = before->time;
    bool above = before->value > limit;
    for (auto now = std::next(before); now != line.end(); before = now++) {
        const bool nowAbove = now->value > limit;
        if (nowAbove == above) {
            continue;
        }
        const double slope = (now->value - before->value) / (now->time - before->time);
        const double crossing = before->time + (limit - before->value) / slope;
        if (nowAbove) {
            intervals.emplace_back(start, crossing);
        }
        start = crossing;
        above = nowAbove;
    }
    if (!above) {
        intervals.emplace_back(start, before->time);
    }
    return intervals;
}

void addCombination(std::size_t size) {
    const auto a = irregular(Course::Noisy, size / 2, 1);
    const auto b = irregular(Course::Noisy, size / 2, 2);
    const auto left = toTrace(a, INTERPOLATION_METHOD::ZOH);
    const auto right = toTrace(b, INTERPOLATION_METHOD::ZOH);
    const auto leftDeque = toDeque(a);
    const auto rightDeque = toDeque(b);
    const std::function<double(double, double)> sum = [](double x, double y) { return x + y; };
    add("combine/Function/library", size, [=] { return left.Function(right, sum); });
    add("combine/Function/flat", size, [=] { return addHeld(a, b); });
    add("combine/Function/deque", size, [=] { return addHeld(leftDeque, rightDeque); });
    add("combine/Add/library", size, [=] { return left.Add(right); });
    add("combine/Add/flat", size, [=] { return addHeld(a, b); });
    add("combine/Add/deque", size, [=] { return addHeld(leftDeque, rightDeque); });
    const auto leftLine = toTrace(a, INTERPOLATION_METHOD::LINEAR);
    const auto rightLine = toTrace(b, INTERPOLATION_METHOD::LINEAR);
    add("combine/And linear/library", size, [=] { return leftLine.And(rightLine); });
}

void addComparison(Course course, double limit, std::size_t size) {
    const auto samples = irregular(course, size);
    const auto line = toTrace(samples, INTERPOLATION_METHOD::LINEAR);
    const auto deque = toDeque(samples);
    const TimedTrace_T<double> constant(limit);
    const std::string job = "x greater c to intervals/" + name(course);
    add(job + "/library", size,
        [=] { return line.combine<bool>(constant, ValueGreater()).getErrorIntervalList(); });
    add(job + "/flat", size, [=] { return notAbove(samples, limit); });
    add(job + "/deque", size, [=] { return notAbove(deque, limit); });
}

// A trace of noise from 0 to 1 and a constant. The copy writes as many samples and computes
// nothing.
void addConstant(const std::string& variant, INTERPOLATION_METHOD method, double limit,
                 std::size_t size) {
    using Trace = TimedTrace_T<double>;
    const auto x = std::make_shared<const Trace>(toTrace(irregular(Course::Noisy, size), method));
    const Trace c(limit);
    add("copy/" + variant + "/library", size, [=] { return *x; });
    add("x + c/" + variant + "/library", size, [=] { return x->Add(c); });
    add("c - x/" + variant + "/library", size, [=] { return c.Substract(*x); });
    add("c * x/" + variant + "/library", size, [=] { return x->Scale(c); });
    add("x greater c/" + variant + "/library", size,
        [=] { return x->combine<bool>(c, ValueGreater()); });
}

const bool registered = [] {
    for (const std::size_t size : {sizes[1], sizes[2], 10 * sizes[2]}) {
        addConstant("held", INTERPOLATION_METHOD::ZOH, 0.5, size);
        addConstant("linear apart", INTERPOLATION_METHOD::LINEAR, 2, size);
        addConstant("linear meeting", INTERPOLATION_METHOD::LINEAR, 0.5, size);
    }
    for (const std::size_t size : sizes) {
        addCombination(size);
        addComparison(Course::Noisy, 0.99, size);
        addComparison(Course::Smooth, 0.5, size);
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench
