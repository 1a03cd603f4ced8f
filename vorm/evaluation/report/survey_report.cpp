#include "survey_report.hpp"

#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <concepts>
#include <optional>
#include <utility>

namespace vorm::evaluation {
namespace {

using Json = nlohmann::ordered_json;

Json numberOrNull(const std::optional<SignalSurvey::Number>& number) {
    return number ? std::visit([](auto value) { return Json(value); }, *number) : Json(nullptr);
}

Json jsonOf(const SignalSurvey& signal) {
    return {{"file", signal.file},
            {"name", signal.name},
            {"type", signal.type},
            {"unit", signal.unit.empty() ? Json(nullptr) : Json(signal.unit)},
            {"samples", signal.samples},
            {"empty", signal.empty},
            {"nans", signal.nans},
            {"infinities", signal.infinities},
            {"least", numberOrNull(signal.least)},
            {"mean", numberOrNull(signal.mean)},
            {"greatest", numberOrNull(signal.greatest)},
            {"members", signal.members},
            {"first", signal.first.seconds()},
            {"last", signal.last.seconds()},
            {"median_distance", signal.medianDistance.seconds()},
            {"longest_distance", signal.longestDistance.seconds()},
            {"longest_at", signal.longestAt.seconds()},
            {"holes", signal.holes},
            {"equal_times", signal.equalTimes},
            {"times_back", signal.timesBack}};
}

constexpr const char* nothing = "-";

std::string countText(std::size_t count) {
    return count == 0 ? nothing : std::to_string(count);
}

std::string valueText(double number) {
    return numberText(number);
}

template <std::integral Integer>
std::string valueText(Integer number) {
    return std::to_string(number);
}

std::string valueText(const SignalSurvey::Number& number) {
    return std::visit([](auto value) { return valueText(value); }, number);
}

template <class Value>
std::string valueText(const std::optional<Value>& value) {
    return value ? valueText(*value) : nothing;
}

std::string medianStepText(const SignalSurvey& signal) {
    return signal.samples > 1 ? durationText(signal.medianDistance) : nothing;
}

std::string longestStepText(const SignalSurvey& signal) {
    return signal.samples > 1
               ? durationText(signal.longestDistance) + " at " + signal.longestAt.text()
               : nothing;
}

std::string membersText(const SignalSurvey& signal) {
    return (signal.type.starts_with("enumeration ") ? "members: " : "texts: ") +
           quotedList(signal.members);
}

struct Column {
    const char* header;
    bool alignRight;
    std::string (*text)(const SignalSurvey&);
    std::string_view untold;  // the column is left out where every signal has this text
};

std::vector<Column> columnsOf(const std::string& recording) {
    using Survey = const SignalSurvey&;
    return {
        {"file", false, [](Survey s) { return s.file; }, recording},
        {"signal", false, [](Survey s) { return s.name; }, {}},
        {"type", false, [](Survey s) { return s.type; }, {}},
        {"unit", false, [](Survey s) { return s.unit.empty() ? nothing : s.unit; }, nothing},
        {"least", true, [](Survey s) { return valueText(s.least); }, nothing},
        {"mean", true, [](Survey s) { return valueText(s.mean); }, nothing},
        {"greatest", true, [](Survey s) { return valueText(s.greatest); }, nothing},
        {"samples", true, [](Survey s) { return std::to_string(s.samples); }, {}},
        {"first [s]", true, [](Survey s) { return s.samples > 0 ? s.first.text() : nothing; }, {}},
        {"last [s]", true, [](Survey s) { return s.samples > 0 ? s.last.text() : nothing; }, {}},
        {"median step [s]", true, medianStepText, {}},
        {"longest step [s]", true, longestStepText, {}},
        {"holes", true, [](Survey s) { return countText(s.holes); }, nothing},
        {"empty", true, [](Survey s) { return countText(s.empty); }, nothing},
        {"NaN", true, [](Survey s) { return countText(s.nans); }, nothing},
        {"infinite", true, [](Survey s) { return countText(s.infinities); }, nothing},
        {"equal times", true, [](Survey s) { return countText(s.equalTimes); }, nothing},
        {"times back", true, [](Survey s) { return countText(s.timesBack); }, nothing},
    };
}

bool tells(const Column& column, const std::vector<SignalSurvey>& signals) {
    return column.untold.empty() ||
           std::any_of(signals.begin(), signals.end(), [&](const SignalSurvey& signal) {
               return column.text(signal) != column.untold;
           });
}

// `drive.csv, from 0 s to 120 s (2026-11-22 10:30:00 to 10:32:00), dates in UTC`, or the name
// alone.
std::string headOf(const std::string& recording, const RecordingSurvey& survey) {
    const auto span = survey.span();
    return withoutControls(recording) + (span && survey.clock
                                             ? ", " + TimeWriter(survey.clock).interval(*span) +
                                                   ", dates in " + survey.clock->zoneName()
                                             : "");
}

Json dateOrNull(const RecordingSurvey& survey, ExactTime TimeSpan::*end) {
    const auto span = survey.span();
    const std::string date = span ? TimeWriter(survey.clock).date(*span.*end) : "";
    return date.empty() ? Json(nullptr) : Json(date);
}

Json jsonOf(const FileSurvey& file) {
    return {{"file", file.file},
            {"read_as", file.remarks},
            {"warnings", file.warnings},
            {"time_problem", file.timeProblem ? Json(file.timeProblem->what()) : Json(nullptr)}};
}

// How a file is read, and why its times are only its rows' numbers.
std::string linesOn(const FileSurvey& file, const std::string& recording) {
    std::string text;
    for (const std::string& remark : file.remarks) {
        text += (text.empty() ? "" : "; ") + withoutControls(remark);
    }
    if (!text.empty()) {
        text = (file.file == recording ? "" : file.file + ": ") + text + "\n";
    }
    for (const std::string& warning : file.warnings) {
        text += withoutControls(warning) + "\n";
    }
    if (file.timeProblem) {
        for (const std::string_view line : linesOf(file.timeProblem->what())) {
            text += std::string(line) + "\n";
        }
        text += "times below are the numbers of rows\n";
    }
    return text;
}

}  // namespace

std::string surveyReport(const std::string& recording, const RecordingSurvey& survey,
                         std::optional<std::size_t> width) {
    const TextTable::Style style{"  ", false, usableWidth(width)};
    const auto& signals = survey.signals;
    std::vector<Column> columns = columnsOf(recording);
    std::erase_if(columns, [&](const Column& column) { return !tells(column, signals); });
    std::vector<TextTable::Cell> header;
    for (const Column& column : columns) {
        header.push_back({column.header, column.alignRight});
    }
    TextTable table(std::move(header));
    const std::size_t keys = tells(columnsOf(recording).front(), signals) ? 2 : 1;
    table.repeatColumns(keys);
    for (std::size_t key = 0; key < keys; ++key) {
        table.allowEliding(key);
    }
    for (const SignalSurvey& signal : signals) {
        std::vector<TextTable::Cell> row;
        for (const Column& column : columns) {
            row.push_back({column.text(signal), column.alignRight});
        }
        table.addRow(std::move(row));
        if (!signal.members.empty()) {
            table.addNote(membersText(signal));
        }
    }
    std::string text = indentedLines(headOf(recording, survey), {"", false, style.width});
    for (const FileSurvey& file : survey.files) {
        text += indentedLines(linesOn(file, recording), style);
    }
    return text + table.text(style);
}

std::string surveyJson(const RecordingSurveys& recordings) {
    Json list = Json::array();
    for (const auto& [name, survey] : recordings) {
        Json files = Json::array();
        for (const FileSurvey& file : survey.files) {
            files.push_back(jsonOf(file));
        }
        Json columns = Json::array();
        for (const SignalSurvey& signal : survey.signals) {
            columns.push_back(jsonOf(signal));
        }
        list.push_back({{"recording", name},
                        {"zone", survey.clock ? Json(survey.clock->zoneName()) : Json(nullptr)},
                        {"start_date", dateOrNull(survey, &TimeSpan::start)},
                        {"end_date", dateOrNull(survey, &TimeSpan::end)},
                        {"files", std::move(files)},
                        {"signals", std::move(columns)}});
    }
    const Json report = {{"recordings", std::move(list)}};
    return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace vorm::evaluation
