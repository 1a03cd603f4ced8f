#pragma once

// One file of a recording as rows in the order of the file, each with its time.

#include <vorm/evaluation/source/recording_file.hpp>
#include <vorm/evaluation/table/dialect.hpp>
#include <vorm/evaluation/table/time_column.hpp>

namespace vorm::evaluation {

class Table {
public:
    /// The columns of the name and of the value in a table of the long form.
    struct LongColumns {
        std::size_t name;
        std::size_t value;
    };

    /// Opens the file and reads its header. Throws InputError where it has none.
    Table(RecordingFile file, const TableLayout& layout, std::size_t blockSize);

    const RecordingFile& file() const { return file_; }
    const std::vector<ColumnHeader>& headers() const { return headers_; }
    SourceLocation headerPlace() const { return {file_.path, dialect_ ? dialect_->headerLine : 1}; }
    const std::optional<LongColumns>& longColumns() const { return longColumns_; }

    /// The times of its rows: several where columns have times of their own. Throws InputError
    /// where the table has none.
    const std::vector<TimeColumn>& times() const;
    bool hasTime() const { return !times_.empty(); }
    const std::optional<InputError>& timeProblem() const { return timeProblem_; }
    /// What times() throws, where the signals' names would stand in rows that cannot be read for
    /// it.
    std::optional<InputError> problemOfHiddenNames() const {
        return isLong() ? timeProblem_ : std::nullopt;
    }
    /// Whether a column is one of a time.
    bool isTime(std::size_t column) const;
    /// Which of the times is that of a column: the one to its left, or the first one.
    std::size_t timeOfColumn(std::size_t column) const;

    /// How the file is written, and what its times are, as far as that is not plain or declared.
    std::vector<std::string> remarks() const;
    /// The layout with what was found in the place of what is not declared.
    TableLayout layoutAsRead() const;
    /// What was left out of the rows up to this one.
    std::vector<std::string> warnings() const;

    /// The time of the first row, or nothing where there is no row. To be asked for before next.
    /// Throws InputError for a row without a time.
    std::optional<ExactTime> firstTime();

    /// Whether the row has that one of the times, or a value at it: where columns have times of
    /// their own, some end before others.
    bool hasTimeOrValue(std::size_t which) const {
        return times_.size() < 2 || !times_[which].isMissing(cells()) || hasValueAt(which);
    }
    /// Whether the unit of some of its times is a guess.
    bool isUnitAssumed() const;

    /// Goes to the next row. Throws InputError where there is not even one.
    bool next();
    const std::vector<Cell>& cells() const { return rows_->cells(); }
    /// The time of the row. Throws InputError, which names no place, where it has none.
    ExactTime time(std::size_t which = 0) const {
        return times_[which].timeOf(cells(), rowsRead_ - 1);
    }
    /// The row as it stands in the file, until the next one.
    std::string_view rowText() const { return rows_->text(); }
    SourceLocation where(std::size_t cell) const { return rows_->where(cell); }
    /// The line that the row begins with.
    std::size_t line() const { return rows_->line(); }
    /// The error, at that cell of the row if it names no place.
    InputError placed(const InputError& error, std::size_t cell) const;
    /// Throws it.
    [[noreturn]] void fail(const InputError& error, std::size_t cell) const;

    /// Of what it reads at once, in bytes.
    std::size_t blockSize() const { return blockSize_; }

    /// Gives the file back for a while, if it can be opened again.
    void close();
    void reportTo(const std::function<void(std::size_t)>& progress);

private:
    void open();
    bool isJson() const { return form_ == TableForm::JsonLines; }
    bool isLong() const { return layout_.longForm || isJson(); }
    bool goToRow();
    bool hasTimes() const;
    void countPart();
    bool hasValueAt(std::size_t which) const;
    void findTimes();
    void findColumns();
    std::optional<TimeColumn> countedTime(const TimeCells& cells, const CellTexts& rows,
                                          std::size_t end) const;
    std::size_t longColumn(const std::string& name) const;

    RecordingFile file_;
    const TableLayout& layout_;
    std::size_t blockSize_;
    TableForm form_ = TableForm::Delimited;
    std::string encoding_;  // where it was told by the bytes alone
    std::unique_ptr<RowReader> rows_;
    bool hasRows_ = false;
    bool leavesOutBadRows_ = false;
    bool isAhead_ = false;  // the row is the one that next() goes to
    std::vector<ColumnHeader> headers_;
    std::optional<Dialect> dialect_;
    std::vector<TimeColumn> times_;
    std::size_t part_ = 1;               // of the file, from 1
    std::optional<ExactTime> lastTime_;  // where parts are counted
    std::size_t rowsRead_ = 0;           // with the one that it is ahead
    std::optional<InputError> timeProblem_;
    std::optional<LongColumns> longColumns_;
};

/// Of more tables than these no file stays open for longer than it is read: there is a limit to the
/// open files of a process.
inline constexpr std::size_t mostOpenTables = 64;

struct OpenTables {
    std::vector<Table> tables;
    std::vector<InputError> leftOut;  ///< why signals of the other files are not even known
};

/// Opens the files of a recording. Of a folder's files those that are no tables are left out unless
/// `needsAll`.
OpenTables openTables(const std::vector<RecordingFile>& files, const TableLayout& layout,
                      bool needsAll, std::size_t blockSize);

}  // namespace vorm::evaluation
