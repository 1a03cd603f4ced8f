#include "table_reading.hpp"

#include <vorm/evaluation/recording/batch_reading.hpp>
#include <vorm/evaluation/recording/column_rules.hpp>
#include <vorm/evaluation/recording/sorted_rows.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/text_hash.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

class TableReading {
public:
    TableReading(Table& table, ExactTime origin, const Timeline& timeline,
                 const SignalSelection& selection, const RecordingLayout& layout,
                 const ReadingOptions& options)
        : table_(table),
          origin_(origin),
          timeline_(timeline),
          selection_(selection),
          layout_(layout),
          options_(options) {}

    TableSignals read() {
        for (const TimeColumn& time : table_.times()) {
            groups_.push_back({TimeOrder(layout_.time.timesBack, time.isOfClocks())});
        }
        if (!table_.longColumns()) {
            requestHeaders();
        }
        if (layout_.time.timesBack == TimesBack::Sort) {
            forEachRow([this] { keepRow(); });
            takeKeptRows();
        } else if (table_.longColumns()) {
            forEachRow([this] { takeNamedRow(); });
        } else {
            readInBatches(columns_, table_, options_.jobs,
                          [this](RowBatch& batch) { return fill(batch); });
            failForRow();
        }
        return {table_.file(), std::move(available_), std::move(columns_),
                span_,         table_.remarks(),      warnings()};
    }

private:
    // One of the times of the rows, and the columns that have it, which stand side by side.
    struct TimeGroup {
        TimeOrder order;
        std::size_t firstColumn = 0;
        std::size_t endColumn = 0;
        std::size_t lastLine = 0;  // of the last row with that time
    };

    void requestHeaders() {
        const auto& headers = table_.headers();
        available_ = unreadTable(table_).available;
        for (std::size_t i = 0; i < headers.size(); ++i) {
            if (headers[i].isOneOfSeveral && selection_.meansSeveral(table_.file(), headers[i])) {
                failForSeveral(headers[i].text);
            }
            if (!table_.isTime(i)) {
                request(headers[i], i);
            }
        }
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            TimeGroup& group = groups_[table_.timeOfColumn(columns_[i].cell)];
            group.firstColumn = group.endColumn == 0 ? i : group.firstColumn;
            group.endColumn = i + 1;
        }
    }

    [[noreturn]] void failForSeveral(const std::string& text) const {
        std::vector<std::string> names;
        for (const ColumnHeader& header : table_.headers()) {
            if (header.text == text) {
                names.push_back(header.name);
            }
        }
        failAt(table_.headerPlace(),
               "has " + std::to_string(names.size()) + " columns " + shown(text),
               "name one of them: " + quotedList(names));
    }

    // Lines may end with delimiters, and with cells that have no name.
    bool isBehindNames(std::size_t cell) const {
        const auto& headers = table_.headers();
        return std::all_of(headers.begin() + static_cast<std::ptrdiff_t>(cell), headers.end(),
                           [](const ColumnHeader& header) { return header.text.empty(); });
    }

    void request(const ColumnHeader& header, std::size_t cell) {
        const auto requests = selection_.requestsFor(table_.file(), header);
        if (header.text.empty() && (requests.empty() || isBehindNames(cell))) {
            return;
        }
        if (header.text.empty()) {
            failAt(table_.headerPlace(), "the column " + std::to_string(cell + 1) + " has no name",
                   "give it one, or name the signals to read");
        }
        for (const SignalLayout* declaration : requests) {
            SignalRules rules = rulesFor(header.name, declaration, layout_, timeline_);
            rules.alsoHeld = selection_.wantsHeld(table_.file(), header, declaration);
            columns_.push_back(
                {header, declaration, rules, cell, MissingValues(layout_.missing, rules.type),
                 TimeOrder(layout_.time.timesBack, table_.times().front().isOfClocks()), nullptr});
        }
    }

    bool goToRow() { return rowsRead_++ < options_.maximumRows && table_.next(); }

    template <class Take>
    void forEachRow(const Take& take) {
        try {
            while (goToRow()) {
                take();
            }
        } catch (const InputError& error) {
            table_.fail(error, cell_);
        }
    }

    void takeNamedRow() {
        cell_ = table_.times().front().column();
        takeNamedValue(table_.time() - origin_, table_.cells());
    }

    // False where there are no more rows, or none that can be read.
    bool fill(RowBatch& batch) {
        try {
            while (!batch.isFull()) {
                if (!goToRow()) {
                    return false;
                }
                takeRow(batch);
            }
            return true;
        } catch (const InputError& error) {
            rowProblem_ = table_.placed(error, cell_);
            return false;
        }
    }

    void failForRow() const {
        if (rowProblem_) {
            throw InputError(*rowProblem_);
        }
    }

    void takeRow(RowBatch& batch) {
        batch.addRow(table_);
        for (std::size_t which = 0; which < groups_.size(); ++which) {
            if (table_.hasTimeOrValue(which)) {
                takeTime(which, batch);
            }
        }
    }

    void takeTime(std::size_t which, RowBatch& batch) {
        TimeGroup& group = groups_[which];
        cell_ = table_.times()[which].column();
        const ExactTime time = table_.time(which) - origin_;
        if (refusesTimesBack_ && group.order.goesBack(time)) [[unlikely]] {
            failForTimesBack(which, time);
        }
        if (const auto placed = group.order.next(time)) {
            forEachCell(group, *placed, table_.cells(),
                        [&batch](std::size_t column, double counted, const Cell& cell) {
                            batch.add(column, counted, cell);
                        });
        }
        group.lastLine = table_.line();
    }

    // Calls visit(column, time, cell) for the columns that have a value.
    template <class Visit>
    void forEachCell(const TimeGroup& group, ExactTime time, const std::vector<Cell>& cells,
                     const Visit& visit) {
        const double counted = timeline_.counted(time);
        extendSpan(counted);
        for (std::size_t i = group.firstColumn; i < group.endColumn; ++i) {
            const Cell& cell = cells[columns_[i].cell];
            if (!cell.text.empty()) {
                visit(i, counted, cell);
            }
        }
    }

    // Tells how often times go back, so that it can be decided what to do about it.
    [[noreturn]] void failForTimesBack(std::size_t which, ExactTime time) {
        const TimeGroup& group = groups_[which];
        const ExactTime reached = group.order.reached();
        InputProblem problem;
        const std::string text(table_.times()[which].textOf(table_.cells()));
        problem.where = table_.where(table_.times()[which].column());
        problem.message = "the time goes back by " + timeWithUnit(reached - time) + " from " +
                          shown(timeInLine(which, group.lastLine, reached)) + " in line " +
                          std::to_string(group.lastLine) + " to " + shown(text) +
                          othersBack(which, time);
        problem.advice =
            "say what to do: [recording] times_back = \"drop\" (the rows up to the time that was "
            "reached), \"sort\", \"shift\" (the rows from there on, to later times), or "
            "\"split\" (they are another recording)";
        throw InputError(std::move(problem));
    }

    // How the file writes the time of a line that it is past; of a pipe, in seconds.
    std::string timeInLine(std::size_t which, std::size_t line, ExactTime time) const {
        if (table_.file().canReopen) {
            Table again(table_.file(), layout_, ByteWindow::defaultBlockSize);
            while (again.next()) {
                if (again.line() == line) {
                    return std::string(again.times()[which].textOf(again.cells()));
                }
            }
        }
        return (time + origin_).text();
    }

    std::string othersBack(std::size_t which, ExactTime last) {
        std::size_t count = 0;
        try {
            while (table_.next()) {
                const ExactTime time = table_.time(which) - origin_;
                count += time < last ? 1U : 0U;
                last = time;
            }
        } catch (const InputError&) {
            // What is wrong behind this error is told when it is mended.
            return count == 0 ? "" : ", and at least " + moreTimes(count);
        }
        return count == 0 ? "" : ", and " + moreTimes(count);
    }

    static std::string moreTimes(std::size_t count) {
        return std::to_string(count) + (count == 1 ? " more time" : " more times");
    }

    void keepRow() {
        std::vector<std::optional<ExactTime>> times;
        for (std::size_t which = 0; which < groups_.size(); ++which) {
            cell_ = table_.times()[which].column();
            times.push_back(table_.hasTimeOrValue(which)
                                ? std::optional(table_.time(which) - origin_)
                                : std::nullopt);
            if (times.back()) {
                groups_[which].order.next(*times.back());
            }
        }
        kept_.keep(table_, std::move(times));
    }

    void takeKeptRows() {
        for (std::size_t which = 0; which < groups_.size(); ++which) {
            kept_.forEach(which, table_.file().path,
                          [&](ExactTime time, const std::vector<Cell>& cells) {
                              if (table_.longColumns()) {
                                  takeNamedValue(time, cells);
                              } else {
                                  takeKeptCells(groups_[which], time, cells);
                              }
                          });
        }
    }

    void takeKeptCells(const TimeGroup& group, ExactTime time, const std::vector<Cell>& cells) {
        forEachCell(group, time, cells,
                    [this](std::size_t column, double counted, const Cell& cell) {
                        columns_[column].append(counted, cell);
                    });
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> warnings = table_.warnings();
        const auto add = [&](const TimeOrder& order, const std::string& subject) {
            if (const std::string warning = order.warning(); !warning.empty()) {
                warnings.push_back(table_.file().path + ": " + subject + warning);
            }
        };
        for (const TimeGroup& group : groups_) {
            add(group.order, "");
        }
        for (const ColumnReading& column : columns_) {
            add(column.order, column.rules.subject + ": ");
        }
        return warnings;
    }

    void extendSpan(double time) {
        span_ = span_ ? CountedSpan{std::min(span_->first, time), std::max(span_->last, time)}
                      : CountedSpan{time, time};
    }

    void takeNamedValue(ExactTime time, const std::vector<Cell>& cells) {
        const auto [nameCell, valueCell] = *table_.longColumns();
        extendSpan(timeline_.counted(time));
        cell_ = nameCell;
        const std::string_view name = cells[nameCell].text;
        if (name.empty()) {
            failAt({}, "the row has no name", "each row names its signal");
        }
        cell_ = valueCell;
        for (const std::size_t index : columnsCalled(name)) {
            ColumnReading& column = columns_[index];
            if (const auto placed = column.order.next(time);
                placed && !cells[valueCell].text.empty()) {
                const double counted = timeline_.counted(*placed);
                extendSpan(counted);
                column.append(counted, cells[valueCell]);
            }
        }
    }

    const std::vector<std::size_t>& columnsCalled(std::string_view name) {
        const auto found = byName_.find(name);
        if (found != byName_.end()) {
            return found->second;
        }
        const std::string text(name);
        const std::size_t before = columns_.size();
        available_.push_back({text, text, {}});
        request(available_.back(), table_.longColumns()->value);
        auto& columns = byName_[text];
        for (std::size_t i = before; i < columns_.size(); ++i) {
            columns.push_back(i);
        }
        return columns;
    }

    Table& table_;
    const ExactTime origin_;
    const Timeline& timeline_;
    const SignalSelection& selection_;
    const RecordingLayout& layout_;
    const ReadingOptions& options_;
    // Those in a part of a split file never do.
    const bool refusesTimesBack_ =
        layout_.time.timesBack == TimesBack::Refuse || layout_.time.timesBack == TimesBack::Split;
    std::vector<ColumnHeader> available_;
    std::vector<ColumnReading> columns_;
    TextMap<std::vector<std::size_t>> byName_;
    std::optional<CountedSpan> span_;
    std::vector<TimeGroup> groups_;
    SortedRows kept_;
    std::size_t rowsRead_ = 0;
    std::size_t cell_ = 0;                  // the one in work
    std::optional<InputError> rowProblem_;  // behind the rows that were read
};

}  // namespace

TableSignals readTable(Table& table, ExactTime origin, const Timeline& timeline,
                       const SignalSelection& selection, const RecordingLayout& layout,
                       const ReadingOptions& options) {
    return TableReading(table, origin, timeline, selection, layout, options).read();
}

TableSignals unreadTable(const Table& table) {
    TableSignals signals{table.file(), {}, {}, {}, {}, {}};
    if (!table.hasTime() || table.longColumns()) {
        return signals;
    }
    for (std::size_t i = 0; i < table.headers().size(); ++i) {
        if (!table.isTime(i) && !table.headers()[i].text.empty()) {
            signals.available.push_back(table.headers()[i]);
        }
    }
    return signals;
}

}  // namespace vorm::evaluation
