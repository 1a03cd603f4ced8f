#include "earlier_lines.hpp"

#include <vorm/evaluation/signal/verdict_name.hpp>

#include <nlohmann/json.hpp>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace vorm::evaluation {
namespace {

using JsonObject = nlohmann::json;

std::optional<InputError> errorIn(const JsonObject& json) {
    if (json.at("error").is_null()) {
        return std::nullopt;
    }
    InputProblem problem;
    problem.message = json.at("error").get<std::string>();
    return InputError(std::move(problem));
}

std::vector<TimeSpan> spansIn(const JsonObject& list) {
    std::vector<TimeSpan> spans;
    for (const JsonObject& span : list) {
        spans.push_back({ExactTime::ofSeconds(span.at("start").get<double>()).value(),
                         ExactTime::ofSeconds(span.at("end").get<double>()).value()});
    }
    return spans;
}

AssessmentOutcome assessmentIn(const JsonObject& json) {
    AssessmentOutcome outcome;
    outcome.name = json.at("name").get<std::string>();
    outcome.severity = severityNamed(json.at("severity").get<std::string>()).value();
    outcome.error = errorIn(json);
    if (!outcome.error) {
        outcome.verdict = verdictOf(json.at("verdict").get<std::string>()).value();
    }
    outcome.failures = spansIn(json.at("failures"));
    outcome.openSpans = spansIn(json.at("no_result_spans"));
    outcome.neverTriggered = json.at("never_triggered").get<bool>();
    return outcome;
}

RecordingOutcome recordingIn(const JsonObject& json) {
    RecordingOutcome outcome;
    outcome.recording = json.at("recording").get<std::string>();
    outcome.error = errorIn(json);
    outcome.times.digits = json.at("time_digits").get<int>();
    for (const JsonObject& assessment : json.at("assessments")) {
        outcome.assessments.push_back(assessmentIn(assessment));
    }
    return outcome;
}

[[noreturn]] void failAsNoLine(const SourceLocation& where) {
    failAt(where, "is no line of results that a run can go on after",
           "write to another file, or take the line away");
}

RecordingOutcome recordingIn(const std::string& line, const std::string& fingerprint,
                             const SourceLocation& where) {
    try {
        const JsonObject json = JsonObject::parse(line);
        if (json.at("fingerprint") != fingerprint) {
            failAt(where,
                   "tells of other requirements, parameters or options than those of this run",
                   "run with those that it was written with, or write to another file");
        }
        return recordingIn(json);
    } catch (const JsonObject::exception&) {
        failAsNoLine(where);
    } catch (const std::bad_optional_access&) {
        failAsNoLine(where);
    }
}

}  // namespace

std::uintmax_t readEarlierLines(const std::string& path, const std::string& fingerprint,
                                const std::function<void(const RecordingOutcome&)>& take) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found) {
        return 0;
    }
    if (!error && type != std::filesystem::file_type::regular) {
        failAt({}, "cannot go on after '" + path + "': it is no plain file",
               "write to another one");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::uintmax_t bytes = 0;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line) && !file.eof(); bytes += line.size() + 1) {
        ++number;
        take(recordingIn(line, fingerprint, {path, number, 0}));
    }
    if (!file.eof()) {
        failAt({}, "cannot read '" + path + "': " + std::generic_category().message(errno),
               "check the path and the rights of the file");
    }
    return bytes;
}

}  // namespace vorm::evaluation
