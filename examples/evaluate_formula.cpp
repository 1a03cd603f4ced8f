#include <vorm/evaluation.hpp>

#include <iostream>

using namespace vorm;

int main() {
    evaluation::Recording recording;
    recording.timeline = evaluation::Timeline().over(0, 12e9);
    assessments::TimedTrace_T<double> pressure(assessments::INTERPOLATION_METHOD::LINEAR, 0);
    for (const auto& [seconds, bar] : {std::pair(0., 2.), {4., 8.}, {8., 3.}, {12., 7.}}) {
        pressure.push_back(
            {recording.timeline.at(*evaluation::ExactTime::ofSeconds(seconds)), bar});
    }
    recording.signals.push_back({"pressure", evaluation::SignalType::of<double>(), "bar",
                                 std::make_shared<const evaluation::TracePieces>(
                                     evaluation::TracePieces{std::move(pressure)})});

    const auto outcome =
        evaluation::evaluate("pressure > 5 -> eventually[0, 2 s](pressure < 4)", recording);
    for (const auto& [span, truth] : outcome.truth) {
        if (truth != evaluation::certainlyTrue) {
            std::cout << (truth == evaluation::isOpen ? "no result" : "fails") << " from "
                      << span.start.text() << " s to " << span.end.text() << " s\n";
        }
    }
}
