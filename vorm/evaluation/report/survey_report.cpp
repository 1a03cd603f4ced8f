#include "survey_report.hpp"

#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const SignalSurvey& signal) {
    return {{"file", signal.file},
            {"name", signal.name},
            {"type", signal.type},
            {"samples", signal.samples},
            {"empty", signal.empty},
            {"nans", signal.nans},
            {"first", signal.first.seconds()},
            {"last", signal.last.seconds()},
            {"median_distance", signal.medianDistance.seconds()},
            {"longest_distance", signal.longestDistance.seconds()},
            {"longest_at", signal.longestAt.seconds()},
            {"holes", signal.holes},
            {"equal_times", signal.equalTimes},
            {"times_back", signal.timesBack}};
}

std::string countText(std::size_t count) {
    return count == 0 ? "-" : std::to_string(count);
}

std::vector<TextTable::Cell> rowOf(const SignalSurvey& signal) {
    const bool hasTimes = signal.samples > 0;
    const bool hasDistances = signal.samples > 1;
    const std::string longest =
        durationText(signal.longestDistance) + " at " + signal.longestAt.text();
    return {{signal.file},
            {signal.name},
            {signal.type},
            {std::to_string(signal.samples), true},
            {hasTimes ? signal.first.text() : "-", true},
            {hasTimes ? signal.last.text() : "-", true},
            {hasDistances ? durationText(signal.medianDistance) : "-", true},
            {hasDistances ? longest : "-", true},
            {countText(signal.holes), true},
            {countText(signal.empty), true},
            {countText(signal.nans), true},
            {countText(signal.equalTimes), true},
            {countText(signal.timesBack), true}};
}

}  // namespace

std::string surveyReport(const std::string& recording, const std::vector<SignalSurvey>& signals) {
    TextTable table({{"file"},
                     {"signal"},
                     {"type"},
                     {"samples", true},
                     {"first [s]", true},
                     {"last [s]", true},
                     {"median step [s]", true},
                     {"longest step [s]", true},
                     {"holes", true},
                     {"empty", true},
                     {"NaN", true},
                     {"equal times", true},
                     {"times back", true}});
    for (const SignalSurvey& signal : signals) {
        table.addRow(rowOf(signal));
    }
    return recording + "\n" + table.text("  ", false);
}

std::string surveyJson(
    const std::vector<std::pair<std::string, std::vector<SignalSurvey>>>& recordings) {
    Json list = Json::array();
    for (const auto& [name, signals] : recordings) {
        Json columns = Json::array();
        for (const SignalSurvey& signal : signals) {
            columns.push_back(jsonOf(signal));
        }
        list.push_back({{"recording", name}, {"signals", std::move(columns)}});
    }
    const Json report = {{"recordings", std::move(list)}};
    return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace vorm::evaluation
