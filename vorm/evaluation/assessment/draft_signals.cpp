#include "draft_signals.hpp"

#include "toml_text.hpp"

#include <vorm/evaluation/formula/literal_text.hpp>
#include <vorm/evaluation/formula/quoted_text.hpp>
#include <vorm/evaluation/recording/signal_selection.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <utility>

namespace vorm::evaluation::detail {
namespace {

std::string numberText(const SignalSurvey::Number& number) {
    return std::visit(
        [](auto value) {
            if constexpr (std::is_same_v<decltype(value), double>) {
                return shortestNumber(value);
            } else {
                return std::to_string(value);
            }
        },
        number);
}

// Three digits are enough for a limit to begin with.
std::string roughText(double number) {
    std::ostringstream text;
    text << std::setprecision(3) << number;
    return text.str();
}

bool isNumeric(const SignalSurvey& signal) {
    return signal.least &&
           (signal.type == "double" || signal.type == "int64" || signal.type == "uint64");
}

bool isEnumerated(const SignalSurvey& signal) {
    return signal.type.starts_with("enumeration") || signal.type == "text";
}

// `0 to 64.49, 5903 samples`, or `rest, discharge; 15 samples`.
std::string valuesOf(const SignalSurvey& signal) {
    std::string text;
    if (signal.least && signal.greatest) {
        text = numberText(*signal.least) + " to " + numberText(*signal.greatest) + ", ";
    } else if (!signal.members.empty()) {
        std::string members;
        for (const std::string& member : signal.members) {
            members += (members.empty() ? "" : ", ") + member;
        }
        text = withoutControls(members) + "; ";
    }
    return text + std::to_string(signal.samples) + (signal.samples == 1 ? " sample" : " samples");
}

// What a column is called that has a number in its name since others of its file are called so too.
std::string withoutNumber(const std::string& name) {
    return name.substr(0, name.rfind('#'));
}

std::string typeNameOf(const SignalSurvey& signal) {
    return isEnumerated(signal) ? "enum" : signal.type;
}

}  // namespace

DraftSignals::DraftSignals(const RecordingSurveys& recordings) : recordings_(recordings.size()) {
    for (const auto& [name, survey] : recordings) {
        addRecording(survey);
    }
}

bool DraftSignals::Entry::hasType() const {
    return types.size() == 1 && !types.contains("mixed") && !types.contains("unknown type");
}

std::string DraftSignals::text() const {
    std::string lines;
    for (const Entry& entry : entries_) {
        lines += lineOf(entry);
    }
    return lines;
}

std::string DraftSignals::lineOf(const Entry& entry) {
    const std::string key = tomlKey(entry.name);
    const std::string values = valuesOf(entry.signal) + '\n';
    if (!entry.hasType()) {
        std::string types;
        for (const std::string& type : entry.types) {
            types += (types.empty() ? "" : " or ") + type;
        }
        return "# " + key + ": " + types + ", " + values;
    }
    std::string keys = entry.place + "type = " + tomlText(*entry.types.begin());
    if (!entry.signal.unit.empty()) {
        keys += ", unit = " + tomlText(entry.signal.unit);
    }
    return key + " = { " + keys + " }  # " + values;
}

std::vector<DraftAssessment> DraftSignals::examples() const {
    std::vector<const Entry*> usable;
    for (const Entry& entry : entries_) {
        if (entry.hasType() && entry.recordings == recordings_ && !examplesOn(entry).empty()) {
            usable.push_back(&entry);
        }
    }
    // What stays the same throughout is little to ask for.
    std::stable_partition(usable.begin(), usable.end(), [](const Entry* entry) {
        const SignalSurvey& signal = entry->signal;
        return !signal.least || numberText(*signal.least) != numberText(*signal.greatest);
    });
    constexpr std::size_t count = 3;
    std::vector<DraftAssessment> found;
    for (std::size_t i = 0; i < count && !usable.empty(); ++i) {
        const Entry& entry = *usable[i % usable.size()];
        const DraftAssessment example = examplesOn(entry)[i];
        found.push_back({entry.name + " " + example.name, example.formula});
    }
    return found;
}

// The several ways to ask something of a signal.
std::vector<DraftAssessment> DraftSignals::examplesOn(const Entry& entry) {
    const SignalSurvey& signal = entry.signal;
    const ExactTime length = 10 * signal.medianDistance;
    const std::string duration = timeWithUnit(length > ExactTime() ? length : second);
    const std::string name = nameText(entry.name);
    std::string condition;
    if (isNumeric(signal)) {
        const std::string least = numberText(*signal.least);
        const std::string greatest = numberText(*signal.greatest);
        const std::string limit =
            signal.type == "double" && signal.mean ? roughText(*signal.mean) : least;
        condition = name + " > " + limit;
        const std::string others = name + " <= " + limit;
        return {{"stays in its range", name + " >= " + least + " & " + name + " <= " + greatest},
                {"comes back", condition + " -> eventually[0, " + duration + "](" + others + ")"},
                {"is not high for long", "~always[0, " + duration + "](" + condition + ")"}};
    }
    if (signal.type == "bool") {
        condition = name;
    } else if (isEnumerated(signal) && !entry.members.empty()) {
        condition = name + " == " + inQuotes(std::string_view(entry.members.front()), '\'');
    } else {
        return {};
    }
    return {{"ends", condition + " -> eventually[0, " + duration + "](~(" + condition + "))"},
            {"comes", "eventually[0, " + duration + "](" + condition + ")"},
            {"is not so for long", "~always[0, " + duration + "](" + condition + ")"}};
}

void DraftSignals::addRecording(const RecordingSurvey& survey) {
    std::vector<RecordingFile> files;
    std::set<std::string> timeless;
    for (const FileSurvey& file : survey.files) {
        files.emplace_back().path = file.file;
        if (file.timeProblem) {
            timeless.insert(file.file);
        }
    }
    files = toldApart(std::move(files));
    std::map<std::string, std::set<std::string>> filesWith;
    for (const SignalSurvey& signal : survey.signals) {
        filesWith[withoutNumber(signal.name)].insert(signal.file);
    }
    for (const SignalSurvey& signal : survey.signals) {
        if (timeless.contains(signal.file)) {
            continue;
        }
        const auto file = std::find_if(
            files.begin(), files.end(),
            [&](const RecordingFile& candidate) { return candidate.path == signal.file; });
        const bool needsFile = filesWith[withoutNumber(signal.name)].size() > 1;
        add(signal, needsFile ? &*file : nullptr);
    }
}

void DraftSignals::add(const SignalSurvey& signal, const RecordingFile* file) {
    std::string name = signal.name;
    std::string place;
    if (file != nullptr) {
        name = nameInFile(*file, signal.name);
        place = "file = " + tomlText(file->hasNamesake ? file->path : file->name()) +
                ", column = " + tomlText(signal.name) + ", ";
    }
    const auto [known, isNew] = places_.emplace(name, entries_.size());
    if (isNew) {
        entries_.push_back({name, std::move(place), signal, signal.members, {}, 0});
    }
    Entry& entry = entries_[known->second];
    entry.types.insert(typeNameOf(signal));
    std::erase_if(entry.members, [&](const std::string& member) {
        return std::find(signal.members.begin(), signal.members.end(), member) ==
               signal.members.end();
    });
    ++entry.recordings;
}

}  // namespace vorm::evaluation::detail
