#include <vorm/evaluation.hpp>

#include <array>
#include <iostream>

using namespace vorm::evaluation;

constexpr const char* requirements = R"toml(
[[assessment]]
name = "braking is quick"
formula = "rise(brake) -> eventually[0, 3 s](speed < 2)"
)toml";

int main() {
    const AssessmentFile file = parseAssessmentFile(requirements, "requirements.toml");
    const std::vector<double> seconds{0, 1, 2, 3, 4, 5, 6};
    const std::vector<double> speeds{20, 20, 15, 9, 5, 3, 1};
    const std::array<bool, 7> brake{false, true, true, true, true, true, true};
    const Recording recording =
        recordingOf("stop", {{"speed", NumberTimes{seconds}, std::span(speeds)},
                             {"brake", NumberTimes{seconds}, std::span(brake)}});

    const RecordingOutcome outcome = assess(file, recording);
    std::cout << tableReport({file.name, file.title, {outcome}});
}
