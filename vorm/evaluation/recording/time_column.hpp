#pragma once

// The column, or the columns, of a table that say when its rows were recorded.

#include <vorm/evaluation/recording/column_header.hpp>
#include <vorm/evaluation/recording/instant.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/recording/row_reader.hpp>

namespace vorm::evaluation {

class TimeColumn {
public:
    /// Throws InputError where the table has no such column, or several may be meant.
    TimeColumn(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
               const std::string& path);

    bool contains(std::size_t column) const;
    /// The column to name in messages about times.
    std::size_t column() const { return columns_.front(); }
    const TimeUnit& unit() const { return unit_; }

    /// The time of a row. Throws CellProblem for what is no time.
    Instant instantOf(const std::vector<Cell>& cells) const;
    /// The time that a text says; as instantOf.
    Instant instantOf(std::string_view text) const;

    /// The time of a trace. Throws CellProblem where it is beyond the range of double.
    double secondsFrom(const Origin& origin, const Instant& instant) const;

private:
    void find(const TimeLayout& layout, const std::vector<ColumnHeader>& headers,
              const std::string& path);
    Instant calendarInstant(std::string_view text) const;
    Instant numberInstant(std::string_view text) const;
    void checkMagnitude(double time, std::string_view text) const;
    [[noreturn]] void fail(std::string message, std::string advice) const;

    std::vector<std::size_t> columns_;
    std::string name_;
    std::string format_;
    TimeUnit unit_;
    bool isUnitKnown_ = false;
};

}  // namespace vorm::evaluation
