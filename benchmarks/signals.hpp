#pragma once

// The signals that every benchmark runs on, and the containers of the plain loops.

#include <vorm/assessments.hpp>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vorm::bench {

using namespace vorm::assessments;

template <class T>
struct Sample {
    double time;
    T value;
};

template <class T>
using Flat = std::vector<Sample<T>>;
template <class T>
using Deque = std::deque<Sample<T>>;

enum class Course { Noisy, Smooth, Falling };

inline std::string name(Course course) {
    return course == Course::Noisy ? "noisy" : course == Course::Smooth ? "smooth" : "falling";
}

/// Irregular samples, one time unit apart on average.
inline Flat<double> irregular(Course course, std::size_t count, unsigned seed = 1) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> gap(0.1, 1.9);
    std::uniform_real_distribution<double> noise(0, 1);
    Flat<double> samples;
    double time = gap(random);
    for (std::size_t i = 0; i < count; ++i) {
        const double value = course == Course::Noisy    ? noise(random)
                             : course == Course::Smooth ? std::sin(time / 30)
                                                        : -static_cast<double>(i);
        samples.push_back({time, value});
        time += gap(random);
    }
    return samples;
}

/// Alternating truth at irregular times, so that every sample is a change.
inline Flat<bool> alternating(std::size_t count, unsigned seed = 1) {
    Flat<bool> samples;
    for (const Sample<double>& sample : irregular(Course::Noisy, count, seed)) {
        samples.push_back({sample.time, samples.size() % 2 == 0});
    }
    return samples;
}

template <class T>
TimedTrace_T<T> toTrace(const Flat<T>& samples, INTERPOLATION_METHOD method) {
    TimedTrace_T<T> trace(method, -std::numeric_limits<double>::infinity());
    for (const Sample<T>& sample : samples) {
        trace.push_back({sample.time, sample.value});
    }
    return trace;
}

template <class T>
Deque<T> toDeque(const Flat<T>& samples) {
    return Deque<T>(samples.begin(), samples.end());
}

/// Runs `job` under the name and reports its cost per input sample, and per byte where it has any.
template <class Job>
void add(const std::string& name, std::size_t samples, Job job, std::size_t bytes = 0) {
    const auto run = [samples, bytes, job = std::move(job)](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(job());
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(samples));
        if (bytes > 0) {
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
        }
    };
    benchmark::RegisterBenchmark((name + "/" + std::to_string(samples)).c_str(), run)
        ->Unit(benchmark::kMillisecond);
}

inline const std::size_t sizes[] = {10'000, 100'000, 1'000'000};

}  // namespace vorm::bench
