#include "recording_matrix.hpp"

#include <vorm/evaluation/report/outcome_mark.hpp>
#include <vorm/evaluation/report/time_writer.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/natural_order.hpp>
#include <vorm/evaluation/text/text_columns.hpp>

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace vorm::evaluation {
namespace {

constexpr std::size_t mostRows = 40;
constexpr std::size_t leastName = 16;

// By mark.
using MarkCounts = std::array<std::size_t, markCount>;

std::size_t& of(Mark mark, MarkCounts& counts) {
    return counts[static_cast<std::size_t>(mark)];
}

std::string countText(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

class RecordingMatrix {
public:
    RecordingMatrix(const RunOutcome& run, const TableStyle& style)
        : run_(run), style_{"  ", style.colours, style.width} {
        chooseColumns();
        chooseRows(style.verbose);
        fit();
    }

    std::string text() const {
        if (columns_.empty()) {
            return "";
        }
        std::string text = "Worst first:\n" + numbers();
        for (std::size_t row = 0; row < shownRows_; ++row) {
            text += rowText(run_.recordings[rows_[row]]);
        }
        return text + others() + meanings() + "\n" + columnTable();
    }

private:
    Mark markAt(const RecordingOutcome& recording, std::size_t assessment) const {
        return markOf(recording.assessments[assessment], run_.strict);
    }

    const RecordingOutcome* firstUsable() const {
        const auto found =
            std::find_if(run_.recordings.begin(), run_.recordings.end(),
                         [](const RecordingOutcome& recording) { return !recording.error; });
        return found == run_.recordings.end() ? nullptr : &*found;
    }

    void chooseColumns() {
        const RecordingOutcome* first = firstUsable();
        const std::size_t count = first == nullptr ? 0 : first->assessments.size();
        for (std::size_t i = 0; i < count; ++i) {
            const bool passesEverywhere = std::all_of(
                run_.recordings.begin(), run_.recordings.end(),
                [&](const auto& one) { return one.error || markAt(one, i) == Mark::Passed; });
            if (!passesEverywhere) {
                columns_.push_back(i);
            }
        }
    }

    // How often each mark is there; what cannot be used is worse than anything.
    MarkCounts countsOf(const RecordingOutcome& recording) const {
        MarkCounts counts{};
        of(Mark::Error, counts) = recording.error ? columns_.size() + 1 : 0;
        for (std::size_t i = 0; i < recording.assessments.size(); ++i) {
            ++of(markAt(recording, i), counts);
        }
        return counts;
    }

    void chooseRows(bool all) {
        std::vector<MarkCounts> counts;
        for (const RecordingOutcome& recording : run_.recordings) {
            counts.push_back(countsOf(recording));
            of(Mark::Passed, counts.back()) = 0;
            if (all || counts.back() != MarkCounts{}) {
                rows_.push_back(counts.size() - 1);
            }
        }
        std::stable_sort(rows_.begin(), rows_.end(), [&](std::size_t one, std::size_t other) {
            return counts[one] != counts[other]
                       ? counts[one] > counts[other]
                       : isNaturallyBefore(run_.recordings[one].recording,
                                           run_.recordings[other].recording);
        });
        shownRows_ = all ? rows_.size() : std::min(rows_.size(), mostRows);
    }

    // Names lose their middle before marks move together, and these before they are left out.
    void fit() {
        for (std::size_t row = 0; row < shownRows_; ++row) {
            name_ = std::max(name_, displayWidth(nameOf(run_.recordings[rows_[row]])));
        }
        const std::size_t digits = std::to_string(columns_.size()).size();
        cell_ = digits + 1;
        shownColumns_ = columns_.size();
        if (!style_.width) {
            return;
        }
        const std::size_t room = *style_.width - style_.indent.size() - 1;
        const std::size_t least = std::min(name_, leastName);
        if (least + shownColumns_ * cell_ > room) {
            cell_ = 1;
        }
        shownColumns_ = std::min(shownColumns_, (room - least) / cell_);
        name_ = std::min(name_, room - shownColumns_ * cell_);
    }

    static std::string nameOf(const RecordingOutcome& recording) {
        return withoutControls(recording.recording);
    }

    // One below the other where there is no room for them side by side.
    std::string numbers() const {
        const std::string begin = style_.indent + std::string(name_ + 1, ' ');
        const std::size_t digits = std::to_string(columns_.size()).size();
        const std::size_t lines = cell_ > 1 ? 1 : digits;
        std::string text;
        for (std::size_t line = 0; line < lines && shownColumns_ > 0; ++line) {
            text += begin;
            for (std::size_t i = 0; i < shownColumns_; ++i) {
                const std::string number = std::to_string(i + 1);
                if (cell_ > 1) {
                    text += std::string(cell_ - number.size(), ' ') + number;
                } else {
                    const std::string padded = std::string(digits - number.size(), ' ') + number;
                    text += padded[line];
                }
            }
            text.erase(text.find_last_not_of(' ') + 1);
            text += "\n";
        }
        return text;
    }

    std::string rowText(const RecordingOutcome& recording) const {
        const std::string name = elided(nameOf(recording), std::max<std::size_t>(1, name_));
        std::string text = style_.indent + name + std::string(name_ + 1 - displayWidth(name), ' ');
        for (std::size_t i = 0; i < shownColumns_; ++i) {
            const Mark mark = recording.error ? Mark::Error : markAt(recording, columns_[i]);
            const bool isColoured = style_.colours && mark != Mark::Passed;
            const std::string sign(1, styleOf(mark).sign);
            text += std::string(cell_ - 1, ' ') +
                    (isColoured ? coloured(sign, styleOf(mark).colour) : sign);
        }
        return text + "\n";
    }

    std::string others() const {
        std::string text;
        if (const std::size_t count = rows_.size() - shownRows_; count > 0) {
            text += line("and " + countText(count, "recording more", "recordings more") +
                         " on which not everything passed; --verbose shows all");
        }
        if (const std::size_t count = run_.recordings.size() - rows_.size(); count > 0) {
            text += line("on the other " +
                         (count == 1 ? "recording" : std::to_string(count) + " recordings") +
                         " everything passed");
        }
        if (const std::size_t count = columns_.size() - shownColumns_; count > 0) {
            text += line(countText(count, "assessment more has", "assessments more have") +
                         " no room beside these; they are listed below");
        }
        return text;
    }

    // Of the marks that there are.
    std::string meanings() const {
        MarkCounts all{};
        for (std::size_t row = 0; row < shownRows_; ++row) {
            const MarkCounts counts = countsOf(run_.recordings[rows_[row]]);
            std::transform(counts.begin(), counts.end(), all.begin(), all.begin(), std::plus<>());
        }
        std::string text;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i] > 0) {
                text += (text.empty() ? "" : ", ") + std::string(1, markStyles[i].sign) + " " +
                        markStyles[i].meaning;
            }
        }
        return line(text);
    }

    std::string line(const std::string& text) const { return indentedLines(text, style_); }

    std::string columnTable() const {
        TextTable table({{"", true},
                         {"assessment"},
                         {"failed", true},
                         {"no result", true},
                         {"first failure", true},
                         {"in"}});
        constexpr std::size_t assessment = 1;
        constexpr std::size_t recording = 5;
        table.allowEliding(assessment);
        table.allowEliding(recording);
        table.repeatColumns(2);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            addColumn(i, table);
        }
        return table.text(style_) + "\n";
    }

    void addColumn(std::size_t number, TextTable& table) const {
        const std::size_t assessment = columns_[number];
        MarkCounts counts{};
        const RecordingOutcome* firstFailing = nullptr;
        const RecordingOutcome* firstWithError = nullptr;
        for (const RecordingOutcome& recording : run_.recordings) {
            if (recording.error) {
                continue;
            }
            ++of(markAt(recording, assessment), counts);
            const AssessmentOutcome& outcome = recording.assessments[assessment];
            firstFailing =
                firstFailing == nullptr && !outcome.failures.empty() ? &recording : firstFailing;
            firstWithError =
                firstWithError == nullptr && outcome.error ? &recording : firstWithError;
        }
        table.addRow(
            {{std::to_string(number + 1), true},
             {firstUsable()->assessments[assessment].name},
             {std::to_string(of(Mark::Failed, counts) + of(Mark::Warned, counts) +
                             of(Mark::Informed, counts)),
              true},
             {std::to_string(of(Mark::NoResult, counts)), true},
             {firstFailing == nullptr ? "-" : failureText(*firstFailing, assessment), true},
             {firstFailing == nullptr ? "-" : nameOf(*firstFailing)}});
        if (firstWithError != nullptr) {
            table.addNote("could not be assessed on " +
                          countText(of(Mark::Error, counts), "recording", "recordings") +
                          ", the first " + nameOf(*firstWithError) + ":");
            table.addNote(firstWithError->assessments[assessment].error->what());
        }
    }

    static std::string failureText(const RecordingOutcome& recording, std::size_t assessment) {
        const ExactTime start = recording.assessments[assessment].failures.front().start;
        return TimeWriter(recording.times).number(start) + " s";
    }

    const RunOutcome& run_;
    const TextTable::Style style_;
    std::vector<std::size_t> columns_;  // assessments, which the numbers count
    std::vector<std::size_t> rows_;     // recordings
    std::size_t shownRows_ = 0;
    std::size_t shownColumns_ = 0;
    std::size_t name_ = 0;  // what names and each mark take
    std::size_t cell_ = 1;
};

}  // namespace

std::string recordingMatrix(const RunOutcome& run, const TableStyle& style) {
    return RecordingMatrix(run, style).text();
}

}  // namespace vorm::evaluation
