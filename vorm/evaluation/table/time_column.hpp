#pragma once

// The column, or the columns, of a table that say when its rows were recorded.

#include <vorm/evaluation/table/cell_value.hpp>
#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/row_reader.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/table/time_finding.hpp>
#include <vorm/evaluation/time/time_format.hpp>
#include <vorm/evaluation/time/time_zone.hpp>

namespace vorm::evaluation {

class TimeColumn {
public:
    /// The time in those cells, written as in these rows. Throws InputError, which names the place
    /// of the header, where it cannot be told how times are written.
    TimeColumn(TimeCells cells, const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
               const CellTexts& rows, const SourceLocation& place);

    /// Times that no cell tells: of each row that much after the one before. The cells are empty.
    TimeColumn(TimeCells cells, ExactTime start, ExactTime step);

    bool contains(std::size_t column) const;
    /// The column to name in messages about times.
    std::size_t column() const { return cells_.columns.front(); }
    /// `'Date' and 'Time'`.
    const std::string& name() const { return name_; }
    /// The names of its columns.
    std::vector<std::string> columns(const std::vector<ColumnHeader>& headers) const;
    /// Of numbers, where it is known other than by their size.
    std::optional<TimeUnit> unit() const;
    /// `day first` or `month first` where that was found in the rows, which others may not tell.
    std::string foundOrder() const;
    /// Whether these are numbers taken for seconds although neither their unit nor their name says
    /// so.
    bool isUnitAssumed() const {
        return !(counted_ || format_ || isSerial_ || notation_ || isUnitKnown_ || isPlain_);
    }
    /// Whether no cell tells them.
    bool isCounted() const { return counted_.has_value(); }
    /// Whether these are dates or times of day.
    bool isOfClocks() const { return format_ || notation_; }
    /// Whether these are instants of the calendar.
    bool tellsDates() const;
    /// The zone of dates that do not tell how far they are from UTC; without it UTC.
    const std::optional<TimeZone>& zone() const { return zone_; }
    /// Whether the row has no text where the time should be.
    bool isMissing(const std::vector<Cell>& cells) const {
        return !counted_ && textOf(cells).empty();
    }

    /// The time of a row, the first of which is 0. Throws InputError, which names no place, for
    /// what is no time.
    ExactTime timeOf(const std::vector<Cell>& cells, std::size_t row) const {
        if (counted_) {
            return counted_->start + static_cast<WideInteger>(row) * counted_->step;
        }
        if (cells[column()].hasPoint && !isOfClocks()) [[unlikely]] {
            failForPoint(cells[column()], "the time column " + name_);
        }
        return timeOf(textOf(cells));
    }

    /// The time that a text says; as timeOf a row.
    ExactTime timeOf(std::string_view text) const;

    /// How a row writes its time. In memory that the next call may change.
    std::string_view textOf(const std::vector<Cell>& cells) const;

    /// How times are written, where that was not declared: `times are in 'Date' and 'Time', as
    /// dates, month first`. Empty for numbers in a column called time.
    std::string remark() const;
    /// That numbers of another name are taken for times; or empty.
    std::string warning() const;

private:
    struct Counted {
        ExactTime start;
        ExactTime step;
    };

    void takeNotation(const CellTexts& rows, const SourceLocation& place);
    void refuseClockDigits(const std::vector<ColumnHeader>& headers, const CellTexts& rows,
                           const SourceLocation& place) const;
    void takeUnit(const TimeLayout& layout, const ColumnHeader& header, const CellTexts& rows,
                  const SourceLocation& place);
    ExactTime dateTime(std::string_view text) const;
    ExactTime notedTime(std::string_view text) const;
    ExactTime serialTime(std::string_view text) const;
    ExactTime numberTime(std::string_view text) const;
    ExactTime inUtc(ExactTime local) const;
    void checkMagnitude(ExactTime time, std::string_view text) const;

    TimeCells cells_;
    std::string name_;
    std::optional<TimeFormat> format_;
    bool tellsOffset_ = false;  // the format does
    std::optional<TimeNotation> notation_;
    std::optional<TimeZone> zone_;
    std::optional<Counted> counted_;
    bool isSerial_ = false;
    bool isGuess_ = false;       // nothing but its values says that it is a time
    bool isOrderFound_ = false;  // by the rows: their notation has it either way
    bool isPlain_ = false;  // called time, in the unit that the header itself says, or in seconds
    bool isEpoch_ = false;
    std::string unitName_ = "s";
    ExactTime::Unit unit_;
    bool isUnitKnown_ = false;
    mutable std::string joined_;  // of the time in several columns
};

}  // namespace vorm::evaluation
