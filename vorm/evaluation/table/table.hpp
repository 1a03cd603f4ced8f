#pragma once

// One file of a recording as rows in the order of the file, each with its time.

#include <vorm/evaluation/source/recording_file.hpp>
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
    const std::optional<LongColumns>& longColumns() const { return longColumns_; }

    /// Throws InputError where the table has no time column, or two columns of one name.
    const TimeColumn& time() const;
    bool hasTime() const { return time_.has_value(); }
    /// What time() throws, where the signals' names would stand in rows that cannot be read for it.
    std::optional<InputError> problemOfHiddenNames() const {
        return isLong() ? timeProblem_ : std::nullopt;
    }

    /// The time of the first row, or nothing where there is no row. To be asked for before next.
    /// Throws InputError for a row without a time.
    std::optional<ExactTime> firstTime();

    /// Goes to the next row. Throws InputError where there is not even one.
    bool next();
    const std::vector<Cell>& cells() const { return rows_->cells(); }
    /// Throws the error, at that cell of the row if it names no place.
    [[noreturn]] void fail(const InputError& error, std::size_t cell) const;

    /// Gives the file back for a while, if it can be opened again.
    void close();
    void reportTo(const std::function<void(std::size_t)>& progress);

private:
    void open();
    bool isJson() const { return form_ == TableForm::JsonLines; }
    bool isLong() const { return layout_.longForm || isJson(); }
    bool goToRow();
    void checkNames() const;
    void findColumns();
    std::size_t longColumn(const std::string& name) const;

    RecordingFile file_;
    const TableLayout& layout_;
    std::size_t blockSize_;
    TableForm form_ = TableForm::Delimited;
    std::unique_ptr<RowReader> rows_;
    bool hasRows_ = false;
    bool isAhead_ = false;  // the row is the one that next() goes to
    std::vector<ColumnHeader> headers_;
    std::optional<TimeColumn> time_;
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
