#include <vorm/evaluation.hpp>

#include <cmath>
#include <iostream>

using namespace vorm::evaluation;

int main() {
    // What came from a bus, in milliseconds of its clock, and with a hole of a second.
    const std::vector<std::int64_t> milliseconds{46'408'000, 46'408'100, 46'408'200, 46'409'300};
    const std::vector<float> speeds{12.5F, 12.0F, NAN, 11.0F};
    const std::vector<std::int32_t> gears{2, 2, 1, 1};
    const TickTimes times{milliseconds, *ExactTime::ofSeconds(0.001)};

    SignalColumn speed{"speed", times, std::span(speeds)};
    speed.nan = NanMeaning::NoSample;
    speed.maxGap = ExactTime::ofSeconds(0.5);
    SignalColumn gear{"gear", times, std::span(gears)};
    gear.enumeration =
        std::make_shared<Enumeration>(Enumeration{"gear", {"parked", "reverse", "drive"}});

    for (const Signal& signal : recordingOf("bus", {speed, gear}).signals) {
        std::cout << signal.name << ": " << typeText(signal.type) << " in " << signal.pieces->size()
                  << (signal.pieces->size() == 1 ? " piece\n" : " pieces\n");
    }
}
