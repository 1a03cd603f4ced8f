#include "table.hpp"

#include <vorm/evaluation/source/text_encoding.hpp>
#include <vorm/evaluation/table/csv_reader.hpp>
#include <vorm/evaluation/table/json_lines_reader.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <set>
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
    const auto& columns = rows_->columns();
    headers_ = columnHeaders(columns);
    try {
        checkNames();
        time_.emplace(layout_.time, headers_, file_.path);
        findColumns();
    } catch (const InputError& error) {
        time_.reset();
        timeProblem_ = error;
    }
}

void Table::open() {
    ByteWindow bytes(openBytes(file_.open(), file_.path, layout_.encoding).bytes, blockSize_);
    form_ = file_.isStandardInput && beginsWithBrace(bytes.rest()) ? TableForm::JsonLines
                                                                   : file_.form();
    switch (form_) {
        case TableForm::Delimited:
            rows_ = std::make_unique<CsvReader>(file_.path, std::move(bytes), layout_.delimiter);
            break;
        case TableForm::JsonLines:
            rows_ = std::make_unique<JsonLinesReader>(file_.path, std::move(bytes));
            break;
    }
}

// Of a table just opened, whose cells are the header's.
void Table::checkNames() const {
    std::set<std::string_view> names;
    for (std::size_t i = 0; i < headers_.size(); ++i) {
        const std::string& name = headers_[i].text;
        if (!name.empty() && !names.insert(name).second) {
            failAt(rows_->where(i), "has two columns " + shown(name),
                   "give each column a name of its own");
        }
    }
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
    failAt({file_.path, 1}, "has no " + std::string(isJson() ? "key " : "column ") + shown(name),
           near.empty() ? "where each row has the name and the value of one signal, "
                          "[recording] name_column and value_column say where"
                        : near);
}

const TimeColumn& Table::time() const {
    if (!time_) {
        throw InputError(*timeProblem_);
    }
    return *time_;
}

std::optional<ExactTime> Table::firstTime() {
    isAhead_ = isAhead_ || goToRow();
    if (!isAhead_) {
        return std::nullopt;
    }
    try {
        return time().timeOf(cells());
    } catch (const InputError& error) {
        fail(error, time().column());
    }
}

bool Table::next() {
    if (std::exchange(isAhead_, false) || goToRow()) {
        hasRows_ = true;
        return true;
    }
    if (!hasRows_) {
        failAt({file_.path}, "has a header but no rows");
    }
    return false;
}

bool Table::goToRow() {
    if (!rows_) {
        open();
    }
    return rows_->next();
}

void Table::fail(const InputError& error, std::size_t cell) const {
    InputProblem problem = error.problem();
    if (problem.where.file.empty()) {
        problem.where = rows_->where(cell);
    }
    throw InputError(std::move(problem));
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
