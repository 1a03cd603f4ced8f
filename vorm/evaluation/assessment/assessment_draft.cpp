#include "assessment_draft.hpp"

#include "draft_signals.hpp"
#include "toml_text.hpp"

#include <vorm/assessments/platform/utf.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <map>
#include <set>

namespace vorm::evaluation {
namespace {

using detail::tomlList;
using detail::tomlText;

/// What [recording] says: the settings, and what was found where all files agree.
class DraftLayout {
public:
    DraftLayout(const RecordingSurveys& recordings, const std::vector<LayoutSetting>& settings) {
        for (const LayoutSetting& setting : settings) {
            declared_.insert(setting.key);
            lines_ += setting.key + " = " + tomlList(setting.texts) + "\n";
        }
        for (const auto& [name, survey] : recordings) {
            addFiles(survey.files);
        }
        addFound();
        addOrders(recordings);
    }

    const std::string& text() const { return lines_; }

private:
    // Files without times are no hindrance to a recording that has others.
    void addFiles(const std::vector<FileSurvey>& files) {
        const bool hasTimes = std::any_of(files.begin(), files.end(),
                                          [](const FileSurvey& file) { return !file.timeProblem; });
        for (const FileSurvey& file : files) {
            if (!file.timeProblem) {
                addFile(file);
            } else if (hasTimes) {
                const std::string problem = file.timeProblem->what();
                addRemark("not read: " + problem.substr(0, problem.find('\n')));
            } else {
                throw InputError(*file.timeProblem);
            }
        }
    }

    void addRemark(const std::string& remark) {
        if (std::find(remarks_.begin(), remarks_.end(), remark) == remarks_.end()) {
            remarks_.push_back(remark);
        }
    }

    void addFile(const FileSurvey& file) {
        for (const std::string& remark : file.remarks) {
            addRemark(remark);
        }
        secondsAreAssumed_ = secondsAreAssumed_ || file.isUnitAssumed;
        const TableLayout& layout = file.layout;
        const char delimiter = layout.delimiter.value_or(',');
        const std::size_t header = layout.header.value_or(1);
        // A usual value is not worth a line.
        values_["delimiter"].insert(delimiter == ','    ? ""
                                    : delimiter == '\t' ? tomlText("tab")
                                                        : tomlText({&delimiter, 1}));
        values_["decimal"].insert(layout.decimal == ',' ? tomlText("comma") : "");
        values_["header"].insert(header == 1 ? "" : std::to_string(header));
        values_["time"].insert(tomlList(layout.time.columns));
        values_["time_format"].insert(layout.time.format.empty() ? ""
                                                                 : tomlText(layout.time.format));
        values_["unit"].insert(layout.time.unit ? tomlText(layout.time.unit->name) : "");
    }

    void addFound() {
        for (const std::string& remark : remarks_) {
            lines_ += "# " + withoutControls(remark) + "\n";
        }
        for (const char* key : {"header", "delimiter", "decimal", "time", "time_format", "unit"}) {
            const auto& values = values_[key];
            if (values.size() == 1 && !values.begin()->empty() && !declared_.contains(key)) {
                lines_ += std::string(key) + " = " + *values.begin() + "\n";
            }
        }
        if (secondsAreAssumed_ && !declared_.contains("unit")) {
            lines_ += "# unit = \"s\"  # or min, ms and so on, where times are not in seconds\n";
        }
    }

    // What readers of the file have to decide, and what makes its times small.
    void addOrders(const RecordingSurveys& recordings) {
        std::size_t repeated = 0;
        std::size_t samples = 0;
        bool goesBack = false;
        bool isLongAfter = false;
        for (const auto& [name, survey] : recordings) {
            for (const SignalSurvey& signal : survey.signals) {
                repeated += signal.equalTimes;
                samples += signal.samples;
                goesBack = goesBack || signal.timesBack > 0;
                isLongAfter = isLongAfter || signal.first > 3'650 * oneDay;
            }
        }
        if (repeated > 0 && !declared_.contains("equal_times")) {
            // To leave out a few samples is a beginning; to leave out many is to be decided.
            lines_ += (2 * repeated > samples ? "# " : "") +
                      std::string("equal_times = \"last\"  # ") + std::to_string(repeated) +
                      " of " + std::to_string(samples) +
                      " samples have the time of the one before\n";
        }
        if (goesBack && !declared_.contains("times_back")) {
            lines_ +=
                "# Times go back: say what to do, or the recording is refused.\n"
                "# times_back = \"shift\"  # or \"drop\" or \"sort\"\n";
        }
        if (isLongAfter && !declared_.contains("origin")) {
            lines_ += "origin = \"first\"  # times count from the first sample\n";
        }
    }

    std::string lines_;
    std::set<std::string> declared_;
    std::vector<std::string> remarks_;
    bool secondsAreAssumed_ = false;
    std::map<std::string, std::set<std::string>> values_;
};

}  // namespace

std::string assessmentDraft(const RecordingSurveys& recordings,
                            const std::vector<LayoutSetting>& settings) {
    std::string names;
    for (const auto& [name, survey] : recordings) {
        names += (names.empty() ? "" : ", ") + withoutControls(name);
    }
    const DraftLayout layout(recordings, settings);
    const detail::DraftSignals signals(recordings);
    std::string text =
        "# Assessments to begin with, made from " + names + ".\n\n[recording]\n" + layout.text() +
        "\n# Numbers are held between samples; interpolation = \"linear\" makes lines "
        "of them.\n[signals]\n" +
        signals.text();
    const std::vector<detail::DraftAssessment> examples = signals.examples();
    if (examples.empty()) {
        text +=
            "\n# No signal is there to make examples of: numbers, bools or few texts, alike in "
            "all recordings.\n";
    }
    for (const detail::DraftAssessment& example : examples) {
        text += "\n[[assessment]]\nname = " + tomlText(example.name) +
                "\nformula = " + tomlText(example.formula) + "\n";
    }
    // Paths need not be UTF-8, and TOML has to be.
    return platform::toUtf8(platform::toUtf16(text));
}

}  // namespace vorm::evaluation
