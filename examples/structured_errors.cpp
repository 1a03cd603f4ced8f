#include <vorm/evaluation.hpp>

#include <iostream>

using namespace vorm::evaluation;

int main() {
    const AssessmentFile file = parseAssessmentFile(R"(
[[assessment]]
name = "not too fast"
formula = "sped < 30"
)",
                                                    "requirements.toml");
    const std::vector<double> seconds{0, 1};
    const std::vector<double> speeds{20, 31};
    const Recording recording =
        recordingOf("drive", {{"speed", NumberTimes{seconds}, std::span(speeds)}});

    for (const InputError& error : check(file, recording)) {
        const InputProblem& problem = error.problem();
        std::cout << "line " << problem.where.line << ", column " << problem.where.column << ": "
                  << problem.message << "; " << problem.advice << "\n";
    }
}
