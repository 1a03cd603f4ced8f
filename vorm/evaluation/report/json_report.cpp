#include "json_report.hpp"

#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>
#include <variant>

namespace vorm::evaluation {
namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

// What the text of an error is made of.
Json problemOf(const std::optional<InputError>& error) {
    if (!error) {
        return nullptr;
    }
    const InputProblem& problem = error->problem();
    const auto numberOrNull = [](std::size_t number) {
        return number == 0 ? Json(nullptr) : Json(number);
    };
    return {{"message", problem.message},
            {"file", textOrNull(problem.where.file)},
            {"line", numberOrNull(problem.where.line)},
            {"column", numberOrNull(problem.where.column)},
            {"excerpt", textOrNull(problem.excerpt)},
            {"advice", textOrNull(problem.advice)}};
}

// With their dates where the recording has dates.
Json spansOf(const std::vector<TimeSpan>& spans, const TimeWriter& times) {
    Json list = Json::array();
    for (const TimeSpan& span : spans) {
        Json json = {{"start", span.start.seconds()}, {"end", span.end.seconds()}};
        if (const std::string start = times.date(span.start); !start.empty()) {
            json["start_date"] = start;
            json["end_date"] = times.date(span.end);
        }
        list.push_back(std::move(json));
    }
    return list;
}

const char* extentName(CauseExtent extent) {
    switch (extent) {
        case CauseExtent::Whole:
            return "whole";
        case CauseExtent::Beginning:
            return "beginning";
        case CauseExtent::Part:
            break;
    }
    return "part";
}

Json explanationOf(const FailureExplanation& explanation, const TimeWriter& times) {
    Json causes = Json::array();
    for (const Cause& cause : explanation.causes) {
        Json definitions = Json::object();
        for (const DefinitionText& definition : cause.named.definitions) {
            definitions[definition.name] = definition.formula;
        }
        causes.push_back({{"formula", cause.condition},
                          {"named", cause.named.text},
                          {"definitions", std::move(definitions)},
                          {"signals", cause.signals},
                          {"value", cause.value},
                          {"when", whenText(cause, times)},
                          {"start", cause.span.start.seconds()},
                          {"end", cause.span.end.seconds()}});
    }
    return {{"extent", extentName(explanation.extent)},
            {"causes", std::move(causes)},
            {"other_sets", explanation.otherSets},
            {"has_more_sets", explanation.hasMoreSets}};
}

Json failuresOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    Json failures = spansOf(outcome.failures, times);
    for (std::size_t i = 0; i < outcome.explanations.size(); ++i) {
        failures[i]["explanation"] = explanationOf(outcome.explanations[i], times);
    }
    return failures;
}

Json openSpansOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    Json spans = spansOf(outcome.openSpans, times);
    for (std::size_t i = 0; i < outcome.openReasons.size(); ++i) {
        Json& reasons = spans[i]["reasons"] = Json::array();
        for (const OpenReason& reason : outcome.openReasons[i]) {
            reasons.push_back(reasonText(reason, times));
        }
    }
    return spans;
}

std::string robustnessErrorOf(const AssessmentOutcome& outcome) {
    if (!outcome.leastRobustness || !outcome.greatestRobustness) {
        return errorText(outcome.robustnessError);
    }
    if (!hasDecidedRobustness(outcome)) {
        return "the recording does not decide it";
    }
    const double robustness = *outcome.leastRobustness;
    if (std::isnan(robustness)) {
        return "a NaN is in the way";
    }
    return std::isinf(robustness) ? robustness > 0 ? "infinite" : "minus infinite" : "";
}

// JSON has no number for what is not finite.
Json numberOrNull(std::optional<double> number) {
    // Adding zero turns a minus zero into zero.
    return number && std::isfinite(*number) ? Json(*number + 0.0) : Json(nullptr);
}

// JSON has no number for what is not finite, which stays a text.
Json parameterOf(const FormulaParameter& parameter) {
    const auto value = valueOf(parameter);
    const double* number = std::get_if<double>(&value);
    return number != nullptr && !std::isfinite(*number)
               ? Json(parameter.value)
               : std::visit([](const auto& known) { return Json(known); }, value);
}

Json parametersOf(const FormulaParameters& parameters) {
    Json values = Json::object();
    for (const FormulaParameter& parameter : parameters) {
        values[parameter.name] = parameterOf(parameter);
    }
    return values;
}

Json assessmentOf(const AssessmentOutcome& outcome, const TimeWriter& times) {
    Json json = {{"name", outcome.name},
                 {"description", textOrNull(outcome.description)},
                 {"formula", outcome.formula},
                 {"severity", nameOf(outcome.severity)},
                 {"tags", outcome.tags},
                 {"verdict", verdictText(outcome)},
                 {"error", textOrNull(errorText(outcome.error))},
                 {"problem", problemOf(outcome.error)},
                 {"reason", textOrNull(outcome.reason)}};
    const bool isJudged = !outcome.error;
    for (const auto& [key, time] : {std::pair("from", outcome.from),
                                    {"to", outcome.to},
                                    {"passed", outcome.passed},
                                    {"failed", outcome.failed},
                                    {"no_result", outcome.open}}) {
        json[key] = isJudged ? Json(time.seconds()) : Json(nullptr);
    }
    json["first_failure"] =
        outcome.failures.empty() ? Json(nullptr) : Json(outcome.failures.front().start.seconds());
    json["failures"] = failuresOf(outcome, times);
    json["no_result_spans"] = openSpansOf(outcome, times);
    json["no_result_share"] = isJudged ? Json(outcome.openShare()) : Json(nullptr);
    json["passed_strictly"] = outcome.passesThroughout();
    json["never_triggered"] = outcome.neverTriggered;
    const bool isDecided = hasDecidedRobustness(outcome);
    json["robustness"] = isDecided ? numberOrNull(outcome.leastRobustness) : Json(nullptr);
    json["robustness_least"] = numberOrNull(outcome.leastRobustness);
    json["robustness_greatest"] = numberOrNull(outcome.greatestRobustness);
    json["robustness_error"] = textOrNull(robustnessErrorOf(outcome));
    json["robustness_problem"] = problemOf(outcome.robustnessError);
    return json;
}

Json recordingOf(const RecordingOutcome& recording) {
    const auto& clock = recording.times.clock;
    const TimeWriter times(clock);
    Json assessments = Json::array();
    for (const AssessmentOutcome& outcome : recording.assessments) {
        assessments.push_back(assessmentOf(outcome, times));
    }
    return {{"recording", recording.recording},
            {"error", textOrNull(errorText(recording.error))},
            {"problem", problemOf(recording.error)},
            {"read_as", recording.remarks},
            {"warnings", recording.warnings},
            {"zone", clock ? Json(clock->zoneName()) : Json(nullptr)},
            {"time_digits", recording.times.digits},
            {"assessments", std::move(assessments)}};
}

Json comparisonOf(const BaselineComparison& comparison) {
    Json changes = Json::array();
    for (const BaselineChange& change : comparison.changes) {
        changes.push_back({{"kind", nameOf(change.kind)},
                           {"recording", change.recording},
                           {"assessment", textOrNull(change.assessment)},
                           {"what", change.what}});
    }
    return {{"file", comparison.baseline}, {"changes", std::move(changes)}};
}

Json aboutRun(const RunOutcome& run) {
    return {{"file", run.file},
            {"title", textOrNull(run.title)},
            {"strict", run.strict},
            {"parameters", parametersOf(run.parameters)}};
}

// Names come from files, which need not be in UTF-8.
std::string textOf(const Json& json, int indentation) {
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string jsonReport(const RunOutcome& run, const BaselineComparison* comparison) {
    Json recordings = Json::array();
    for (const RecordingOutcome& recording : run.recordings) {
        recordings.push_back(recordingOf(recording));
    }
    const VerdictCounts counts = countVerdicts(run);
    Json report = aboutRun(run);
    report["summary"] = {{"passed", counts.passed},
                         {"failed", counts.failed},
                         {"failed_warnings", counts.warnings},
                         {"failed_infos", counts.infos},
                         {"open", counts.open},
                         {"no_result", counts.noResult},
                         {"errors", counts.errors}};
    report["baseline"] = comparison == nullptr ? Json(nullptr) : comparisonOf(*comparison);
    report["recordings"] = std::move(recordings);
    return textOf(report, 2);
}

std::string nameInJson(const std::string& name) {
    return Json::parse(textOf(name, -1)).get<std::string>();
}

std::string jsonLine(const RunOutcome& run, const RecordingOutcome& recording) {
    Json line = aboutRun(run);
    line["fingerprint"] = textOrNull(run.fingerprint);
    line.update(recordingOf(recording));
    return textOf(line, -1);
}

}  // namespace vorm::evaluation
