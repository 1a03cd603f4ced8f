#include "recording_survey.hpp"

#include <vorm/evaluation/recording/column_rules.hpp>
#include <vorm/evaluation/recording/column_survey.hpp>
#include <vorm/evaluation/recording/missing_values.hpp>
#include <vorm/evaluation/recording/open_recording.hpp>
#include <vorm/evaluation/recording/recording_reading.hpp>

#include <algorithm>
#include <map>

namespace vorm::evaluation {
namespace {

class TableSurvey {
public:
    TableSurvey(Table& table, ExactTime origin, const SignalSelection& selection,
                const RecordingLayout& layout)
        : table_(table),
          origin_(origin),
          timeline_(
              layout.time.resolution.length,
              table.hasTime() ? table.firstTime().value_or(ExactTime()) - origin : ExactTime()),
          selection_(selection),
          layout_(layout) {}

    std::vector<SignalSurvey> look() {
        if (!table_.longColumns()) {
            addHeaders();
        }
        try {
            while (table_.next()) {
                takeRow();
            }
        } catch (const InputError& error) {
            table_.fail(error, cell_);
        }
        std::vector<SignalSurvey> surveys;
        for (Column& column : columns_) {
            column.finish();
            surveys.push_back(column.survey.finish());
        }
        return surveys;
    }

private:
    struct Column {
        std::size_t cell;
        std::size_t time;  // which of the table's
        MissingValues missing;
        ColumnSurvey survey;

        void add(double counted, const Cell& value) {
            missing.pass(counted, value,
                         [this](double at, const Cell& each) { survey.add(at, each); });
        }
        void finish() {
            missing.finish([this](double at, const Cell& each) { survey.add(at, each); });
        }
    };

    void addHeaders() {
        for (std::size_t i = 0; i < table_.headers().size(); ++i) {
            if (!table_.isTime(i) && !table_.headers()[i].text.empty()) {
                addColumn(table_.headers()[i], i);
            }
        }
    }

    void addColumn(const ColumnHeader& header, std::size_t cell) {
        const auto declarations = selection_.declarationsOf(table_.file(), header);
        const SignalLayout* declaration = declarations.empty() ? nullptr : declarations.front();
        const SignalRules rules = rulesFor(header.name, declaration, layout_, timeline_);
        columns_.push_back(
            {cell, table_.timeOfColumn(cell), MissingValues(layout_.missing, rules.type),
             ColumnSurvey(
                 table_.file().path, declaration ? declaration->name : header.name,
                 declaration && !declaration->unit.empty() ? declaration->unit : header.unit,
                 rules)});
    }

    void takeRow() {
        const std::vector<Cell>& cells = table_.cells();
        if (const auto& named = table_.longColumns()) {
            const double time = timeOf(0);
            columnCalled(cells[named->name].text).add(time, cells[named->value]);
            return;
        }
        for (std::size_t which = 0; which < std::max<std::size_t>(timeCount(), 1); ++which) {
            if (table_.hasTimeOrValue(which)) {
                const double time = timeOf(which);
                for (Column& column : columns_) {
                    if (column.time == which) {
                        column.add(time, cells[column.cell]);
                    }
                }
            }
        }
        ++row_;
    }

    std::size_t timeCount() const { return table_.hasTime() ? table_.times().size() : 0; }

    // Without times rows are counted, as though each took a second.
    double timeOf(std::size_t which) {
        if (!table_.hasTime()) {
            return timeline_.at(static_cast<WideInteger>(row_) * second);
        }
        cell_ = table_.times()[which].column();
        return timeline_.at(table_.time(which) - origin_);
    }

    Column& columnCalled(std::string_view name) {
        auto found = byName_.find(name);
        if (found == byName_.end()) {
            const std::string text(name);
            addColumn({text, text, {}}, table_.longColumns()->value);
            found = byName_.emplace(text, columns_.size() - 1).first;
        }
        return columns_[found->second];
    }

    Table& table_;
    const ExactTime origin_;
    const Timeline timeline_;
    const SignalSelection& selection_;
    const RecordingLayout& layout_;
    std::vector<Column> columns_;
    std::size_t row_ = 0;
    std::size_t cell_ = 0;  // the one in work
    std::map<std::string, std::size_t, std::less<>> byName_;
};

}  // namespace

std::optional<TimeSpan> RecordingSurvey::span() const {
    std::optional<TimeSpan> span;
    for (const SignalSurvey& signal : signals) {
        if (signal.samples > 0) {
            const auto [start, end] = span.value_or(TimeSpan{signal.first, signal.last});
            span = TimeSpan{std::min(start, signal.first), std::max(end, signal.last)};
        }
    }
    return span;
}

RecordingSurvey surveyFiles(const std::vector<RecordingFile>& files,
                            const RecordingLayout& layout) {
    const std::optional<std::set<std::string>> all;
    OpenRecording recording =
        openRecording(files, layout, all, ByteWindow::defaultBlockSize, MissingTimes::Allowed);
    RecordingSurvey survey;
    bool hasTimes = true;
    for (std::size_t i = 0; i < recording.tables.size(); ++i) {
        Table& table = recording.tables[i];
        hasTimes &= table.hasTime();
        for (SignalSurvey& signal :
             TableSurvey(table, recording.origins[i], recording.selection, layout).look()) {
            survey.signals.push_back(std::move(signal));
        }
        survey.files.push_back({table.file().path, table.remarks(), table.warnings(),
                                table.layoutAsRead(), table.isUnitAssumed(), table.timeProblem()});
        table.close();
    }
    survey.clock = hasTimes ? recording.clock() : std::nullopt;
    return survey;
}

RecordingSurvey surveyRecording(const RecordingSource& source, const RecordingLayout& layout) {
    return surveyFiles(recordingFiles(source), layout);
}

}  // namespace vorm::evaluation
