// Prints what a whole run costs, step by step, as Markdown tables: a table of four signals is read,
// assessments of all kinds are evaluated, and the report is made.
//
// whole_run [ROWS [JOBS]]

#include "recorded_file.hpp"

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/report/json_report.hpp>

#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace vorm::bench {
namespace {

using namespace evaluation;

constexpr const char* assessmentText = R"(
[signals]
a = { interpolation = "linear" }
b = { interpolation = "linear" }
c = { interpolation = "held" }
d = { interpolation = "held" }
)";

// Name and formula: one assessment for each kind of operator and interpolation.
constexpr std::pair<const char*, const char*> formulas[] = {
    {"comparison, linear noise", "a <= 0.99"},
    {"comparison, linear smooth", "b <= 0.99"},
    {"comparison, held noise", "c <= 990"},
    {"sum, linear", "a + b <= 1.9"},
    {"difference and abs, held", "abs(c - d) <= 1000"},
    {"product, linear", "2 * a - b <= 2.9"},
    {"slope, linear", "slope(b) <= 40"},
    {"growth, linear", "~Rise[50 ms](b, 0.5)"},
    {"window, wide", "always[0, 1 s](c < 999)"},
    {"window of the past", "always[-50 ms, 0](a < 0.9) -> c < 990"},
    {"response", "a > 0.95 -> eventually[0, 20 ms](c < 500)"},
    {"edge", "rise(c > 500) -> d < 90"},
    {"until", "rise(a > 0.9) -> (b < 2 until[0, 100 ms] c > 900)"},
};

AssessmentFile assessmentFile() {
    std::string text = assessmentText;
    for (const auto& [name, formula] : formulas) {
        text +=
            std::string("[[assessment]]\nname = \"") + name + "\"\nformula = \"" + formula + "\"\n";
    }
    return parseAssessmentFile(text, "whole run");
}

/// What a step takes: the time that passes, and the processor time of all threads, which other
/// programs on the machine disturb less.
struct Duration {
    double wall;
    double processor;
};

template <class Step>
Duration durationOf(const Step& step) {
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t processorBegin = std::clock();
    step();
    const std::clock_t processor = std::clock() - processorBegin;
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count(),
            static_cast<double>(processor) / CLOCKS_PER_SEC};
}

// The greatest memory of the process so far.
double peakMegabytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

// The samples of the recording's traces, counted as they lie in memory.
double traceMegabytes(const Recording& recording) {
    std::size_t bytes = 0;
    for (const Signal& signal : recording.signals) {
        for (const auto& piece : *signal.pieces) {
            piece.visit(
                [&](const auto& trace) { bytes += trace.points.size() * sizeof(trace.points[0]); });
        }
    }
    return static_cast<double>(bytes) / (1 << 20);
}

/// The evaluation of a recording's assessments, together or one at a time.
class Evaluation {
public:
    Evaluation(const AssessmentFile& file, const Recording& recording, unsigned jobs)
        : jobs_(jobs), timeline_(recording.timeline) {
        for (const Signal& signal : recording.signals) {
            pieces_.emplace(signalId(signal.name), signal.pieces);
            signals_.push_back(&signal);
        }
        const FormulaNames names = namesIn(file, recording);
        for (const Assessment& assessment : file.assessments) {
            formulas_.push_back(typedFormula(file, assessment, names));
        }
    }

    const std::vector<Formula>& formulas() const { return formulas_; }

    std::vector<AssessmentOutcome> outcomesOf(std::size_t first, std::size_t count) const {
        std::vector<EvaluationRequest> requests;
        for (std::size_t i = first; i < first + count; ++i) {
            requests.push_back({&formulas_[i].tree});
        }
        EvaluationOptions options;
        options.jobs = jobs_;
        options.timeline = timeline_;
        const auto lookup = [this](const assessments::variable& leaf) {
            return pieces_.at(leaf.id);
        };
        std::vector<AssessmentOutcome> outcomes;
        for (const EvaluationResult& result : evaluate(requests, lookup, options)) {
            if (result.failure) {
                std::rethrow_exception(result.failure);
            }
            outcomes.emplace_back();
            Judgement judgement = judge(*result.truth, *knownRange(signals_), timeline_);
            outcomes.back().verdict = judgement.verdict;
            outcomes.back().failures = std::move(judgement.failures);
        }
        return outcomes;
    }

private:
    unsigned jobs_;
    Timeline timeline_;
    std::map<boost::uuids::uuid, SharedPieces> pieces_;
    std::vector<const Signal*> signals_;
    std::vector<Formula> formulas_;
};

template <class Step>
void printStep(const char* name, const Step& step) {
    const Duration duration = durationOf(step);
    std::printf("| %s | %.3f | %.3f | %.0f |\n", name, duration.wall, duration.processor,
                peakMegabytes());
}

void printEach(const Evaluation& evaluation, std::size_t rows) {
    std::printf("\n| assessment | ns per sample | intervals |\n|---|--:|--:|\n");
    for (std::size_t i = 0; i < evaluation.formulas().size(); ++i) {
        std::vector<AssessmentOutcome> outcomes;
        const Duration duration = durationOf([&] { outcomes = evaluation.outcomesOf(i, 1); });
        const auto samples = static_cast<double>(rows * evaluation.formulas()[i].signals.size());
        std::printf("| %s | %.1f | %zu |\n", formulas[i].first, duration.processor * 1e9 / samples,
                    outcomes[0].failures.size());
    }
}

void measure(std::size_t rows, unsigned jobs) {
    const AssessmentFile file = assessmentFile();
    const RecordedFile recorded(rows);
    const double megabytes = static_cast<double>(recorded.bytes()) / 1e6;
    std::printf("%zu rows, %.0f MB, %u jobs\n\n", rows, megabytes, jobs);
    std::printf("| step | wall, s | processor, s | peak memory, MiB |\n|---|--:|--:|--:|\n");

    Recording recording;
    printStep("reading", [&] { recording = readRecording({{recorded.path()}}, file.layout); });
    const Evaluation evaluation(file, recording, jobs);
    RunOutcome run{file.name, "", {{recording.name, std::nullopt, {}, {}, {}}}};
    printStep("evaluation", [&] {
        run.recordings[0].assessments = evaluation.outcomesOf(0, evaluation.formulas().size());
    });
    std::string report;
    printStep("JSON report", [&] { report = jsonReport(run); });
    std::printf("\nThe traces of the signals are %.0f MiB, the report %.1f MB.\n",
                traceMegabytes(recording), static_cast<double>(report.size()) / 1e6);
    printEach(evaluation, rows);
}

}  // namespace
}  // namespace vorm::bench

int main(int count, char** arguments) {
    const std::size_t rows = count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 1'000'000;
    const unsigned long jobs = count > 2 ? std::strtoul(arguments[2], nullptr, 10) : 1;
    vorm::bench::measure(rows, static_cast<unsigned>(jobs));
}
