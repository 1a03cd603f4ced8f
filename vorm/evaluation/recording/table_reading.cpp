#include "table_reading.hpp"

#include <vorm/evaluation/recording/column_rules.hpp>
#include <vorm/evaluation/text/text_hash.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

class TableReading {
public:
    TableReading(Table& table, ExactTime origin, const Timeline& timeline,
                 const SignalSelection& selection, const RecordingLayout& layout)
        : table_(table),
          origin_(origin),
          timeline_(timeline),
          selection_(selection),
          layout_(layout) {}

    TableSignals read(std::size_t maximumRows) {
        if (!table_.longColumns()) {
            requestHeaders();
        }
        try {
            for (std::size_t row = 0; row < maximumRows && table_.next(); ++row) {
                takeRow();
            }
        } catch (const InputError& error) {
            table_.fail(error, cell_);
        }
        return {table_.file(), std::move(available_), std::move(columns_), span_};
    }

private:
    void requestHeaders() {
        const auto& headers = table_.headers();
        available_ = unreadTable(table_).available;
        for (std::size_t i = 0; i < headers.size(); ++i) {
            if (!table_.time().contains(i)) {
                request(headers[i], i);
            }
        }
    }

    void request(const ColumnHeader& header, std::size_t cell) {
        const auto requests = selection_.requestsFor(table_.file(), header);
        // Lines that end with the delimiter have a column without a name, and nothing in it.
        const bool isLast = cell + 1 == table_.headers().size();
        if (header.text.empty() && (isLast || requests.empty())) {
            return;
        }
        if (header.text.empty()) {
            failAt({table_.file().path, 1},
                   "the column " + std::to_string(cell + 1) + " has no name",
                   "give it one, or name the signals to read");
        }
        for (const SignalLayout* declaration : requests) {
            columns_.push_back({header, declaration,
                                rulesFor(header.name, declaration, layout_, timeline_), cell,
                                nullptr});
        }
    }

    void takeRow() {
        const std::vector<Cell>& cells = table_.cells();
        cell_ = table_.time().column();
        const ExactTime time = table_.time().timeOf(cells) - origin_;
        const double counted = timeline_.counted(time);
        if (table_.longColumns()) {
            extendSpan(counted);
            takeNamedValue(counted, cells);
            return;
        }
        if (last_ && time < *last_) {
            failAt({},
                   "the time goes back by " + timeWithUnit(*last_ - time) + " to " +
                       std::string(table_.time().textOf(cells)),
                   "rows stand in the order of their times");
        }
        extendSpan(counted);
        last_ = time;
        for (ColumnReading& column : columns_) {
            const Cell& cell = cells[column.cell];
            if (!cell.text.empty()) {
                cell_ = column.cell;
                column.append(counted, cell);
            }
        }
    }

    void extendSpan(double time) {
        span_ = span_ ? CountedSpan{std::min(span_->first, time), std::max(span_->last, time)}
                      : CountedSpan{time, time};
    }

    void takeNamedValue(double time, const std::vector<Cell>& cells) {
        const auto [nameCell, valueCell] = *table_.longColumns();
        cell_ = nameCell;
        const std::string_view name = cells[nameCell].text;
        if (name.empty()) {
            failAt({}, "the row has no name", "each row names its signal");
        }
        cell_ = valueCell;
        for (const std::size_t column : columnsCalled(name)) {
            if (!cells[valueCell].text.empty()) {
                columns_[column].append(time, cells[valueCell]);
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
    std::vector<ColumnHeader> available_;
    std::vector<ColumnReading> columns_;
    TextMap<std::vector<std::size_t>> byName_;
    std::optional<CountedSpan> span_;
    std::optional<ExactTime> last_;
    std::size_t cell_ = 0;  // the one in work
};

}  // namespace

SignalBuilder::Result ColumnReading::finish(const std::string& name, const Timeline& timeline) {
    if (builder) {
        return builder->finish(name, timeline);
    }
    return {rules.type.value_or(SignalType()), std::make_shared<TracePieces>()};
}

TableSignals readTable(Table& table, ExactTime origin, const Timeline& timeline,
                       const SignalSelection& selection, const RecordingLayout& layout,
                       std::size_t maximumRows) {
    return TableReading(table, origin, timeline, selection, layout).read(maximumRows);
}

TableSignals unreadTable(const Table& table) {
    TableSignals signals{table.file(), {}, {}, {}};
    if (!table.hasTime() || table.longColumns()) {
        return signals;
    }
    for (std::size_t i = 0; i < table.headers().size(); ++i) {
        if (!table.time().contains(i) && !table.headers()[i].text.empty()) {
            signals.available.push_back(table.headers()[i]);
        }
    }
    return signals;
}

}  // namespace vorm::evaluation
