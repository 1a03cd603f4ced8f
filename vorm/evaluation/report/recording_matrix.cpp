#include "recording_matrix.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/text_columns.hpp>

#include <algorithm>
#include <functional>
#include <vector>

namespace vorm::evaluation {
namespace {

constexpr std::size_t leastName = 16;

std::string countText(std::size_t count, const std::string& one, const std::string& several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

class RecordingMatrix {
public:
    RecordingMatrix(const RunSummary& run, const TableStyle& style)
        : run_(run), style_{"  ", style.colours, style.width}, rows_(run.worst()) {
        chooseColumns();
        fit();
    }

    std::string text() const {
        if (columns_.empty()) {
            return "";
        }
        std::string text = "Worst first:\n" + numbers();
        for (const RecordingMarks& row : rows_) {
            text += rowText(row);
        }
        return text + others() + meanings() + "\n" + columnTable();
    }

private:
    void chooseColumns() {
        for (std::size_t i = 0; i < run_.assessments().size(); ++i) {
            if (of(Mark::Passed, run_.assessments()[i].marks) < run_.usable()) {
                columns_.push_back(i);
            }
        }
    }

    // Names lose their middle before marks move together, and these before they are left out.
    void fit() {
        for (const RecordingMarks& row : rows_) {
            name_ = std::max(name_, displayWidth(nameOf(row)));
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

    static std::string nameOf(const RecordingMarks& recording) {
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

    std::string rowText(const RecordingMarks& recording) const {
        const std::string name = elided(nameOf(recording), std::max<std::size_t>(1, name_));
        std::string text = style_.indent + name + std::string(name_ + 1 - displayWidth(name), ' ');
        for (std::size_t i = 0; i < shownColumns_; ++i) {
            const Mark mark = recording.isUsable ? recording.assessments[columns_[i]] : Mark::Error;
            const bool isColoured = style_.colours && mark != Mark::Passed;
            const std::string sign(1, styleOf(mark).sign);
            text += std::string(cell_ - 1, ' ') +
                    (isColoured ? coloured(sign, styleOf(mark).colour) : sign);
        }
        return text + "\n";
    }

    std::string others() const {
        std::string text;
        const std::size_t perfect = run_.recordings() - run_.imperfect();
        // Where all are shown, those on which everything passed are, too.
        const bool showsAll = rows_.size() > run_.imperfect();
        if (const std::size_t count = showsAll ? 0 : run_.imperfect() - rows_.size(); count > 0) {
            text += line("and " + countText(count, "recording more", "recordings more") +
                         " on which not everything passed; --verbose shows all");
        }
        if (perfect > 0 && !showsAll) {
            text += line("on the other " +
                         (perfect == 1 ? "recording" : std::to_string(perfect) + " recordings") +
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
        for (const RecordingMarks& row : rows_) {
            const MarkCounts counts = countMarks(row.assessments);
            std::transform(counts.begin(), counts.end(), all.begin(), all.begin(), std::plus<>());
            of(Mark::Error, all) += row.isUsable ? 0 : 1;
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
        const AssessmentSummary& assessment = run_.assessments()[columns_[number]];
        const MarkCounts& marks = assessment.marks;
        const auto& failure = assessment.failure;
        table.addRow({{std::to_string(number + 1), true},
                      {assessment.name},
                      {std::to_string(of(Mark::Failed, marks) + of(Mark::Warned, marks) +
                                      of(Mark::Informed, marks)),
                       true},
                      {std::to_string(of(Mark::NoResult, marks)), true},
                      {failure ? failure->text : "-", true},
                      {failure ? withoutControls(failure->recording) : "-"}});
        if (const auto& error = assessment.error) {
            table.addNote("could not be assessed on " +
                          countText(of(Mark::Error, marks), "recording", "recordings") +
                          ", the first " + withoutControls(error->recording) + ":");
            for (const std::string_view line : linesOf(error->text)) {
                table.addNote(line);
            }
        }
    }

    const RunSummary& run_;
    const TextTable::Style style_;
    const std::vector<RecordingMarks> rows_;
    std::vector<std::size_t> columns_;  // assessments, which the numbers count
    std::size_t shownColumns_ = 0;
    std::size_t name_ = 0;  // what names and each mark take
    std::size_t cell_ = 1;
};

}  // namespace

std::string recordingMatrix(const RunSummary& run, const TableStyle& style) {
    return RecordingMatrix(run, style).text();
}

}  // namespace vorm::evaluation
