// Prints the peak memory of each operator at a million samples as a Markdown table: what is
// allocated while it runs, next to what its result keeps.

#include "signals.hpp"

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::size_t live = 0;
std::size_t peak = 0;

}  // namespace

// Counting in place of the program's allocation functions; the library uses these too.
void* operator new(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    live += malloc_usable_size(memory);
    peak = std::max(peak, live);
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        live -= malloc_usable_size(memory);
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace vorm::bench {
namespace {

constexpr std::size_t samples = 1'000'000;
constexpr double megabyte = 1e6;

template <class Operation>
void row(const char* name, Operation operation) {
    const std::size_t before = live;
    peak = live;
    const auto result = operation();
    std::printf("| %s | %zu | %.1f | %.1f |\n", name, result.points.size(),
                static_cast<double>(live - before) / megabyte,
                static_cast<double>(peak - before) / megabyte);
}

void table() {
    const auto noisy = irregular(Course::Noisy, samples, 1);
    const auto other = irregular(Course::Noisy, samples, 2);
    const auto held = toTrace(noisy, INTERPOLATION_METHOD::ZOH);
    const auto heldOther = toTrace(other, INTERPOLATION_METHOD::ZOH);
    const auto line = toTrace(noisy, INTERPOLATION_METHOD::LINEAR);
    const auto lineOther = toTrace(other, INTERPOLATION_METHOD::LINEAR);
    const auto falling = toTrace(irregular(Course::Falling, samples), INTERPOLATION_METHOD::LINEAR);
    auto fallingSteps = falling;
    fallingSteps.interpolation = INTERPOLATION_METHOD::ZOH;
    const auto phi = toTrace(alternating(samples, 1), INTERPOLATION_METHOD::ZOH);
    const auto psi = toTrace(alternating(samples, 2), INTERPOLATION_METHOD::ZOH);
    const TimedTrace_T<double> half(0.5);

    std::printf(
        "| operator | samples of the result | result, MB | peak, MB |\n|---|--:|--:|--:|\n");
    row("copy of a trace", [&] { return TimedTrace_T<double>(held); });
    row("extractWindow, all of it", [&] { return held.extractWindow(0, 1e9, 0); });
    row("Shift", [&] { return held.Shift(3, true); });
    row("Add, held", [&] { return held.Add(heldOther); });
    row("And, linear", [&] { return line.And(lineOther); });
    row("Abs, linear", [&] { return line.Abs(); });
    row("Scale", [&] { return line.Scale(half); });
    row("UMinus", [&] { return line.UMinus(); });
    row("x > c, linear", [&] { return line.combine<bool>(half, ValueGreater()); });
    row("Slope", [&] { return line.Slope(); });
    row("Eventually, held, width 50, noisy", [&] { return held.Eventually(0, 50); });
    row("Eventually, held, width 5000, falling", [&] { return fallingSteps.Eventually(0, 5000); });
    row("Eventually, linear, width 50, noisy", [&] { return line.Eventually(0, 50); });
    row("Eventually, linear, width 5000, falling", [&] { return falling.Eventually(0, 5000); });
    row("Eventually, linear, from 10 to 60", [&] { return line.Eventually(10, 60); });
    row("Globally, bool, width 1", [&] { return phi.Globally(0, 1); });
    row("UntimedUntil, bool", [&] { return phi.UntimedUntil(psi); });
    row("Until, bool, from 0 to 50", [&] { return phi.Until(psi, 0, 50); });
    row("Until, double, unbounded",
        [&] { return held.Until(heldOther, std::numeric_limits<double>::infinity()); });
    row("Until, double, from 0 to 50", [&] { return held.Until(heldOther, 0, 50); });
}

}  // namespace
}  // namespace vorm::bench

int main() {
    vorm::bench::table();
}
