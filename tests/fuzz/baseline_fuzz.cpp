// Any bytes as an earlier report: it is read and compared with a run, or refused with InputError.

#include "file_of.hpp"

#include <vorm/evaluation/report/baseline.hpp>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace vorm::evaluation;

const RunOutcome& runOfOne() {
    static const RunOutcome run = [] {
        RunOutcome outcome{"a.toml", "", {}, false, {}};
        RecordingOutcome& recording = outcome.recordings.emplace_back();
        recording.recording = "one.csv";
        AssessmentOutcome& assessment = recording.assessments.emplace_back();
        assessment.name = "a";
        assessment.verdict = vorm::assessments::resultEnum_t::FAIL;
        return outcome;
    }();
    return run;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const vorm::fuzz::FileOf file(data, size);
    static const AssessmentFile assessments =
        parseAssessmentFile("[[assessment]]\nname = 'a'\nformula = 'x > 1'\n", "a.toml");
    try {
        const BaselineComparison comparison =
            compare(readBaseline(file.path()), assessments, runOfOne());
        // What fails for the first time is told.
        if (comparison.hasNewFailure() && comparison.changes.empty()) {
            std::abort();
        }
        baselineReport(comparison, TableStyle());
    } catch (const InputError&) {
        return 0;
    }
    return 0;
}
