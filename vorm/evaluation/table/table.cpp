#include "table.hpp"

#include <vorm/evaluation/source/text_encoding.hpp>
#include <vorm/evaluation/table/csv_reader.hpp>
#include <vorm/evaluation/table/json_lines_reader.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

bool beginsWithBrace(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '{';
}

}  // namespace

Table::Table(RecordingFile file, const TableLayout& layout, std::size_t blockSize)
    : file_(std::move(file)), layout_(layout), blockSize_(blockSize) {
    open();
    headers_ =
        columnHeaders(rows_->columns(), dialect_ ? dialect_->units : std::vector<std::string>());
    try {
        findTimes();
        findColumns();
    } catch (const InputError& error) {
        times_.clear();
        timeProblem_ = error;
    }
    // Where times are counted, one that is left out would put all later rows at another one.
    leavesOutBadRows_ = layout_.badRows == BadRows::Skip &&
                        std::none_of(times_.begin(), times_.end(),
                                     [](const TimeColumn& time) { return time.isCounted(); });
    if (leavesOutBadRows_) {
        rows_->leaveOutBadRows();
    }
}

void Table::open() {
    DecodedSource source = openBytes(file_.open(), file_.path, layout_.encoding);
    encoding_ = source.isEncodingAssumed ? source.encoding : "";
    ByteWindow bytes(std::move(source.bytes), blockSize_);
    form_ = file_.isStandardInput && beginsWithBrace(bytes.rest()) ? TableForm::JsonLines
                                                                   : file_.form();
    rowsRead_ = 0;
    part_ = 1;
    lastTime_.reset();
    switch (form_) {
        case TableForm::Delimited:
            if (!dialect_) {
                dialect_ = dialectOf(bytes, layout_, file_.path);
            }
            rows_ = std::make_unique<CsvReader>(file_.path, std::move(bytes), *dialect_);
            break;
        case TableForm::JsonLines:
            rows_ = std::make_unique<JsonLinesReader>(file_.path, std::move(bytes));
            break;
    }
    if (leavesOutBadRows_) {
        rows_->leaveOutBadRows();
    }
}

void Table::findTimes() {
    CellTexts rows;
    if (dialect_) {
        rows.swap(dialect_->firstRows);
    } else {
        auto& first = rows.emplace_back();
        for (const Cell& cell : cells()) {
            first.emplace_back(cell.text);
        }
    }
    const auto found = vorm::evaluation::findTimes(layout_.time, headers_, rows, headerPlace());
    for (std::size_t i = 0; i < found.size(); ++i) {
        const std::size_t end =
            i + 1 < found.size() ? found[i + 1].columns.front() : headers_.size();
        if (auto counted = countedTime(found[i], rows, end)) {
            times_.push_back(std::move(*counted));
        } else {
            times_.emplace_back(found[i], layout_.time, headers_, rows, headerPlace());
        }
    }
}

// Where no row has a time, and the header tells the first one and their distance for the columns up
// to `end`.
std::optional<TimeColumn> Table::countedTime(const TimeCells& cells, const CellTexts& rows,
                                             std::size_t end) const {
    const bool isEmpty = std::all_of(rows.begin(), rows.end(),
                                     [&](const auto& row) { return joined(row, cells).empty(); });
    if (!dialect_ || dialect_->steps.empty() || !isEmpty) {
        return std::nullopt;
    }
    const auto valueIn = [&](const std::vector<std::string>& values) -> std::optional<ExactTime> {
        std::optional<ExactTime> value;
        for (std::size_t i = cells.columns.front(); i < std::min(end, values.size()); ++i) {
            const auto time = ExactTime::of(values[i], second);
            if (value && time && *time != *value) {
                failAt({file_.path}, "has columns with several distances of times and no times",
                       "add a time column, or columns, to it");
            }
            value = time ? time : value;
        }
        return value;
    };
    const auto step = valueIn(dialect_->steps);
    if (!step || *step <= ExactTime()) {
        return std::nullopt;
    }
    return TimeColumn(cells, valueIn(dialect_->starts).value_or(ExactTime()), *step);
}

void Table::findColumns() {
    if (isLong()) {
        const LongForm form = layout_.longForm.value_or(LongForm());
        longColumns_ = {longColumn(form.nameColumn), longColumn(form.valueColumn)};
    }
}

std::size_t Table::longColumn(const std::string& name) const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < headers_.size(); ++i) {
        if (headers_[i].isCalled(name)) {
            return i;
        }
        names.push_back(headers_[i].name);
    }
    const std::string near = suggestion(name, names);
    failAt(headerPlace(), "has no " + std::string(isJson() ? "key " : "column ") + shown(name),
           near.empty() ? "where each row has the name and the value of one signal, "
                          "[recording] name_column and value_column say where"
                        : near);
}

const std::vector<TimeColumn>& Table::times() const {
    if (times_.empty()) {
        throw InputError(*timeProblem_);
    }
    return times_;
}

bool Table::isTime(std::size_t column) const {
    return std::any_of(times_.begin(), times_.end(),
                       [&](const TimeColumn& time) { return time.contains(column); });
}

std::size_t Table::timeOfColumn(std::size_t column) const {
    std::size_t found = 0;
    for (std::size_t i = 1; i < times_.size(); ++i) {
        found = times_[i].column() < column ? i : found;
    }
    return found;
}

bool Table::hasValueAt(std::size_t which) const {
    for (std::size_t i = 0; i < headers_.size(); ++i) {
        if (!isTime(i) && timeOfColumn(i) == which && !cells()[i].text.empty()) {
            return true;
        }
    }
    return false;
}

bool Table::isUnitAssumed() const {
    return std::any_of(times_.begin(), times_.end(),
                       [](const TimeColumn& time) { return time.isUnitAssumed(); });
}

std::vector<std::string> Table::remarks() const {
    std::vector<std::string> remarks;
    if (!encoding_.empty()) {
        remarks.push_back("the text looks like " + encoding_);
    }
    if (dialect_) {
        remarks.insert(remarks.end(), dialect_->remarks.begin(), dialect_->remarks.end());
    }
    for (const TimeColumn& time : times_) {
        std::string remark = time.remark();
        if (!remark.empty() && (remarks.empty() || remarks.back() != remark)) {
            remarks.push_back(std::move(remark));
        }
    }
    return remarks;
}

std::vector<std::string> Table::warnings() const {
    std::vector<std::string> warnings = rows_->warnings();
    for (const TimeColumn& time : times_) {
        if (const std::string warning = time.warning(); !warning.empty()) {
            warnings.push_back(file_.path + ": " + warning);
        }
    }
    return warnings;
}

TableLayout Table::layoutAsRead() const {
    TableLayout layout = layout_;
    if (dialect_) {
        layout.delimiter = dialect_->delimiter;
        layout.decimal = dialect_->decimal;
        if (layout_.names.empty()) {
            layout.header = dialect_->headerLine;
        }
    }
    if (layout.time.columns.empty() && hasTime()) {
        layout.time.columns = times_.front().columns(headers_);
        layout.time.unit = times_.front().unit();
    }
    if (layout.time.format.empty() && hasTime()) {
        layout.time.format = times_.front().foundOrder();
    }
    return layout;
}

std::optional<ExactTime> Table::firstTime() {
    isAhead_ = isAhead_ || goToRow();
    if (!isAhead_) {
        return std::nullopt;
    }
    try {
        return times().front().timeOf(cells(), rowsRead_ - 1);
    } catch (const InputError& error) {
        fail(error, times().front().column());
    }
}

bool Table::next() {
    if (std::exchange(isAhead_, false) || goToRow()) {
        hasRows_ = true;
        return true;
    }
    if (!hasRows_) {
        failAt({file_.path}, warnings().empty() ? "has a header but no rows"
                                                : "has a header but no rows that fit");
    }
    return false;
}

bool Table::goToRow() {
    if (!rows_) {
        open();
    }
    ++rowsRead_;
    while (rows_->next()) {
        if (leavesOutBadRows_ && !hasTimes()) {
            rows_->leaveOut();
            continue;
        }
        if (file_.part == 0) {
            return true;
        }
        countPart();
        if (part_ > file_.part && file_.part == file_.parts) {
            failAt(rows_->where(times_.front().column()),
                   "is where another recording begins that was not there when they were counted",
                   "run again when nothing writes to the file any more");
        }
        if (part_ >= file_.part) {
            return part_ == file_.part;
        }
    }
    return false;
}

// Whether each time of the row can be read.
bool Table::hasTimes() const {
    try {
        for (std::size_t which = 0; which < times_.size(); ++which) {
            if (hasTimeOrValue(which)) {
                time(which);
            }
        }
        return true;
    } catch (const InputError&) {
        return false;
    }
}

void Table::countPart() {
    try {
        const ExactTime now = time();
        part_ += lastTime_ && now < *lastTime_ ? 1U : 0U;
        lastTime_ = now;
    } catch (const InputError& error) {
        fail(error, times().front().column());
    }
}

InputError Table::placed(const InputError& error, std::size_t cell) const {
    return error.problem().where.file.empty() ? error.placed(rows_->where(cell)) : error;
}

void Table::fail(const InputError& error, std::size_t cell) const {
    throw placed(error, cell);
}

void Table::close() {
    if (file_.canReopen) {
        rows_.reset();
        isAhead_ = false;
    }
}

void Table::reportTo(const std::function<void(std::size_t)>& progress) {
    if (!rows_) {
        open();
    }
    rows_->reportTo(progress);
}

OpenTables openTables(const std::vector<RecordingFile>& files, const TableLayout& layout,
                      bool needsAll, std::size_t blockSize) {
    OpenTables opened;
    for (const RecordingFile& file : files) {
        try {
            opened.tables.emplace_back(file, layout, blockSize);
        } catch (const InputError& error) {
            if (needsAll || !file.isFromFolder) {
                throw;
            }
            opened.leftOut.push_back(error);
            continue;
        }
        if (const auto problem = opened.tables.back().problemOfHiddenNames()) {
            opened.leftOut.push_back(*problem);
        }
        if (files.size() > mostOpenTables) {
            opened.tables.back().close();
        }
    }
    return opened;
}

}  // namespace vorm::evaluation
