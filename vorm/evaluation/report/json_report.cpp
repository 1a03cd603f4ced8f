#include "json_report.hpp"

#include <vorm/evaluation/report/verdict_text.hpp>

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>

namespace vorm::evaluation {
namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json failuresOf(const AssessmentOutcome& outcome) {
    Json failures = Json::array();
    for (const FailingInterval& interval : outcome.failures) {
        failures.push_back({{"start", interval.start}, {"end", interval.end}});
    }
    return failures;
}

// JSON has no number for what is not finite.
std::string robustnessErrorOf(const AssessmentOutcome& outcome) {
    if (outcome.robustness && std::isnan(*outcome.robustness)) {
        return "a NaN is in the way";
    }
    if (outcome.robustness && std::isinf(*outcome.robustness)) {
        return *outcome.robustness > 0 ? "infinite" : "minus infinite";
    }
    return outcome.robustnessError;
}

Json assessmentOf(const AssessmentOutcome& outcome) {
    Json json = {{"name", outcome.name},
                 {"description", textOrNull(outcome.description)},
                 {"formula", outcome.formula},
                 {"verdict", verdictText(outcome)},
                 {"error", textOrNull(outcome.error)},
                 {"reason", textOrNull(outcome.reason)}};
    const bool isJudged = outcome.error.empty();
    for (const auto& [key, seconds] : {std::pair("from", outcome.from),
                                       {"to", outcome.to},
                                       {"passed", outcome.passed},
                                       {"failed", outcome.failed},
                                       {"no_result", outcome.unknown}}) {
        json[key] = isJudged ? Json(seconds) : Json(nullptr);
    }
    json["first_failure"] =
        outcome.failures.empty() ? Json(nullptr) : Json(outcome.failures.front().start);
    json["failures"] = failuresOf(outcome);
    json["robustness"] = outcome.robustness ? Json(*outcome.robustness) : Json(nullptr);
    json["robustness_error"] = textOrNull(robustnessErrorOf(outcome));
    return json;
}

Json recordingOf(const RecordingOutcome& recording) {
    Json assessments = Json::array();
    for (const AssessmentOutcome& outcome : recording.assessments) {
        assessments.push_back(assessmentOf(outcome));
    }
    return {{"recording", recording.recording},
            {"error", textOrNull(recording.error)},
            {"assessments", std::move(assessments)}};
}

}  // namespace

std::string jsonReport(const RunOutcome& run) {
    Json recordings = Json::array();
    for (const RecordingOutcome& recording : run.recordings) {
        recordings.push_back(recordingOf(recording));
    }
    const VerdictCounts counts = countVerdicts(run);
    const Json report = {{"file", run.file},
                         {"title", textOrNull(run.title)},
                         {"summary",
                          {{"passed", counts.passed},
                           {"failed", counts.failed},
                           {"no_result", counts.noResult},
                           {"errors", counts.errors}}},
                         {"recordings", std::move(recordings)}};
    // Names come from files, which need not be in UTF-8.
    return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace vorm::evaluation
