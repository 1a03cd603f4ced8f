#include <vorm/evaluation.hpp>

#include <iostream>

using namespace vorm::evaluation;

int main() {
    const std::vector<double> seconds{0, 4, 8, 12};
    const std::vector<double> bars{2, 8, 3, 7};
    SignalColumn pressure{"pressure", NumberTimes{seconds}, std::span(bars)};
    pressure.interpolation = vorm::assessments::INTERPOLATION_METHOD::LINEAR;
    const Recording recording = recordingOf("test bench", {pressure});

    const auto outcome = evaluate("pressure > 5 -> eventually[0, 2 s](pressure < 4)", recording);
    for (const auto& [span, truth] : outcome.truth) {
        if (truth != certainlyTrue) {
            std::cout << (truth == isOpen ? "no result" : "fails") << " from " << span.start.text()
                      << " s to " << span.end.text() << " s\n";
        }
    }
}
