#include "axis_ticks.hpp"

#include <array>
#include <cmath>

namespace vorm::evaluation {
namespace {

// The first multiple that is not below.
WideInteger roundedUp(WideInteger number, WideInteger step) {
    const WideInteger rest = number % step;
    return rest > 0 ? number - rest + step : number - rest;
}

}  // namespace

std::vector<ExactTime> timeTicks(ExactTime from, ExactTime to, std::size_t most) {
    const WideInteger span = (to - from).attoseconds();
    WideInteger step = 1;
    for (std::size_t i = 0; step * static_cast<WideInteger>(most - 1) < span; ++i) {
        step = i % 3 == 1 ? step / 2 * 5 : step * 2;
    }
    std::vector<ExactTime> times;
    for (WideInteger time = roundedUp(from.attoseconds(), step); time <= to.attoseconds();
         time += step) {
        times.emplace_back(time);
    }
    return times;
}

std::vector<double> valueTicks(double least, double greatest, std::size_t most) {
    const double distance =
        greatest / static_cast<double>(most) - least / static_cast<double>(most);
    const double power = std::pow(10, std::floor(std::log10(distance)));
    double step = 10 * power;
    for (const double factor : std::array{5.0, 2.0, 1.0}) {
        step = factor * power >= distance ? factor * power : step;
    }
    // Counted by an integer: adding 1 no longer changes a number beyond 2^53.
    const double first = std::ceil(least / step);
    std::vector<double> values;
    for (std::size_t i = 0; i <= most; ++i) {
        const double value = (first + static_cast<double>(i)) * step;
        if (value <= greatest && (values.empty() || values.back() < value)) {
            values.push_back(value);
        }
    }
    return values;
}

}  // namespace vorm::evaluation
