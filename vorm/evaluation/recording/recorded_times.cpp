#include "recorded_times.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorm::evaluation {
namespace {

constexpr std::size_t mostSamples = 20'000;
constexpr int millisecondDigits = 3;

// What a look at the samples of a recording has found.
struct SeenTimes {
    int digits = 0;
    double leastDistance = std::numeric_limits<double>::infinity();  // in ticks

    template <class T>
    void look(const assessments::TimedTrace_T<T>& trace, std::size_t step,
              const Timeline& timeline) {
        for (std::size_t i = 0; i < trace.points.size(); i += step) {
            const ExactTime time = timeline.timeAt(trace.points[i].time);
            while (digits < allDigits && rounded(time, digits) != time) {
                ++digits;
            }
            if (i > 0) {
                leastDistance =
                    std::min(leastDistance, trace.points[i].time - trace.points[i - 1].time);
            }
        }
    }
};

}  // namespace

RecordedTimes recordedTimes(const Recording& recording) {
    std::size_t samples = 0;
    for (const Signal& signal : recording.signals) {
        for (const auto& piece : *signal.pieces) {
            piece.visit([&](const auto& trace) { samples += trace.points.size(); });
        }
    }
    SeenTimes found;
    const std::size_t step = samples / mostSamples + 1;
    for (const Signal& signal : recording.signals) {
        for (const auto& piece : *signal.pieces) {
            piece.visit([&](const auto& trace) { found.look(trace, step, recording.timeline); });
        }
    }
    int digits = found.digits;
    if (std::isfinite(found.leastDistance)) {
        const double distance = found.leastDistance * recording.timeline.tick().seconds();
        digits = std::min(digits, static_cast<int>(std::ceil(-std::log10(distance))) + 1);
    }
    return {recording.clock, std::max(digits, millisecondDigits)};
}

}  // namespace vorm::evaluation
