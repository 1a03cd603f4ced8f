#include "recording_survey.hpp"

#include <vorm/evaluation/recording/column_rules.hpp>
#include <vorm/evaluation/recording/column_survey.hpp>
#include <vorm/evaluation/recording/open_recording.hpp>
#include <vorm/evaluation/recording/recording_reading.hpp>

#include <map>

namespace vorm::evaluation {
namespace {

class TableSurvey {
public:
    TableSurvey(Table& table, ExactTime origin, const SignalSelection& selection,
                const RecordingLayout& layout)
        : table_(table),
          origin_(origin),
          timeline_(layout.time.resolution.length,
                    table.firstTime().value_or(ExactTime()) - origin),
          selection_(selection),
          layout_(layout) {}

    std::vector<SignalSurvey> look() {
        if (!table_.longColumns()) {
            addHeaders();
        }
        while (table_.next()) {
            try {
                takeRow();
            } catch (const InputError& error) {
                table_.fail(error, table_.time().column());
            }
        }
        std::vector<SignalSurvey> surveys;
        for (ColumnSurvey& column : columns_) {
            surveys.push_back(column.finish());
        }
        return surveys;
    }

private:
    void addHeaders() {
        for (std::size_t i = 0; i < table_.headers().size(); ++i) {
            if (!table_.time().contains(i) && !table_.headers()[i].text.empty()) {
                addColumn(table_.headers()[i]);
                cells_.push_back(i);
            }
        }
    }

    void addColumn(const ColumnHeader& header) {
        const auto declarations = selection_.declarationsOf(table_.file(), header);
        const SignalLayout* declaration = declarations.empty() ? nullptr : declarations.front();
        columns_.emplace_back(table_.file().path, declaration ? declaration->name : header.name,
                              rulesFor(header.name, declaration, layout_, timeline_));
    }

    void takeRow() {
        const std::vector<Cell>& cells = table_.cells();
        const TimeColumn& column = table_.time();
        const double time = timeline_.at(column.timeOf(cells) - origin_);
        if (const auto& named = table_.longColumns()) {
            columnCalled(cells[named->name].text).add(time, cells[named->value]);
            return;
        }
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            columns_[i].add(time, cells[cells_[i]]);
        }
    }

    ColumnSurvey& columnCalled(std::string_view name) {
        auto found = byName_.find(name);
        if (found == byName_.end()) {
            const std::string text(name);
            addColumn({text, text, {}});
            found = byName_.emplace(text, columns_.size() - 1).first;
        }
        return columns_[found->second];
    }

    Table& table_;
    const ExactTime origin_;
    const Timeline timeline_;
    const SignalSelection& selection_;
    const RecordingLayout& layout_;
    std::vector<ColumnSurvey> columns_;
    std::vector<std::size_t> cells_;  // of each column, in a table that has no names in its rows
    std::map<std::string, std::size_t, std::less<>> byName_;
};

}  // namespace

std::vector<SignalSurvey> surveyFiles(const std::vector<RecordingFile>& files,
                                      const RecordingLayout& layout) {
    const std::optional<std::set<std::string>> all;
    auto [selection, tables, origins, leftOut] = openRecording(files, layout, all);
    std::vector<SignalSurvey> surveys;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        for (SignalSurvey& survey : TableSurvey(tables[i], origins[i], selection, layout).look()) {
            surveys.push_back(std::move(survey));
        }
        tables[i].close();
    }
    return surveys;
}

std::vector<SignalSurvey> surveyRecording(const RecordingSource& source,
                                          const RecordingLayout& layout) {
    return surveyFiles(recordingFiles(source), layout);
}

}  // namespace vorm::evaluation
