#pragma once

// Random recordings on decimal grids of time, and the texts that they may be written as.

#include "engine.hpp"
#include "quantity.hpp"
#include "support/expressions.hpp"

#include <array>
#include <set>
#include <string>
#include <vector>

namespace vorm::evaluation::test {

using vorm::test::anyIndex;
using vorm::test::anyOf;

inline bool onceIn(std::size_t count) {
    return anyIndex(count) == count - 1;
}

/// From the first number to the last one, which is greater; small ones come first.
inline int anyBetween(int first, int last) {
    const auto count = static_cast<std::size_t>(last - first) + 1;
    return first + static_cast<int>(anyIndex(count));
}

struct Unit {
    const char* name;
    Rational seconds;
};

inline const std::array<Unit, 7> unitsOfTime{{{"s", 1},
                                              {"", 1},
                                              {"ms", powerOfTen(-3)},
                                              {"us", powerOfTen(-6)},
                                              {"ns", powerOfTen(-9)},
                                              {"min", 60},
                                              {"h", 3600}}};

/// The grid that all times of a recording and its formulas are on. The oracle counts in its ticks.
struct Grid {
    Rational tick;    ///< in seconds
    Rational offset;  ///< seconds at tick 0

    Rational secondsAt(const Rational& ticks) const { return offset + ticks * tick; }
};

Grid anyGrid();

/// A length of time in some unit that can write it.
std::string anyLengthText(const Rational& seconds);

struct RandomSignal {
    std::string name;
    bool isTruth;
    Samples said;

    bool hasNans() const {
        return std::any_of(said.samples.begin(), said.samples.end(),
                           [](const Sample& sample) { return !sample.value; });
    }
};

RandomSignal anySignal(const std::string& name);

struct RandomRecording {
    Grid grid;
    std::vector<RandomSignal> signals;
    bool isFromFirst = false;  ///< whether time 0 is the first sample

    bool hasNans() const {
        return std::any_of(signals.begin(), signals.end(),
                           [](const RandomSignal& signal) { return signal.hasNans(); });
    }

    Rational firstTick() const {
        Rational first = signals[0].said.samples[0].time;
        for (const RandomSignal& signal : signals) {
            first = std::min(first, signal.said.samples[0].time);
        }
        return first;
    }

    /// Seconds of tick 0, as they are reported.
    Rational reportedOffset() const {
        return isFromFirst ? Rational(-firstTick() * grid.tick) : grid.offset;
    }

    /// As they are reported.
    Rational secondsAt(const Rational& ticks) const { return reportedOffset() + ticks * grid.tick; }
};

/// What formulas call the time of a recording.
inline const std::string timeName = "time";

/// The signals of these names; all of them where the time is one, which is known over all rows.
std::vector<RandomSignal> signalsCalled(const RandomRecording& recording,
                                        const std::set<std::string>& names);

RandomRecording anyRecording();

/// How the times of a recording are written.
struct TimeWriting {
    Unit unit = unitsOfTime[0];
    int places = 0;           ///< digits after the point, at least
    bool isExponent = false;  ///< 46408.5 as 464085e-1

    std::string text(const Rational& seconds) const {
        const Rational number = seconds / unit.seconds;
        if (!isExponent) {
            return *decimal(number, places);
        }
        int exponent = 0;
        while (!isWhole(number * powerOfTen(exponent))) {
            ++exponent;
        }
        return *decimal(number * powerOfTen(exponent)) + "e-" + std::to_string(exponent);
    }
};

TimeWriting anyTimeWriting(const Grid& grid);

enum class Form { Wide, Long, JsonLines };

Times timesOf(const std::vector<RandomSignal>& signals);

std::string recordingText(const RandomRecording& recording, const TimeWriting& writing, Form form);

/// What the assessment file says of the recording.
std::string layoutText(const RandomRecording& recording, const TimeWriting& writing, Form form);

}  // namespace vorm::evaluation::test
