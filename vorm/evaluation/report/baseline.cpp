#include "baseline.hpp"

#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/text_table.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace vorm::evaluation {
namespace {

using JsonValue = nlohmann::json;
using ChangeKind = BaselineChange::Kind;

constexpr const char* baselineAdvice = "a baseline is what 'assess run --format json' wrote";

[[noreturn]] void failFor(const std::string& path, const std::string& problem,
                          std::size_t line = 0) {
    failAt({path, line, 0}, problem, baselineAdvice);
}

JsonValue parsed(const std::string& path) {
    const std::string text = readFile(path);
    try {
        return JsonValue::parse(text);
    } catch (const JsonValue::parse_error& error) {
        const auto end =
            text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
        failFor(path, "is no JSON",
                1 + static_cast<std::size_t>(std::count(text.begin(), end, '\n')));
    } catch (const JsonValue::out_of_range&) {
        failFor(path, "has a number beyond the range of a double");
    }
}

Baseline::Entry entryOf(const JsonValue& assessment) {
    Baseline::Entry entry;
    entry.verdict = assessment.at("verdict").get<std::string>();
    entry.passesThroughout = assessment.value("passed_strictly", entry.verdict == "PASS");
    entry.severity =
        severityNamed(assessment.value("severity", std::string())).value_or(Severity::Error);
    for (const JsonValue& failure : assessment.at("failures")) {
        entry.failures.emplace_back(failure.at("start").get<double>(),
                                    failure.at("end").get<double>());
    }
    return entry;
}

std::string secondsText(double seconds) {
    return shortestNumber(seconds) + " s";
}

// Both fail.
std::string otherTimes(const std::vector<std::pair<double, double>>& now,
                       const std::vector<std::pair<double, double>>& before) {
    if (now.front().first != before.front().first) {
        return "first fails at " + secondsText(now.front().first) + ", was at " +
               secondsText(before.front().first);
    }
    if (now.size() != before.size()) {
        return "fails in " + std::to_string(now.size()) + " intervals, was in " +
               std::to_string(before.size());
    }
    const auto first = std::mismatch(now.begin(), now.end(), before.begin());
    return "fails from " + secondsText(first.first->first) + " to " +
           secondsText(first.first->second) + ", was from " + secondsText(first.second->first) +
           " to " + secondsText(first.second->second);
}

class Comparer {
public:
    Comparer(const Baseline& baseline, const AssessmentFile& file, const RunOutcome& run)
        : baseline_(baseline), file_(file), run_(run) {
        comparison_.baseline = baseline.path;
    }

    BaselineComparison compared() && {
        for (const RecordingOutcome& recording : run_.recordings) {
            addRecording(recording);
        }
        for (const auto& [name, recording] : baseline_.recordings) {
            addGone(name, recording);
        }
        std::stable_sort(comparison_.changes.begin(), comparison_.changes.end(),
                         [](const BaselineChange& one, const BaselineChange& other) {
                             return one.kind < other.kind;
                         });
        return std::move(comparison_);
    }

private:
    void add(ChangeKind kind, const std::string& recording, const std::string& assessment,
             std::string what, bool isError = false) {
        comparison_.changes.push_back({kind, recording, assessment, std::move(what), isError});
    }

    void addRecording(const RecordingOutcome& recording) {
        const auto found = baseline_.recordings.find(recording.recording);
        const bool isKnown = found != baseline_.recordings.end();
        comparison_.hasCommonRecording = comparison_.hasCommonRecording || isKnown;
        if (!isKnown) {
            add(ChangeKind::Added, recording.recording, "", "was not there");
        } else if (recording.error.has_value() == found->second.isUsable) {
            add(ChangeKind::Changed, recording.recording, "",
                recording.error ? "cannot be used any more" : "could not be used");
        }
        static const Baseline::Recording unknown;
        const Baseline::Recording& before = isKnown ? found->second : unknown;
        for (const AssessmentOutcome& outcome : recording.assessments) {
            const auto entry = before.assessments.find(outcome.name);
            addAssessment(recording.recording, outcome,
                          entry == before.assessments.end() ? nullptr : &entry->second,
                          isKnown && before.isUsable);
        }
    }

    bool failed(const Baseline::Entry& entry) const {
        return entry.verdict != "ERROR" &&
               (run_.strict ? !entry.passesThroughout : entry.verdict == "FAIL");
    }

    // Whether what fails now was known to: what was only open, did not fail the run then or was
    // less severe is new.
    bool wasKnown(const AssessmentOutcome& now, const Baseline::Entry& before) const {
        const bool fails = now.verdict == assessments::resultEnum_t::FAIL;
        const bool asBad =
            fails ? before.verdict == "FAIL"
                  : before.verdict == "FAIL" ||
                        (baseline_.strict && !before.passesThroughout && before.verdict != "ERROR");
        return asBad && before.severity <= now.severity;
    }

    // Assessments of a recording that was not there are not told one by one.
    void addAssessment(const std::string& recording, const AssessmentOutcome& now,
                       const Baseline::Entry* before, bool tellsAdded) {
        const std::string verdict = verdictText(now);
        const bool fails = now.fails(run_.strict);
        if (before == nullptr) {
            if (fails) {
                add(ChangeKind::NewFailure, recording, now.name, verdict + ", was not there",
                    now.failsRun(run_.strict));
            } else if (tellsAdded) {
                add(ChangeKind::Added, recording, now.name, verdict);
            }
            return;
        }
        const std::string change = verdict + ", was " + before->verdict;
        if (fails && !wasKnown(now, *before)) {
            const std::string what =
                before->severity > now.severity
                    ? ", was of the severity " + std::string(nameOf(before->severity))
                : baseline_.strict ? ", open otherwise"
                                   : ", did not fail the run";
            add(ChangeKind::NewFailure, recording, now.name,
                verdict == before->verdict ? verdict + what : change, now.failsRun(run_.strict));
        } else if (!fails && failed(*before)) {
            const bool isFixed = now.verdict == assessments::resultEnum_t::PASS;
            add(isFixed ? ChangeKind::Fixed : ChangeKind::Changed, recording, now.name,
                verdict == before->verdict ? verdict + ", open otherwise" : change);
        } else if (verdict != before->verdict) {
            add(ChangeKind::Changed, recording, now.name, change);
        } else if (const auto intervals = intervalsOf(now); intervals != before->failures &&
                                                            !intervals.empty() &&
                                                            !before->failures.empty()) {
            add(ChangeKind::Changed, recording, now.name, otherTimes(intervals, before->failures));
        }
    }

    static std::vector<std::pair<double, double>> intervalsOf(const AssessmentOutcome& outcome) {
        std::vector<std::pair<double, double>> intervals;
        for (const TimeSpan& failure : outcome.failures) {
            intervals.emplace_back(failure.start.seconds(), failure.end.seconds());
        }
        return intervals;
    }

    void addGone(const std::string& name, const Baseline::Recording& before) {
        const auto recording = std::find_if(
            run_.recordings.begin(), run_.recordings.end(),
            [&](const RecordingOutcome& outcome) { return outcome.recording == name; });
        if (recording == run_.recordings.end()) {
            add(ChangeKind::Gone, name, "", "is not there any more");
            return;
        }
        for (const auto& [assessment, entry] : before.assessments) {
            const bool isInFile = std::any_of(
                file_.assessments.begin(), file_.assessments.end(),
                [&, &assessment = assessment](const auto& one) { return one.name == assessment; });
            if (!isInFile) {
                add(ChangeKind::Gone, name, assessment, "was " + entry.verdict);
            }
        }
    }

    const Baseline& baseline_;
    const AssessmentFile& file_;
    const RunOutcome& run_;
    BaselineComparison comparison_;
};

std::string countsText(const BaselineComparison& comparison) {
    constexpr std::array<std::array<const char*, 2>, changeKinds> words{
        {{"new failure", "new failures"},
         {"fixed", "fixed"},
         {"changed", "changed"},
         {"new", "new"},
         {"gone", "gone"}}};
    const auto counts = comparison.counts();
    std::string text;
    for (std::size_t i = 0; i < changeKinds; ++i) {
        if (counts[i] > 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(counts[i]) + " " +
                    words[i][counts[i] == 1 ? 0 : 1];
        }
    }
    return text.empty() ? "nothing is otherwise" : text;
}

Colour colourOf(const BaselineChange& change) {
    switch (change.kind) {
        case ChangeKind::NewFailure:
            return change.isError ? Colour::Red : Colour::Yellow;
        case ChangeKind::Fixed:
            return Colour::Green;
        case ChangeKind::Changed:
            return Colour::Yellow;
        case ChangeKind::Added:
        case ChangeKind::Gone:
            break;
    }
    return Colour::None;
}

}  // namespace

Baseline readBaseline(const std::string& path) {
    const JsonValue report = parsed(path);
    Baseline baseline{path, false, {}};
    try {
        baseline.strict = report.value("strict", false);
        for (const JsonValue& recording : report.at("recordings")) {
            Baseline::Recording& known =
                baseline.recordings[recording.at("recording").get<std::string>()];
            known.isUsable = recording.at("error").is_null();
            for (const JsonValue& assessment : recording.at("assessments")) {
                known.assessments[assessment.at("name").get<std::string>()] = entryOf(assessment);
            }
        }
    } catch (const JsonValue::exception&) {
        failFor(path, "is no report of a run");
    }
    return baseline;
}

std::array<std::size_t, changeKinds> BaselineComparison::counts() const {
    std::array<std::size_t, changeKinds> counts{};
    for (const BaselineChange& change : changes) {
        ++counts[static_cast<std::size_t>(change.kind)];
    }
    return counts;
}

bool BaselineComparison::hasNewFailure() const {
    return std::any_of(changes.begin(), changes.end(), [](const BaselineChange& change) {
        return change.kind == ChangeKind::NewFailure && change.isError;
    });
}

BaselineComparison compare(const Baseline& baseline, const AssessmentFile& file,
                           const RunOutcome& run) {
    return Comparer(baseline, file, run).compared();
}

const char* nameOf(BaselineChange::Kind kind) {
    constexpr std::array names{"new failure", "fixed", "changed", "new", "gone"};
    return names[static_cast<std::size_t>(kind)];
}

namespace {

// A line for each change, or where that is too long for the terminal one more for what changed.
std::string changeLines(std::span<const BaselineChange> changes, bool isBelow,
                        const TextTable::Style& style) {
    TextTable table;
    constexpr std::size_t recording = 1;
    constexpr std::size_t assessment = 2;
    table.allowEliding(recording);
    table.allowEliding(assessment);
    for (const BaselineChange& change : changes) {
        std::vector<TextTable::Cell> row{{nameOf(change.kind), false, colourOf(change)},
                                         {change.recording},
                                         {change.assessment}};
        if (!isBelow) {
            row.push_back({change.what});
        }
        table.addRow(std::move(row));
        if (isBelow) {
            table.addNote(change.what);
        }
    }
    return isBelow || table.fits(style) ? table.text(style) : changeLines(changes, true, style);
}

}  // namespace

std::string baselineReport(const BaselineComparison& comparison, const TableStyle& style) {
    constexpr std::size_t mostChanges = 40;
    const std::size_t shown = style.verbose ? comparison.changes.size()
                                            : std::min(comparison.changes.size(), mostChanges);
    const TextTable::Style lines{"", style.colours, style.width};
    std::string text = indentedLines(
        "compared with " + comparison.baseline + ": " + countsText(comparison), lines);
    text += changeLines(std::span(comparison.changes).first(shown), false,
                        {"  ", style.colours, style.width});
    if (const std::size_t others = comparison.changes.size() - shown; others > 0) {
        text += "  and " + std::to_string(others) + " more; --verbose shows all\n";
    }
    return text;
}

}  // namespace vorm::evaluation
