#include <vorm/evaluation/report/run_summary.hpp>
#include <vorm/evaluation/text/natural_order.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;

InputError someError() {
    InputProblem problem;
    problem.message = "unusable";
    return InputError(problem);
}

// One in five cannot be used; the others have two assessments of any outcome.
RecordingOutcome anyRecording() {
    RecordingOutcome recording;
    recording.recording = "r" + std::to_string(*rc::gen::inRange(0, 30));
    if (*rc::gen::inRange(0, 5) == 0) {
        recording.error = someError();
        return recording;
    }
    for (const char* const name : {"one", "two"}) {
        AssessmentOutcome outcome;
        outcome.name = name;
        outcome.severity = *rc::gen::element(Severity::Error, Severity::Warning, Severity::Info);
        outcome.verdict = *rc::gen::element(resultEnum_t::PASS, resultEnum_t::PASS,
                                            resultEnum_t::FAIL, resultEnum_t::NO_RESULT);
        if (outcome.verdict == resultEnum_t::FAIL) {
            outcome.failures.resize(1);
        }
        recording.assessments.push_back(std::move(outcome));
    }
    return recording;
}

// How bad it is, by its definition: not usable, then how often each mark is there, the worst first.
std::tuple<bool, std::vector<std::ptrdiff_t>> badnessOf(const RecordingMarks& recording) {
    std::vector<std::ptrdiff_t> counts;
    for (const Mark mark :
         {Mark::Error, Mark::Failed, Mark::Warned, Mark::NoResult, Mark::Open, Mark::Informed}) {
        counts.push_back(
            std::count(recording.assessments.begin(), recording.assessments.end(), mark));
    }
    return {!recording.isUsable, counts};
}

// Keeping a few recordings at a time shows the same as keeping all.
RC_GTEST_PROP(RunSummary, KeepsTheWorst, ()) {
    const auto most = *rc::gen::inRange<std::size_t>(1, 6);
    RunSummary few(false, most);
    RunSummary all(false, RunSummary::allRecordings);
    RunOutcome run;
    for (int i = *rc::gen::inRange(0, 60); i > 0; --i) {
        run.recordings.push_back(anyRecording());
        few.add(run.recordings.back());
        all.add(run.recordings.back());
    }
    std::vector<RecordingMarks> sorted = all.worst();
    RC_ASSERT(sorted.size() == run.recordings.size());
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const auto before = badnessOf(sorted[i - 1]);
        const auto now = badnessOf(sorted[i]);
        RC_ASSERT(before > now || (before == now && !isNaturallyBefore(sorted[i].recording,
                                                                       sorted[i - 1].recording)));
    }
    const std::vector<RecordingMarks> worst = few.worst();
    RC_ASSERT(worst.size() == std::min(most, few.imperfect()));
    for (std::size_t i = 0; i < worst.size(); ++i) {
        RC_ASSERT(worst[i].recording == sorted[i].recording);
        RC_ASSERT(worst[i].assessments == sorted[i].assessments);
    }
    RC_ASSERT(few.hasErrors() == run.hasErrors());
    RC_ASSERT(few.hasFailures() == run.hasFailures());
    const VerdictCounts counts = countVerdicts(run);
    RC_ASSERT(few.counts().failed == counts.failed && few.counts().errors == counts.errors &&
              few.counts().passed == counts.passed && few.counts().warnings == counts.warnings);
}

}  // namespace
}  // namespace vorm::evaluation
