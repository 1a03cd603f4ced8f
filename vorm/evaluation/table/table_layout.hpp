#pragma once

#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/source/declared_encoding.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorm::evaluation {

/// Which instant is time 0 of the traces.
struct TimeOrigin {
    struct AsRecorded {};   ///< times stay as they are, but for their unit
    struct FirstSample {};  ///< the first row of the recording that has the least time
    struct FirstOf {        ///< the first row of that file of the recording
        std::string file;
    };
    struct At {  ///< a time as the files write it
        std::string time;
    };
    using Choice = std::variant<AsRecorded, FirstSample, FirstOf, At>;
};

/// What to do where the times of rows go back.
enum class TimesBack {
    Refuse,
    Drop,   ///< the rows up to the time that was reached before do not count
    Sort,   ///< rows stand in the order of their times
    Shift,  ///< the rows from there on are later: dates and times of day by the least number of
            ///< whole hours that makes them go on, others so much that the distance of the two rows
            ///< before repeats
    Split   ///< each row that goes back begins another recording, see partsOf
};

struct TimeLayout {
    /// The columns whose cells, joined by a blank, are the time. Empty: those that findTimes finds.
    std::vector<std::string> columns;
    /// Of numbers. Nothing: the header's, else that in which they count from 1970, else seconds.
    std::optional<TimeUnit> unit;
    /// As TimeFormat reads it, `%m/%d/%Y %H:%M:%S`; without an unreadable conversion. `serial` are
    /// the days of spreadsheets, `day first` and `month first` those of TimeNotation. Empty:
    /// numbers, or the one of TimeNotation that the first rows have.
    std::string format;
    /// The IANA name of the zone of dates that tell no offset. Empty: UTC.
    std::string zone;
    TimesBack timesBack = TimesBack::Refuse;
    /// The unit in which times are counted: those that are whole numbers of it are exact.
    TimeUnit resolution = *timeUnitOf("ns");
    TimeOrigin::Choice origin = TimeOrigin::AsRecorded();
    EqualTimes equalTimes = EqualTimes::Refuse;
};

/// Where rows carry one value each (long form): the columns, or the keys of JSON lines.
struct LongForm {
    std::string nameColumn = "name";
    std::string valueColumn = "value";
};

/// What to do with rows that do not fit: with another number of cells than the header has names, or
/// with a time that cannot be read, as where a header repeats or a total stands under the rows.
enum class BadRows {
    Refuse,
    Skip  ///< they are left out, and counted in a warning
};

/// How the tables of a recording are written.
struct TableLayout {
    // What is not declared is found by the first bytes and rows, see openBytes and detectDialect.
    std::optional<DeclaredEncoding> encoding;  ///< of files without a byte order mark
    std::optional<char> delimiter;             ///< of cells
    std::optional<char> decimal;               ///< of numbers: a point or a comma
    std::optional<std::size_t> header;         ///< the line that it is, from 1
    std::optional<std::size_t> firstRow;       ///< the line that it is, below the header
    /// Of the columns, where the table has no header, or another one than the declared line.
    std::vector<std::string> names;
    /// Texts for missing values, in addition to those that isMissingText knows in columns of
    /// numbers.
    std::vector<std::string> missing;
    BadRows badRows = BadRows::Refuse;
    TimeLayout time;
    std::optional<LongForm> longForm;
};

}  // namespace vorm::evaluation
