#pragma once

// The column, or the columns, of a table that say when its rows were recorded.

#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/row_reader.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/time/time_format.hpp>

namespace vorm::evaluation {

class TimeColumn {
public:
    /// Throws InputError where the table has no such column, or several may be meant.
    TimeColumn(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
               const std::string& path);

    bool contains(std::size_t column) const;
    /// The column to name in messages about times.
    std::size_t column() const { return columns_.front(); }

    /// The time of a row. Throws InputError, which names no place, for what is no time.
    ExactTime timeOf(const std::vector<Cell>& cells) const { return timeOf(textOf(cells)); }

    /// The time that a text says; as timeOf a row.
    ExactTime timeOf(std::string_view text) const;

    /// How a row writes its time. In memory that the next call may change.
    std::string_view textOf(const std::vector<Cell>& cells) const;

private:
    void find(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
              const std::string& path);
    ExactTime dateTime(std::string_view text) const;
    ExactTime numberTime(std::string_view text) const;
    void checkMagnitude(ExactTime time, std::string_view text) const;

    std::vector<std::size_t> columns_;
    std::string name_;
    std::optional<TimeFormat> format_;
    ExactTime::Unit unit_;
    bool isUnitKnown_ = false;
    mutable std::string joined_;  // of the time in several columns
};

}  // namespace vorm::evaluation
